// SPDX-License-Identifier: MIT
#include "CommonDatabase/Nodes/DbPropertyGroup.h"
#include "CommonDatabase/Properties/DbPropText.h"
#include "CommonDatabase/Values/Decimal.h"
#include "EnumNameInfo.h"
#include "KWEnumerationsUnits.h"
#include "KWTexts.h"
#include "LockManager.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace
{
constexpr std::array kIntegerTypes{"int16", "uint16", "int32", "uint32", "int64", "uint64"};

bool IsInteger(const QString& type)
{
    return std::any_of(kIntegerTypes.begin(), kIntegerTypes.end(),
                       [&type](const char* name) { return type == QLatin1String(name); });
}

bool IsNumber(const QString& type)
{
    return type == QLatin1String("double") || IsInteger(type);
}

bool IsText(const QString& type)
{
    return type == QLatin1String("string") || type == QLatin1String("filepath");
}

QString Quoted(const QString& text)
{
    QString shown = text;
    shown.replace(QLatin1Char('\n'), QLatin1String("\\n"));
    return QLatin1Char('"') + shown + QLatin1Char('"');
}

/** Hexadecimal digits behind "0x" as decimal text; empty for any other text. */
QString FromHexadecimal(const QString& written)
{
    const QString text = written.trimmed();
    const QStringView digits = QStringView(text).mid(2);
    const auto isDigit = [](QChar c)
    { return (c >= u'0' && c <= u'9') || (c.toLower() >= u'a' && c.toLower() <= u'f'); };
    if (!text.startsWith(QLatin1String("0x"), Qt::CaseInsensitive) || digits.isEmpty() ||
        !std::all_of(digits.begin(), digits.end(), isDigit))
    {
        return QString();
    }
    bool fits = false;
    const qulonglong value = digits.toString().toULongLong(&fits, 16);
    // What 64 bits can not hold is above every maximum: the next number says so.
    return fits ? QString::number(value) : QStringLiteral("18446744073709551616");
}

KW_ACCEPTANCE ParseInteger(const QString& written, KW_UNIT unit, QString& text)
{
    QString number = FromHexadecimal(written);
    if (number.isEmpty())
    {
        if (const KW_ACCEPTANCE code = KW_ParseNumber(written, unit, number); !KW_IsAccepted(code))
        {
            return code;
        }
    }
    auto decimal = ReadDecimal(number);
    if (!decimal || !decimal->IsWhole())
    {
        return eKW_ACC_BAD_TEXT;
    }
    // A whole number is written without an exponent; forty zeros are beyond every type.
    constexpr int kMostZeros = 40;
    decimal->exponent = std::min(decimal->exponent, kMostZeros);
    text = decimal->ToPlainText();
    return eKW_ACC_OK;
}

QString WithoutGaps(QString pattern)
{
    pattern.remove(QLatin1Char(' ')).remove(QLatin1Char('_'));
    return pattern.toUpper();
}

template <typename TMembers>
int PlaceIn(const TMembers& members, const CDbObject& node)
{
    const auto found = std::find_if(members.begin(), members.end(),
                                    [&node](const auto& member) { return member.get() == &node; });
    return static_cast<int>(found - members.begin());
}

/** Place of a member's sentence among those of its group, whose own is the first. */
int PlaceOf(const CDbObject& node, const CDbPropertyGroup& group)
{
    const int properties = static_cast<int>(group.Properties().size());
    const bool isProperty = node.GetKind() == eKW_NODE_PROPERTY;
    return 1 + (isProperty ? PlaceIn(group.Properties(), node)
                           : properties + PlaceIn(group.Objects(), node));
}

/** Empty behind the last text, as for members that rules have added to those of the model. Words of
    remote control that stand behind the first are left out. */
QString TextAt(const char* texts, int place)
{
    for (; *texts != '\0' && place > 0; --place)
    {
        texts += std::strlen(texts) + 1;
    }
    return QString::fromUtf8(texts, static_cast<int>(std::strcspn(texts, "\1")));
}

QString MeaningIn(const CDbPropertyGroup& group, const CDbObject& node)
{
    switch (group.GetKind())
    {
    case eKW_NODE_ARRAY:
        return QStringLiteral("Index of the active item; -1 when none is.");
    case eKW_NODE_MAP:
        return QStringLiteral("Name of the active item; empty when none is.");
    default:
        return TextAt(group.GetMeanings(), PlaceOf(node, group));
    }
}
} // namespace

QString KW_GetMeaning(const IDbObject& node)
{
    const CLockGuard lock(eACCESS_READ);
    if (const auto* const group = dynamic_cast<const CDbPropertyGroup*>(&node))
    {
        return TextAt(group->GetMeanings(), 0);
    }
    const auto* const member = dynamic_cast<const CDbObject*>(&node);
    const CDbPropertyGroup* const group = member != nullptr ? member->GetParent() : nullptr;
    return group != nullptr ? MeaningIn(*group, *member) : QString();
}

bool KW_IsSecret(const IDbObject& node)
{
    const auto* const property = dynamic_cast<const CDbPropBase*>(&node);
    return property != nullptr && property->IsSecret();
}

QString KW_GetSecretText()
{
    return QStringLiteral("••••••••");
}

QString KW_FormatEnum(const CEnumNameInfo& names, INT32 value)
{
    const QString serial = names.GetSerialName(value);
    return serial.isEmpty() ? QString::number(value) : serial;
}

KW_ACCEPTANCE KW_ParseEnum(const CEnumNameInfo& names, const QString& text, INT32& value)
{
    constexpr std::array kKinds{KW_ENUM_NAME::Serial, KW_ENUM_NAME::Remote, KW_ENUM_NAME::Display};
    for (const KW_ENUM_NAME kind : kKinds)
    {
        const auto found =
            text.isEmpty() ? CEnumNameInfo::t_Conversion{} : names.ConvertName(text, kind);
        if (found.match == CEnumNameInfo::eMATCH::Several)
        {
            return eKW_ACC_AMBIGUOUS_NAME;
        }
        if (found.match == CEnumNameInfo::eMATCH::One)
        {
            value = found.value;
            return eKW_ACC_OK;
        }
    }
    bool isNumber = false;
    const INT32 number = text.toInt(&isNumber);
    if (!isNumber || !names.IsValue(number) || !names.GetSerialName(number).isEmpty())
    {
        return eKW_ACC_UNKNOWN_VALUE;
    }
    value = number;
    return eKW_ACC_OK;
}

KW_ValueText KW_GetValueText(const IDbProperty& property)
{
    return {property.GetText(), property.GetTypeName(), property.GetUnitCode(),
            KW_IsSecret(property)};
}

QString KW_GetFormText(const IDbProperty& property)
{
    const auto* const text = dynamic_cast<const CDbPropString*>(&property);
    return text != nullptr ? NTextForm::Describe(text->GetForm()) : QString();
}

KW_ValueText KW_GetUserValueText(const IDbProperty& property)
{
    const CLockGuard lock(eACCESS_READ);
    const auto* const node = dynamic_cast<const CDbPropBase*>(&property);
    return {node != nullptr ? node->GetWishText() : QString(), property.GetTypeName(),
            property.GetUnitCode(), KW_IsSecret(property)};
}

QString KW_FormatValue(const KW_ValueText& value, bool exact)
{
    if (value.secret)
    {
        return KW_GetSecretText();
    }
    if (IsNumber(value.type))
    {
        return KW_FormatNumber(value.text, value.unit, exact);
    }
    if (value.type == QLatin1String("blob") && !exact)
    {
        return QStringLiteral("%1 bytes").arg(QByteArray::fromBase64(value.text.toLatin1()).size());
    }
    return IsText(value.type) || value.text.isEmpty() ? Quoted(value.text) : value.text;
}

KW_ACCEPTANCE KW_ParseValue(const IDbProperty& property, const QString& written, QString& text)
{
    const QString type = property.GetTypeName();
    if (IsInteger(type))
    {
        return ParseInteger(written, property.GetUnitCode(), text);
    }
    if (IsNumber(type))
    {
        return KW_ParseNumber(written, property.GetUnitCode(), text);
    }
    if (const CEnumNameInfo* const names = property.GetEnumNameInfo())
    {
        INT32 value = 0;
        const KW_ACCEPTANCE code = KW_ParseEnum(*names, written, value);
        text = KW_IsAccepted(code) ? KW_FormatEnum(*names, value) : text;
        return code;
    }
    text = type == QLatin1String("bitpattern") ? WithoutGaps(written) : written;
    return eKW_ACC_OK;
}
