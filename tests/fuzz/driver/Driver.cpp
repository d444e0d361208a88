// SPDX-License-Identifier: MIT
// Compiled once for each fuzzer; KWI_FUZZ_TARGET names the function of Targets.h.
#include "fuzz/Targets.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    KWI_FUZZ_TARGET(QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
    return 0;
}
