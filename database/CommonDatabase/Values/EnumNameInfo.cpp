// SPDX-License-Identifier: MIT
#include "EnumNameInfo.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace
{
constexpr char16_t kNotSet[] = u"\x01";

/** A text that lives as long as the process; made without copying it. */
QString Wrap(const char16_t* text, std::size_t length)
{
    return QString::fromRawData(reinterpret_cast<const QChar*>(text), static_cast<int>(length));
}
} // namespace

CEnumNameInfo::CEnumNameInfo(INT32 count, const QString& typeName)
    : m_count(std::max(count, 0)), m_type(typeName), m_numbers(nullptr)
{
}

CEnumNameInfo::CEnumNameInfo(INT32 count, const char16_t* typeName, const CEnumTexts& texts,
                             const double* numbers)
    : m_count(std::max(count, 0)),
      m_type(Wrap(typeName, std::char_traits<char16_t>::length(typeName))), m_numbers(numbers)
{
    Fill(KW_ENUM_NAME::Display, texts.display);
    Fill(KW_ENUM_NAME::Short, texts.shortName);
    Fill(KW_ENUM_NAME::Remote, texts.remote);
    Fill(KW_ENUM_NAME::Serial, texts.serial);
}

void CEnumNameInfo::Fill(KW_ENUM_NAME kind, const char16_t* texts)
{
    if (texts == nullptr)
    {
        return;
    }
    std::vector<QString>& list = m_texts[static_cast<int>(kind)];
    list.reserve(m_count);
    for (INT32 value = 0; value < m_count; ++value)
    {
        const std::size_t length = std::char_traits<char16_t>::length(texts);
        const bool isSet = length != 1 || *texts != *kNotSet;
        list.push_back(isSet ? Wrap(texts, length) : QString());
        if (isSet && length == 0)
        {
            list.back() = QStringLiteral("");
        }
        texts += length + 1;
    }
}

void CEnumNameInfo::SetText(KW_ENUM_NAME kind, INT32 value, const QString& text)
{
    if (IsValue(value))
    {
        std::vector<QString>& list = m_texts[static_cast<int>(kind)];
        list.resize(m_count);
        list[value] = text;
    }
}

void CEnumNameInfo::SetName(INT32 value, const QString& text)
{
    SetText(KW_ENUM_NAME::Display, value, text);
}

void CEnumNameInfo::SetShortName(INT32 value, const QString& text)
{
    SetText(KW_ENUM_NAME::Short, value, text);
}

void CEnumNameInfo::SetRemoteName(INT32 value, const QString& text)
{
    SetText(KW_ENUM_NAME::Remote, value, text);
}

void CEnumNameInfo::SetSerialName(INT32 value, const QString& text)
{
    SetText(KW_ENUM_NAME::Serial, value, text);
}

QString CEnumNameInfo::GetText(KW_ENUM_NAME kind, INT32 value) const
{
    const std::vector<QString>& list = m_texts[static_cast<int>(kind)];
    return IsValue(value) && !list.empty() ? list[value] : QString();
}

QString CEnumNameInfo::GetName(INT32 value) const
{
    return GetText(KW_ENUM_NAME::Display, value);
}

QString CEnumNameInfo::GetShortName(INT32 value) const
{
    return GetText(KW_ENUM_NAME::Short, value);
}

QString CEnumNameInfo::GetRemoteName(INT32 value) const
{
    return GetText(KW_ENUM_NAME::Remote, value);
}

QString CEnumNameInfo::GetSerialName(INT32 value) const
{
    return GetText(KW_ENUM_NAME::Serial, value);
}

std::optional<double> CEnumNameInfo::GetNumber(INT32 value) const
{
    if (m_numbers == nullptr || !IsValue(value) || std::isnan(m_numbers[value]))
    {
        return std::nullopt;
    }
    return m_numbers[value];
}

INT32 CEnumNameInfo::GetEnumSize() const
{
    return m_count;
}

const QString& CEnumNameInfo::GetType() const
{
    return m_type;
}

bool CEnumNameInfo::IsValue(INT32 value) const
{
    return value >= 0 && value < m_count;
}

CEnumNameInfo::t_Conversion CEnumNameInfo::Search(const QString& name, KW_ENUM_NAME kind,
                                                  Qt::CaseSensitivity cs) const
{
    t_Conversion found{eMATCH::None, -1};
    const std::vector<QString>& list = m_texts[static_cast<int>(kind)];
    for (INT32 value = 0; value < static_cast<INT32>(list.size()); ++value)
    {
        if (list[value].isNull() || list[value].compare(name, cs) != 0)
        {
            continue;
        }
        if (found.match != eMATCH::None)
        {
            return {eMATCH::Several, found.value};
        }
        found = {eMATCH::One, value};
    }
    return found;
}

CEnumNameInfo::t_Conversion CEnumNameInfo::ConvertName(const QString& name, KW_ENUM_NAME kind) const
{
    const t_Conversion exact = Search(name, kind, Qt::CaseSensitive);
    return exact.match != eMATCH::None ? exact : Search(name, kind, Qt::CaseInsensitive);
}
