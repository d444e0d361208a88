// SPDX-License-Identifier: MIT
#pragma once

#include "KWEnumerationsSerialBus.h"
#include "LabelList/LabelList.h"

#include <bit>
#include <optional>
#include <span>

constexpr auto kUnsigned = eKW_SIGNAL_TRANSLATION_VALUE_TYPE_UNSIGNED_INT;
constexpr auto kSigned = eKW_SIGNAL_TRANSLATION_VALUE_TYPE_SIGNED_INT;
constexpr auto kEnum = eKW_SIGNAL_TRANSLATION_VALUE_TYPE_ENUM;
constexpr auto kFloat = eKW_SIGNAL_TRANSLATION_VALUE_TYPE_FLOAT;
constexpr auto kDouble = eKW_SIGNAL_TRANSLATION_VALUE_TYPE_DOUBLE;
constexpr auto kBig = eKW_ENDIANNESS_BIG_ENDIAN;
constexpr auto kLittle = eKW_ENDIANNESS_LITTLE_ENDIAN;

/** A signal without labels and unit. */
struct t_TestSignal
{
    KW_SIGNAL_TRANSLATION_VALUE_TYPE type = kUnsigned;
    UINT32 startBit = 0;
    UINT32 bitLength = 8;
    KW_ENDIANNESS endianness = kLittle;
    double factor = 1.0;
    double offset = 0.0;
};

inline CLabelListSignal MakeSignal(const std::string& name, const t_TestSignal& signal)
{
    return {name,
            signal.startBit,
            signal.bitLength,
            signal.endianness,
            signal.type,
            signal.factor,
            signal.offset,
            0.0,
            0.0,
            ""};
}

/** The bits of a signal one by one, as the notation is told: little-endian from the start bit up,
    big-endian from it down to bit 0 of its unit and on with the highest bit of the next. A nibble
    of SENT is the upper one of its byte first. None where it leaves the payload. */
inline std::optional<UINT64> ReadBitByBit(std::span<const UINT8> payload,
                                          const t_TestSignal& signal, UINT32 unit)
{
    const bool isBig = signal.endianness == kBig;
    UINT32 number = signal.startBit / unit;
    UINT32 bit = signal.startBit % unit;
    UINT64 raw = 0;
    for (UINT32 i = 0; i < signal.bitLength; ++i)
    {
        const UINT32 place = number * unit + (unit - 1 - bit);
        if (place >= 8 * payload.size())
        {
            return std::nullopt;
        }
        const UINT64 one = payload[place / 8] >> (7 - place % 8) & 1U;
        raw = isBig ? raw << 1U | one : raw | one << i;
        const bool isEnd = bit == (isBig ? 0 : unit - 1);
        number += isEnd ? 1 : 0;
        bit = isEnd ? (isBig ? unit - 1 : 0) : (isBig ? bit - 1 : bit + 1);
    }
    return raw;
}

/** What the raw value means before factor and offset. */
inline double NumberOf(const t_TestSignal& signal, UINT64 raw)
{
    if (signal.type == kFloat)
    {
        return static_cast<double>(std::bit_cast<float>(static_cast<UINT32>(raw)));
    }
    if (signal.type == kDouble)
    {
        return std::bit_cast<double>(raw);
    }
    const bool isNegative = signal.type == kSigned && (raw >> (signal.bitLength - 1) & 1U) != 0;
    const UINT64 all = ~UINT64{0} >> (64 - signal.bitLength);
    return isNegative ? -static_cast<double>((raw ^ all) + 1) : static_cast<double>(raw);
}
