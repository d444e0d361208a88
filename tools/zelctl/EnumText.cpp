// SPDX-License-Identifier: MIT
#include "EnumText.h"

#include "Failure.h"
#include "NearestNames.h"

#include <algorithm>
#include <iterator>

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
            KW_FormatEnum(names, static_cast<INT32>(all.indexOf(name)) % names.GetEnumSize());
        if (!serials.contains(serial))
        {
            serials.append(serial);
        }
    }
    return serials;
}

bool HasName(const CEnumNameInfo& names, INT32 value, const QString& text)
{
    return std::any_of(
        std::begin(kKinds), std::end(kKinds),
        [&](KW_ENUM_NAME kind)
        { return names.GetText(kind, value).compare(text, Qt::CaseInsensitive) == 0; });
}

QStringList GetValuesWithName(const CEnumNameInfo& names, const QString& text)
{
    QStringList serials;
    for (INT32 value = 0; value < names.GetEnumSize(); ++value)
    {
        if (HasName(names, value, text))
        {
            serials.append(KW_FormatEnum(names, value));
        }
    }
    return serials;
}

QString GetHint(const CEnumNameInfo& names, const QString& text)
{
    bool isNumber = false;
    const INT32 number = text.toInt(&isNumber);
    const QStringList nearest = isNumber && names.IsValue(number)
                                    ? QStringList(KW_FormatEnum(names, number))
                                    : GetNearestValues(names, text);
    return nearest.isEmpty()
               ? QStringLiteral("; \"zelctl enum %1\" lists its values").arg(names.GetType())
               : DidYouMean(nearest);
}
} // namespace

INT32 ReadEnum(const CEnumNameInfo& names, const QString& text, const QString& what)
{
    INT32 value = 0;
    const KW_ACCEPTANCE code = KW_ParseEnum(names, text, value);
    if (code == eKW_ACC_AMBIGUOUS_NAME)
    {
        throw CFailure(eSTATUS_USAGE,
                       QStringLiteral("\"%1\" stands for several values of %2%3")
                           .arg(text, what, DidYouMean(GetValuesWithName(names, text))));
    }
    if (!KW_IsAccepted(code))
    {
        throw CFailure(
            eSTATUS_USAGE,
            QStringLiteral("%1 has no value \"%2\"%3").arg(what, text, GetHint(names, text)));
    }
    return value;
}
