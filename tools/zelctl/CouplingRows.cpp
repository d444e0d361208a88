// SPDX-License-Identifier: MIT
#include "CouplingRows.h"

#include "TreeWalk.h"

#include <QJsonArray>
#include <QRegularExpression>
#include <algorithm>

namespace
{
bool IsSame(const KW_CouplingStep& one, const KW_CouplingStep& other)
{
    return one.row == other.row && one.group == other.group && one.step == other.step;
}

/** Whether a path is among the sources of a row, in which "[each]" stands for any item. */
bool IsSource(const KW_CouplingRow& row, const QString& path, const QString& collapsed)
{
    return std::any_of(row.sources.begin(), row.sources.end(),
                       [&](const QString& source) {
                           return source == path ||
                                  (source.contains(QLatin1String("[each]")) && source == collapsed);
                       });
}

QString NameOf(const QString& group)
{
    return group.isEmpty() ? QStringLiteral("root") : group;
}
} // namespace

const std::vector<KW_CouplingRow>& CDeclaredRows::RowsOf(const QString& group)
{
    const auto known = m_rows.find(group);
    return known != m_rows.end()
               ? known->second
               : m_rows.emplace(group, KW_GetCouplingRows(*m_session.FindGroup(group)))
                     .first->second;
}

std::vector<KW_CouplingRow> CDeclaredRows::GetAtAndBelow(const QString& path)
{
    std::vector<KW_CouplingRow> rows;
    const auto add = [this, &rows](const std::shared_ptr<IDbObject>& node, int)
    {
        if (dynamic_cast<const IDbGroup*>(node.get()) != nullptr)
        {
            const auto& further = RowsOf(node->GetPath());
            rows.insert(rows.end(), further.begin(), further.end());
        }
    };
    const auto start = m_session.Find(path);
    add(start, 0);
    if (auto* const group = dynamic_cast<IDbGroup*>(start.get()))
    {
        WalkTree(*group, 0, add);
    }
    return rows;
}

std::vector<KW_CouplingRow> CDeclaredRows::GetStartedBy(const IDbProperty& property)
{
    static const QRegularExpression item(QStringLiteral("\\[[^]]*\\]"));
    const QString path = property.GetPath();
    const QString collapsed = QString(path).replace(item, QStringLiteral("[each]"));
    std::vector<KW_CouplingRow> rows = GetAtAndBelow({});
    const auto end = std::remove_if(rows.begin(), rows.end(),
                                    [&](const KW_CouplingRow& row)
                                    {
                                        const bool isOfAny = row.word == QLatin1String("OnAny") &&
                                                             row.group == GetParentPath(path);
                                        return !isOfAny && !IsSource(row, path, collapsed);
                                    });
    rows.erase(end, rows.end());
    return rows;
}

QString CDeclaredRows::WhenOf(const KW_CouplingStep& step)
{
    const auto& rows = RowsOf(step.group);
    return KW_FormatCouplingWhen(rows.at(static_cast<std::size_t>(step.row) - 1));
}

QStringList CDeclaredRows::Describe(const t_Steps& steps, bool brief)
{
    QStringList lines;
    for (const KW_CouplingStep& step : steps)
    {
        const bool isTold = brief || !m_told.insert({step.group, step.row}).second;
        const QString when = isTold ? QString() : WhenOf(step);
        lines.append(QStringLiteral("by %1 %2%3: %4")
                         .arg(NameOf(step.group))
                         .arg(step.row)
                         .arg(when.isEmpty() ? QString() : QStringLiteral(", ") + when, step.step));
    }
    return lines;
}

QJsonArray CDeclaredRows::ToJson(const t_Steps& steps)
{
    QJsonArray json;
    for (const KW_CouplingStep& step : steps)
    {
        json.append(QJsonObject{{QStringLiteral("group"), step.group},
                                {QStringLiteral("row"), step.row},
                                {QStringLiteral("when"), WhenOf(step)},
                                {QStringLiteral("step"), step.step}});
    }
    return json;
}

QString DescribeRow(const KW_CouplingRow& row)
{
    const QString when = KW_FormatCouplingWhen(row);
    return QStringLiteral("%1 %2%3: %4 %5")
        .arg(NameOf(row.group))
        .arg(row.number)
        .arg(when.isEmpty() ? QString() : QStringLiteral(", ") + when, row.what,
             row.steps.join(QLatin1String(", ")))
        .trimmed();
}

QJsonObject ToJson(const KW_CouplingRow& row)
{
    return {{QStringLiteral("group"), row.group},
            {QStringLiteral("row"), row.number},
            {QStringLiteral("when"), KW_FormatCouplingWhen(row)},
            {QStringLiteral("sources"), QJsonArray::fromStringList(row.sources)},
            {QStringLiteral("what"), row.what},
            {QStringLiteral("steps"), QJsonArray::fromStringList(row.steps)}};
}

CRowWatch::CRowWatch()
{
    KW_WatchCouplings(
        [this](const QString& path, const t_Steps& running)
        {
            if (!running.empty())
            {
                AddSteps(m_steps[path], {running.back()});
            }
        });
}

CRowWatch::~CRowWatch()
{
    KW_WatchCouplings({});
}

t_Steps CRowWatch::GetSteps(const QString& path) const
{
    QString at = path;
    while (!at.isEmpty() && !m_steps.contains(at))
    {
        at = GetParentPath(at);
    }
    return m_steps.value(at);
}

void AddSteps(t_Steps& steps, const t_Steps& further)
{
    for (const KW_CouplingStep& step : further)
    {
        if (std::none_of(steps.begin(), steps.end(),
                         [&step](const KW_CouplingStep& known) { return IsSame(known, step); }))
        {
            steps.push_back(step);
        }
    }
}
