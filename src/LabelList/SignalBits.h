// SPDX-License-Identifier: MIT
#pragma once

#include "KWTypes.h"

enum KW_ENDIANNESS : INT32;

/**
 * Where the bits of a signal stand, in the notation of CAN databases: a bit's number is
 * 8 × byte + bit, where bytes count in the order in which they are sent and bit 0 is the least
 * significant of its byte. The start bit of a little-endian signal is its least significant bit,
 * and the signal goes on with the next numbers. That of a big-endian signal is its most significant
 * one, and the signal goes on towards bit 0 of its byte and then with bit 7 of the next byte:
 * "7|16" is exactly the first two bytes.
 *
 * Payloads, trigger patterns and the conversions of LabelListConversion.h have bits in the order in
 * which they are read instead: first byte first, most significant bit first. What this calls a
 * place is the index in such a text. All that goes from one to the other goes through PlaceOf.
 *
 * SENT has nibbles, which take the place of bytes: a unit of 4 bits in place of 8.
 */
namespace NSignalBits
{
constexpr UINT32 kByte = 8;
constexpr UINT32 kNibble = 4;

/** The place of a bit by its number in the notation, and the number of a place: either way. */
constexpr UINT32 Mirrored(UINT32 bit, UINT32 unit)
{
    return bit / unit * unit + (unit - 1 - bit % unit);
}

/** A signal in the notation; bitLength ≥ 1. */
struct t_Signal
{
    UINT32 startBit;
    UINT32 bitLength;
    KW_ENDIANNESS endianness;
    UINT32 unit = kByte;
};

/** Place in the payload of one bit of a signal; `index` 0 is its most significant, bitLength − 1
    its least significant one. */
UINT32 PlaceOf(const t_Signal& signal, UINT32 index);

/** Bits that a payload, of whole units, needs to hold the signal. */
UINT64 BitsUpTo(const t_Signal& signal);
} // namespace NSignalBits
