// SPDX-License-Identifier: MIT
#include "EnumText.h"

#include "Failure.h"
#include "NearestNames.h"

namespace
{
constexpr KW_ENUM_NAME kKinds[] = {KW_ENUM_NAME::Serial, KW_ENUM_NAME::Remote,
                                   KW_ENUM_NAME::Display};

/** Serial names of the values that a name nearly fits: every kind of name may be mistyped. */
QStringList GetNearestValues(const CEnumNameInfo& names, const QString& text)
{
    QStringList all;
    for (const KW_ENUM_NAME kind : kKinds)
    {
        for (INT32 value = 0; value < names.GetEnumSize(); ++value)
        {
            all.append(names.GetText(kind, value));
        }
    }
    QStringList serials;
    for (const QString& name : GetNearestNames(text, all))
    {
        const QString serial =
            GetEnumText(names, static_cast<INT32>(all.indexOf(name)) % names.GetEnumSize());
        if (!serials.contains(serial))
        {
            serials.append(serial);
        }
    }
    return serials;
}

QStringList GetValuesWithName(const CEnumNameInfo& names, const QString& text, KW_ENUM_NAME kind)
{
    QStringList serials;
    for (INT32 value = 0; value < names.GetEnumSize(); ++value)
    {
        if (names.GetText(kind, value).compare(text, Qt::CaseInsensitive) == 0)
        {
            serials.append(GetEnumText(names, value));
        }
    }
    return serials;
}

QString GetHint(const CEnumNameInfo& names, const QString& text)
{
    bool isNumber = false;
    const INT32 number = text.toInt(&isNumber);
    const QStringList nearest = isNumber && names.IsValue(number)
                                    ? QStringList(GetEnumText(names, number))
                                    : GetNearestValues(names, text);
    return nearest.isEmpty()
               ? QStringLiteral("; \"zelctl enum %1\" lists its values").arg(names.GetType())
               : DidYouMean(nearest);
}
} // namespace

QString GetEnumText(const CEnumNameInfo& names, INT32 value)
{
    const QString serial = names.GetSerialName(value);
    return serial.isEmpty() ? QString::number(value) : serial;
}

INT32 ReadEnum(const CEnumNameInfo& names, const QString& text, const QString& what)
{
    for (const KW_ENUM_NAME kind : kKinds)
    {
        const auto found =
            text.isEmpty() ? CEnumNameInfo::t_Conversion{} : names.ConvertName(text, kind);
        if (!text.isEmpty() && found.match == CEnumNameInfo::eMATCH::One)
        {
            return found.value;
        }
        if (!text.isEmpty() && found.match == CEnumNameInfo::eMATCH::Several)
        {
            throw CFailure(eSTATUS_USAGE,
                           QStringLiteral("\"%1\" stands for several values of %2%3")
                               .arg(text, what, DidYouMean(GetValuesWithName(names, text, kind))));
        }
    }
    bool isNumber = false;
    const INT32 number = text.toInt(&isNumber);
    if (isNumber && names.IsValue(number) && names.GetSerialName(number).isEmpty())
    {
        return number;
    }
    throw CFailure(
        eSTATUS_USAGE,
        QStringLiteral("%1 has no value \"%2\"%3").arg(what, text, GetHint(names, text)));
}
