// SPDX-License-Identifier: MIT
#include "LabelList/LabelConditions.h"

#include "ConditionText.h"

#include <QStringList>
#include <algorithm>

namespace
{
QString RangeText(const KW_RawRange& range)
{
    const QString first = QString::number(range.first);
    return range.first == range.last ? first
                                     : first + QLatin1Char('-') + QString::number(range.last);
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
    const auto condition = NConditionText::Read(text);
    if (!condition)
    {
        return false;
    }
    std::vector<KW_RawRange> ranges;
    for (const auto& [first, last] : condition->ranges)
    {
        ranges.push_back({first, last});
    }
    Arrange(ranges);
    details.multiplexor = condition->name.toStdString();
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
