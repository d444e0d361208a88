// SPDX-License-Identifier: MIT
#include "ConditionText.h"

#include <QStringList>
#include <algorithm>

namespace
{
using NConditionText::t_Range;

std::optional<UINT64> ReadNumber(QStringView text)
{
    const QStringView digits = text.trimmed();
    if (digits.isEmpty() ||
        !std::all_of(digits.begin(), digits.end(),
                     [](QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); }))
    {
        return std::nullopt;
    }
    bool isNumber = false;
    const UINT64 value = digits.toString().toULongLong(&isNumber);
    return isNumber ? std::optional(value) : std::nullopt;
}

std::optional<t_Range> ReadRange(QStringView text)
{
    const auto dash = std::find(text.begin(), text.end(), QChar(u'-')) - text.begin();
    const bool isRange = dash < text.size();
    const auto first = ReadNumber(text.left(dash));
    const auto last = isRange ? ReadNumber(text.mid(dash + 1)) : first;
    return first && last && *first <= *last ? std::optional(t_Range{*first, *last}) : std::nullopt;
}
} // namespace

std::optional<NConditionText::t_Condition> NConditionText::Read(QStringView text)
{
    const QString whole = text.toString();
    const auto sign = whole.lastIndexOf(QLatin1Char('='));
    t_Condition condition{sign < 0 ? QString() : whole.left(sign).trimmed(), {}};
    if (condition.name.isEmpty())
    {
        return std::nullopt;
    }
    for (const QString& part : whole.mid(sign + 1).split(QLatin1Char(',')))
    {
        const auto range = ReadRange(part);
        if (!range)
        {
            return std::nullopt;
        }
        condition.ranges.push_back(*range);
    }
    return condition;
}
