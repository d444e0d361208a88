// SPDX-License-Identifier: MIT
#pragma once

#include "KWEnumerationsSerialBus.h"

#include <string>

/**
 * Conversions between the physical value of a signal and its bits. Bits are texts of "0" and "1",
 * most significant first: those of a signal, wherever its notation (CLabelListSignal) puts them in
 * the payload. Both may be called from any thread and report nothing.
 *
 * The two are not inverses everywhere, and each limit named below is wanted: trigger patterns and
 * decoded values must stay the same texts that existing settings and results hold.
 */

/**
 * Bits of a physical value; raw = (physical − offset) / factor.
 *
 * - Unsigned integer and enumeration: raw rounded half away from zero, which must fit 16 bits; the
 *   low bitLength digits. Digits above the 16th are "0"; a bitLength of 0 gives all 16.
 * - Signed integer: raw rounded half away from zero, which must fit 32 bits; the low bitLength
 *   digits of the two's complement in 64 bits.
 * - Float: the IEEE pattern of raw in single precision, for a bitLength of 32 only.
 * - Double: for a bitLength of 64 only, the low half of the IEEE pattern of raw, sign-extended; the
 *   high half never reaches the text.
 *
 * @return bitLength characters; all of them "X" (unknown) when the factor is 0, the type illegal,
 *         or the bitLength not one that the type allows
 * @throws boost::numeric::positive_overflow, boost::numeric::negative_overflow when raw does not
 *         fit (both derive from std::bad_cast); a raw value of NaN is a positive overflow, but for
 *         Double, which has a pattern for it
 * @throws std::out_of_range for a signed integer of more than 64 bits
 */
KW_EXPORT std::string getRawValue(double physical, UINT16 bitLength,
                                  KW_SIGNAL_TRANSLATION_VALUE_TYPE valueType, double factor,
                                  double offset);

/**
 * Physical value of bits, as text with six significant digits in the general notation of "%g",
 * whatever the locale; NaN is "nan" without a sign.
 *
 * Every part of the bits is read as a signed 32-bit number: more than 31 significant digits
 * saturate at 2147483647, on every platform; reading stops at the first character that is no digit,
 * and no digit at all is 0.
 *
 * - Unsigned integer and enumeration: offset + n × factor.
 * - Signed integer: for a text that starts with "1" n is the two's complement of the bits and the
 *   result −(offset + n × factor): the sign takes the offset with it. Otherwise as unsigned.
 * - Float: 32 characters; offset + factor × v, where v = ±(1 + mantissa × 2^−23) × 2^(exponent −
 *   127) in single precision for every pattern. There are no zeros and denormals: an all-zero
 *   pattern is 2^−127.
 * - Double: 64 characters; the same with 2^−52 and 1023 in double precision. The mantissa
 *   saturates like every other part, so at most 31 of its bits count.
 *
 * @return "???" for an illegal type and for a Float or Double of another length
 * @throws boost::numeric::positive_overflow for a Float of the greatest exponent (infinities and
 *         NaNs), whatever its sign: 2^128 does not fit single precision
 */
KW_EXPORT std::string getPhysicalValue(const std::string& bits,
                                       KW_SIGNAL_TRANSLATION_VALUE_TYPE valueType, double factor,
                                       double offset);
