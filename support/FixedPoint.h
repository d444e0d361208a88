// SPDX-License-Identifier: MIT
#pragma once

#include "KWTypes.h"

/**
 * A number as a fixed-point word of `integerWidth` + `fractionWidth` bits, for hardware registers.
 * One unit of the word is 2^−fractionWidth. Signed words are two's complement, with the sign among
 * the integer bits. Immutable; copies and reads may happen on any thread; nothing allocates.
 */
class CFixedPoint
{
public:
    enum class eSIGN
    {
        Unsigned,
        Signed
    };
    enum class eROUNDING
    {
        Nearest,  ///< to the nearest unit, halves away from zero
        Truncate, ///< toward zero
    };
    /** What becomes of a value that the word can not hold. */
    enum class eOVERFLOW
    {
        Saturate, ///< the nearest value that the word holds
        Wrap      ///< the word's low bits: the value modulo 2^integerWidth
    };

    /** The fraction width is limited to 64 bits and the integer width to what then remains of 64.
        NaN becomes 0; so do infinities that wrap. */
    CFixedPoint(double value, UINT32 integerWidth, UINT32 fractionWidth,
                eSIGN sign = eSIGN::Unsigned, eROUNDING rounding = eROUNDING::Nearest,
                eOVERFLOW overflow = eOVERFLOW::Saturate) noexcept;

    /** The raw word, counted in units of its least significant bit; bits above its width are 0. */
    UINT64 LSB() const noexcept { return m_word; }

private:
    UINT64 m_word;
};
