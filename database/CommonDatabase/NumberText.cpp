// SPDX-License-Identifier: MIT
#include "NumberText.h"

#include <charconv>

namespace
{
constexpr int kLongestNumber = 64;
}

template <typename T>
QString KW_NumberToText(T value)
{
    char text[kLongestNumber];
    const auto end = std::to_chars(text, text + kLongestNumber, value).ptr;
    return QString::fromLatin1(text, static_cast<int>(end - text));
}

template <typename T>
bool KW_TextToNumber(QStringView text, T& value)
{
    char ascii[kLongestNumber] = {};
    if (text.isEmpty() || text.size() > kLongestNumber)
    {
        return false;
    }
    char* end = ascii;
    for (const QChar c : text)
    {
        *end++ = c.unicode() < 0x80 ? static_cast<char>(c.unicode()) : '?';
    }
    const char* const begin =
        (*ascii == '+' && text.size() > 1 && ascii[1] != '-') ? ascii + 1 : ascii;
    T number{};
    const auto result = std::from_chars(begin, end, number);
    if (result.ec != std::errc{} || result.ptr != end)
    {
        return false;
    }
    value = number;
    return true;
}

#define KW_INSTANTIATE_NUMBER_TEXT(T)                                                              \
    template QString KW_NumberToText<T>(T);                                                        \
    template bool KW_TextToNumber<T>(QStringView, T&);

KW_INSTANTIATE_NUMBER_TEXT(INT16)
KW_INSTANTIATE_NUMBER_TEXT(UINT16)
KW_INSTANTIATE_NUMBER_TEXT(INT32)
KW_INSTANTIATE_NUMBER_TEXT(UINT32)
KW_INSTANTIATE_NUMBER_TEXT(INT64)
KW_INSTANTIATE_NUMBER_TEXT(UINT64)
KW_INSTANTIATE_NUMBER_TEXT(double)
