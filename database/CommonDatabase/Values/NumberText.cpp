// SPDX-License-Identifier: MIT
#include "NumberText.h"

#include <algorithm>
#include <charconv>
#include <type_traits>

namespace
{
constexpr int kLongestNumber = 64;

KW_ACCEPTANCE BeyondEnd(bool isNegative)
{
    return isNegative ? eKW_ACC_BELOW_MINIMUM : eKW_ACC_ABOVE_MAXIMUM;
}

/** Digit by digit and of any length, so that what is too large is told from what is no number. */
template <typename T>
KW_ACCEPTANCE ParseInteger(QStringView text, T& value)
{
    const bool isNegative = text.startsWith(u'-');
    const QStringView digits = text.mid(isNegative || text.startsWith(u'+') ? 1 : 0);
    if (digits.isEmpty() || !std::all_of(digits.begin(), digits.end(), KW_IsDigit))
    {
        return eKW_ACC_BAD_TEXT;
    }
    T number{};
    for (const QChar c : digits)
    {
        const int digit = c.unicode() - u'0';
        if (__builtin_mul_overflow(number, 10, &number) ||
            __builtin_add_overflow(number, isNegative ? -digit : digit, &number))
        {
            return BeyondEnd(isNegative);
        }
    }
    value = number;
    return eKW_ACC_OK;
}

/** Whether a number beyond the range of double is beyond its small end. As long as digits are few,
    the sign of the exponent tells. */
bool IsTiny(const char* begin, const char* end)
{
    const char* const mark = std::find_if(begin, end, [](char c) { return c == 'e' || c == 'E'; });
    return end - mark > 1 && mark[1] == '-';
}

KW_ACCEPTANCE ParseReal(QStringView text, double& value)
{
    char ascii[kLongestNumber] = {};
    if (text.isEmpty() || text.size() > kLongestNumber)
    {
        return eKW_ACC_BAD_TEXT;
    }
    char* end = ascii;
    for (const QChar c : text)
    {
        *end++ = c.unicode() < 0x80 ? static_cast<char>(c.unicode()) : '?';
    }
    const char* const begin =
        (*ascii == '+' && text.size() > 1 && ascii[1] != '-') ? ascii + 1 : ascii;
    double number{};
    const auto result = std::from_chars(begin, end, number);
    if (result.ec == std::errc::invalid_argument || result.ptr != end)
    {
        return eKW_ACC_BAD_TEXT;
    }
    if (result.ec == std::errc::result_out_of_range && !IsTiny(begin, end))
    {
        return BeyondEnd(*begin == '-');
    }
    value = number;
    return eKW_ACC_OK;
}
} // namespace

template <typename T>
QString KW_NumberToText(T value)
{
    char text[kLongestNumber];
    const auto end = std::to_chars(text, text + kLongestNumber, value).ptr;
    return QString::fromLatin1(text, static_cast<int>(end - text));
}

template <typename T>
KW_ACCEPTANCE KW_ParseNumber(QStringView text, T& value)
{
    if constexpr (std::is_same_v<T, double>)
    {
        return ParseReal(text, value);
    }
    else
    {
        return ParseInteger(text, value);
    }
}

#define KW_INSTANTIATE_NUMBER_TEXT(T)                                                              \
    template QString KW_NumberToText<T>(T);                                                        \
    template KW_ACCEPTANCE KW_ParseNumber<T>(QStringView, T&);

KW_INSTANTIATE_NUMBER_TEXT(INT16)
KW_INSTANTIATE_NUMBER_TEXT(UINT16)
KW_INSTANTIATE_NUMBER_TEXT(INT32)
KW_INSTANTIATE_NUMBER_TEXT(UINT32)
KW_INSTANTIATE_NUMBER_TEXT(INT64)
KW_INSTANTIATE_NUMBER_TEXT(UINT64)
KW_INSTANTIATE_NUMBER_TEXT(double)
