// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/** Marks what clients may link against; everything else of the library is hidden. */
#define KW_EXPORT __attribute__((visibility("default")))

/** Integers of a fixed width on every platform. */
using INT8 = std::int8_t;
using INT16 = std::int16_t;
using INT32 = std::int32_t;
using INT64 = std::int64_t;
using UINT8 = std::uint8_t;
using UINT16 = std::uint16_t;
using UINT32 = std::uint32_t;
using UINT64 = std::uint64_t;
