// SPDX-License-Identifier: MIT
#include "LabelList/LabelListConversion.h"

#include "KWEnumerationsSerialBus.h"
#include "KWMath.h"

#include <algorithm>
#include <bit>
#include <boost/numeric/conversion/cast.hpp>
#include <charconv>
#include <cmath>
#include <cstddef>

namespace
{
constexpr std::size_t kSignedDigits = 64;
constexpr UINT16 kFloatDigits = 32;
constexpr UINT16 kDoubleDigits = 64;
constexpr UINT32 kLargestRead = 2147483647U;

std::string Binary(UINT64 value, std::size_t digits)
{
    std::string text(digits, '0');
    for (std::size_t i = 0; i < digits && i < 64; ++i)
    {
        if ((value >> i & 1U) != 0)
            text[digits - 1 - i] = '1';
    }
    return text;
}

UINT64 SignExtended(INT32 value)
{
    return static_cast<UINT64>(static_cast<INT64>(value));
}

/** NaN passes both of the library's range checks, and what the cast would make of it is up to the
    processor. */
template <typename T>
T CheckedCast(double value)
{
    if (std::isnan(value))
        throw boost::numeric::positive_overflow();
    return boost::numeric_cast<T>(value);
}

std::string RawUnsigned(double raw, UINT16 bitLength)
{
    const auto value = CheckedCast<UINT16>(KWMath::Round(raw));
    return Binary(value, bitLength == 0 ? 16 : bitLength);
}

std::string RawSigned(double raw, UINT16 bitLength)
{
    const auto value = CheckedCast<INT32>(KWMath::Round(raw));
    // Above 64 the start wraps, and substr throws as the contract says.
    return Binary(SignExtended(value), kSignedDigits).substr(kSignedDigits - bitLength);
}

std::string RawFloat(double raw)
{
    return Binary(std::bit_cast<UINT32>(CheckedCast<float>(raw)), kFloatDigits);
}

std::string RawDouble(double raw)
{
    const auto low = static_cast<UINT32>(std::bit_cast<UINT64>(raw));
    return Binary(SignExtended(static_cast<INT32>(low)), kDoubleDigits);
}

UINT32 ReadBits(const std::string& bits)
{
    UINT64 value = 0;
    for (const char bit : bits)
    {
        if (bit != '0' && bit != '1')
            break;
        value = std::min<UINT64>(value * 2 + (bit == '1' ? 1 : 0), kLargestRead);
    }
    return static_cast<UINT32>(value);
}

UINT32 ReadBits(const std::string& bits, std::size_t first, std::size_t count)
{
    return ReadBits(bits.substr(first, count));
}

bool IsNegative(const std::string& bits)
{
    return !bits.empty() && bits.front() == '1';
}

double PhysicalSigned(const std::string& bits, double factor, double offset)
{
    if (!IsNegative(bits))
        return offset + ReadBits(bits) * factor;
    std::string complement = bits;
    for (char& bit : complement)
        bit = bit == '0' ? '1' : '0';
    const UINT32 magnitude = ReadBits(complement) + 1;
    return -1.0 * (offset + magnitude * factor);
}

float FloatOf(const std::string& bits)
{
    const float sign = IsNegative(bits) ? -1.0F : 1.0F;
    const float mantissa = static_cast<float>(std::ldexp(ReadBits(bits, 9, 23), -23));
    const int exponent = static_cast<int>(ReadBits(bits, 1, 8)) - 127;
    return sign * (1.0F + mantissa) * boost::numeric_cast<float>(std::ldexp(1.0, exponent));
}

double DoubleOf(const std::string& bits)
{
    const double sign = IsNegative(bits) ? -1.0 : 1.0;
    const double mantissa = std::ldexp(ReadBits(bits, 12, 52), -52);
    const int exponent = static_cast<int>(ReadBits(bits, 1, 11)) - 1023;
    return sign * (1.0 + mantissa) * std::ldexp(1.0, exponent);
}

std::string Text(double value)
{
    if (std::isnan(value))
        return "nan"; // its sign differs between processors
    char text[32];
    const auto end =
        std::to_chars(std::begin(text), std::end(text), value, std::chars_format::general, 6);
    return std::string(text, end.ptr);
}
} // namespace

std::string getRawValue(double physical, UINT16 bitLength,
                        KW_SIGNAL_TRANSLATION_VALUE_TYPE valueType, double factor, double offset)
{
    const std::string unknown(bitLength, 'X');
    if (factor == 0.0)
        return unknown;
    const double raw = (physical - offset) / factor;
    switch (valueType)
    {
    case eKW_SIGNAL_TRANSLATION_VALUE_TYPE_UNSIGNED_INT:
    case eKW_SIGNAL_TRANSLATION_VALUE_TYPE_ENUM:
        return RawUnsigned(raw, bitLength);
    case eKW_SIGNAL_TRANSLATION_VALUE_TYPE_SIGNED_INT:
        return RawSigned(raw, bitLength);
    case eKW_SIGNAL_TRANSLATION_VALUE_TYPE_FLOAT:
        return bitLength == kFloatDigits ? RawFloat(raw) : unknown;
    case eKW_SIGNAL_TRANSLATION_VALUE_TYPE_DOUBLE:
        return bitLength == kDoubleDigits ? RawDouble(raw) : unknown;
    }
    return unknown;
}

std::string getPhysicalValue(const std::string& bits, KW_SIGNAL_TRANSLATION_VALUE_TYPE valueType,
                             double factor, double offset)
{
    const std::string unknown = "???";
    switch (valueType)
    {
    case eKW_SIGNAL_TRANSLATION_VALUE_TYPE_UNSIGNED_INT:
    case eKW_SIGNAL_TRANSLATION_VALUE_TYPE_ENUM:
        return Text(offset + ReadBits(bits) * factor);
    case eKW_SIGNAL_TRANSLATION_VALUE_TYPE_SIGNED_INT:
        return Text(PhysicalSigned(bits, factor, offset));
    case eKW_SIGNAL_TRANSLATION_VALUE_TYPE_FLOAT:
        return bits.size() == kFloatDigits ? Text(offset + factor * FloatOf(bits)) : unknown;
    case eKW_SIGNAL_TRANSLATION_VALUE_TYPE_DOUBLE:
        return bits.size() == kDoubleDigits ? Text(offset + factor * DoubleOf(bits)) : unknown;
    }
    return unknown;
}
