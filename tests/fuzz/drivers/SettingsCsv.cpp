// SPDX-License-Identifier: MIT
#include "fuzz/SettingsTarget.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    KW_TrySettingsFile(
        QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)), true);
    return 0;
}
