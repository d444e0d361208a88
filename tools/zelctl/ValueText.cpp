// SPDX-License-Identifier: MIT
#include "ValueText.h"

#include "KWEnumerationsUnits.h"

CFailure NoNumber(const QString& text, KW_UNIT unit, const QString& what)
{
    const QString unitText = KW_GetUnitText(unit);
    const QString small = KW_FormatNumber(0.0015, unit);
    const bool isPrefixed = !small.startsWith(QLatin1String("0.0015"));
    return {eSTATUS_USAGE,
            QStringLiteral("%1 takes a number%2 such as \"%3\", not \"%4\"")
                .arg(what, unitText.isEmpty() ? QString() : QStringLiteral(" in ") + unitText + ',',
                     isPrefixed ? small : KW_FormatNumber(1.5, unit), text)};
}

double ReadDouble(const QString& text, KW_UNIT unit, const QString& what)
{
    double number = 0.0;
    if (!KW_IsAccepted(KW_ParseNumber(text, unit, number)))
    {
        throw NoNumber(text, unit, what);
    }
    return number;
}
