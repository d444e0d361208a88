// SPDX-License-Identifier: MIT
#include "LabelList/LabelConditions.h"

#include <QStringList>
#include <algorithm>
#include <limits>
#include <optional>

namespace
{
QString RangeText(const KW_RawRange& range)
{
    const QString first = QString::number(range.first);
    return range.first == range.last ? first
                                     : first + QLatin1Char('-') + QString::number(range.last);
}

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

std::optional<KW_RawRange> ReadRange(QStringView text)
{
    const qsizetype dash = text.indexOf(QLatin1Char('-'));
    const auto first = ReadNumber(dash < 0 ? text : text.left(dash));
    const auto last = dash < 0 ? first : ReadNumber(text.mid(dash + 1));
    return first && last && *first <= *last ? std::optional(KW_RawRange{*first, *last})
                                            : std::nullopt;
}
} // namespace

QString NLabelConditions::TextOf(const KW_LabelSignalDetails& details)
{
    if (details.multiplexor.empty())
    {
        return {};
    }
    QStringList ranges;
    for (const KW_RawRange& range : details.selectedBy)
    {
        ranges << RangeText(range);
    }
    return QString::fromStdString(details.multiplexor) + QStringLiteral(" = ") +
           ranges.join(QStringLiteral(", "));
}

bool NLabelConditions::Read(QStringView text, KW_LabelSignalDetails& details)
{
    if (text.trimmed().isEmpty())
    {
        details.multiplexor.clear();
        details.selectedBy.clear();
        return true;
    }
    const QString whole = text.toString();
    const auto sign = whole.lastIndexOf(QLatin1Char('='));
    const QString name = sign < 0 ? QString() : whole.left(sign).trimmed();
    if (name.isEmpty())
    {
        return false;
    }
    std::vector<KW_RawRange> ranges;
    for (const QString& part : whole.mid(sign + 1).split(QLatin1Char(',')))
    {
        const auto range = ReadRange(part);
        if (!range)
        {
            return false;
        }
        ranges.push_back(*range);
    }
    Arrange(ranges);
    details.multiplexor = name.toStdString();
    details.selectedBy = std::move(ranges);
    return true;
}

void NLabelConditions::Arrange(std::vector<KW_RawRange>& ranges)
{
    std::sort(ranges.begin(), ranges.end(),
              [](const KW_RawRange& a, const KW_RawRange& b) { return a.first < b.first; });
    std::size_t kept = 0;
    for (const KW_RawRange& range : ranges)
    {
        const bool touches = kept > 0 && (range.first <= ranges[kept - 1].last ||
                                          range.first - 1 == ranges[kept - 1].last);
        if (touches)
        {
            ranges[kept - 1].last = std::max(ranges[kept - 1].last, range.last);
        }
        else
        {
            ranges[kept++] = range;
        }
    }
    ranges.resize(kept);
}

bool NLabelConditions::Selects(const std::vector<KW_RawRange>& ranges, UINT64 raw)
{
    const auto next = std::upper_bound(ranges.begin(), ranges.end(), raw,
                                       [](UINT64 value, const KW_RawRange& range)
                                       { return value < range.first; });
    return next != ranges.begin() && raw <= std::prev(next)->last;
}
