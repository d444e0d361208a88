// SPDX-License-Identifier: MIT
#pragma once

#include "Streams/Record.h"

#include <QtEndian>
#include <bit>
#include <cstring>
#include <string_view>

/** The bytes of record files: little-endian on every machine. */
namespace NRecordBytes
{
/** The first byte is no text, the last two are what a change of line ends spoils. */
constexpr std::string_view kMagic = "\x89KWREC\r\n";
constexpr UINT16 kMajor = 1; ///< another one can not be read by those who know this one
constexpr UINT16 kMinor = 0; ///< grows with fields behind those that there are
constexpr UINT64 kHeadSize = 72;
constexpr UINT64 kEntrySize = 64; ///< of a trace in the table
constexpr UINT64 kAlignment = 64; ///< of samples
constexpr UINT64 kDigestSize = 32;
constexpr bool kIsLittle = std::endian::native == std::endian::little;

template <class T>
T GetLittle(const char* place)
{
    return qFromLittleEndian<T>(place);
}
template <>
inline double GetLittle<double>(const char* place)
{
    return std::bit_cast<double>(qFromLittleEndian<UINT64>(place));
}

template <class T>
void PutLittle(char* place, T value)
{
    qToLittleEndian(value, place);
}
inline void PutLittle(char* place, double value)
{
    qToLittleEndian(std::bit_cast<UINT64>(value), place);
}

/** Bytes of the number that a byte of a point belongs to. */
constexpr std::size_t EntrySize(KW_SAMPLE_FORMAT format, std::size_t byte)
{
    switch (format)
    {
    case eKW_SAMPLES_FLOAT:
        return 4;
    case eKW_SAMPLES_LINES:
        return 1;
    case eKW_SAMPLES_FRAMES: // two doubles, three numbers of 32 bits, and bytes
        return byte < 16 ? 8 : (byte < 28 ? 4 : 1);
    default:
        return 2;
    }
}

/** Turns each number of the points round. */
inline void SwapSamples(const char* from, char* to, std::size_t size, KW_SAMPLE_FORMAT format)
{
    const std::size_t point = KW_GetPointSize(format);
    for (std::size_t i = 0; i < size; ++i)
    {
        const std::size_t entry = EntrySize(format, i % point);
        const std::size_t begin = i - i % point % entry;
        to[i] = from[begin + entry - 1 - (i - begin)];
    }
}

/** Points between a file and memory, either way. */
inline void ConvertSamples(const char* from, char* to, std::size_t size, KW_SAMPLE_FORMAT format)
{
    if constexpr (!kIsLittle)
    {
        SwapSamples(from, to, size, format);
    }
    else if (size > 0)
    {
        std::memcpy(to, from, size);
    }
}
} // namespace NRecordBytes
