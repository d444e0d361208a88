// SPDX-License-Identifier: MIT
#include "TextForm.h"

#include "ConditionText.h"
#include "NumberText.h"

#include <algorithm>

namespace NTextForm
{
namespace
{
bool IsHexDigit(QChar c)
{
    return KW_IsDigit(c) || (c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F');
}

bool IsPrintable(QChar c)
{
    return c >= u' ' && c <= u'~';
}

bool IsPassphrase(QStringView text)
{
    constexpr int kShortest = 8;
    constexpr int kLongest = 63;
    // A key instead of a phrase that one is made from: 256 bits.
    constexpr int kKeyDigits = 64;
    if (text.size() == kKeyDigits)
    {
        return std::all_of(text.begin(), text.end(), IsHexDigit);
    }
    return text.size() >= kShortest && text.size() <= kLongest &&
           std::all_of(text.begin(), text.end(), IsPrintable);
}

bool IsHost(UINT32 address)
{
    constexpr UINT32 kThisNetwork = 0;
    constexpr UINT32 kLoopback = 127;
    constexpr UINT32 kFirstGroup = 224;
    const UINT32 first = address >> 24U;
    return first != kThisNetwork && first != kLoopback && first < kFirstGroup;
}

bool IsMask(UINT32 mask)
{
    constexpr UINT32 kFewestHosts = 3;
    const UINT32 hosts = ~mask;
    const bool isContiguous = (hosts & (hosts + 1U)) == 0U;
    return mask != 0U && isContiguous && hosts >= kFewestHosts;
}

/** Up to three digits without a leading zero. */
std::optional<UINT32> ReadByte(QStringView text)
{
    const bool isNumber = !text.isEmpty() && text.size() <= 3 &&
                          std::all_of(text.begin(), text.end(), KW_IsDigit) &&
                          (text.size() == 1 || text[0] != u'0');
    UINT32 number = 0;
    for (const QChar digit : isNumber ? text : QStringView())
    {
        number = number * 10U + static_cast<UINT32>(digit.unicode() - u'0');
    }
    return isNumber && number <= 255U ? std::optional(number) : std::nullopt;
}
} // namespace

std::optional<UINT32> ReadAddress(QStringView text)
{
    UINT32 address = 0;
    for (int i = 0; i < 4; ++i)
    {
        const auto dot = std::find(text.begin(), text.end(), QChar(u'.')) - text.begin();
        const bool isLast = i == 3;
        const auto number = ReadByte(text.left(dot));
        if (!number || isLast != (dot == text.size()))
        {
            return std::nullopt;
        }
        address = address << 8U | *number;
        text = isLast ? QStringView() : text.mid(dot + 1);
    }
    return address;
}

QString Describe(eTEXTFORM form)
{
    switch (form)
    {
    case eTEXTFORM::Passphrase:
        return QStringLiteral("8 to 63 printable ASCII characters, or 64 hex digits; or nothing");
    case eTEXTFORM::Address:
        return QStringLiteral("an IPv4 address of a host, such as 192.168.0.7; or nothing");
    case eTEXTFORM::Mask:
        return QStringLiteral("an IPv4 mask of a network, such as 255.255.255.0; or nothing");
    case eTEXTFORM::Condition:
        return QStringLiteral("a name, \"=\" and values or ranges of them, such as "
                              "Mode = 0-3, 7; or nothing");
    default:
        return QString();
    }
}

bool Fits(eTEXTFORM form, QStringView text)
{
    if (form == eTEXTFORM::Any || text.isEmpty())
    {
        return true;
    }
    if (form == eTEXTFORM::Passphrase)
    {
        return IsPassphrase(text);
    }
    if (form == eTEXTFORM::Condition)
    {
        return NConditionText::Read(text).has_value();
    }
    const auto address = ReadAddress(text);
    return address && (form == eTEXTFORM::Mask ? IsMask(*address) : IsHost(*address));
}
} // namespace NTextForm
