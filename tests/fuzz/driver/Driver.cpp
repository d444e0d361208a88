// SPDX-License-Identifier: MIT
// Compiled once for each fuzzer; KWI_FUZZ_TARGET names its function.
#include <QByteArray>
#include <cstddef>
#include <cstdint>

void KWI_FUZZ_TARGET(const QByteArray& bytes);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    KWI_FUZZ_TARGET(QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
    return 0;
}
