// SPDX-License-Identifier: MIT
#include "KWCouplings.h"

#include "DbPgRoot.h"
#include "DbWays.h"
#include "LockManager.h"

#include <algorithm>
#include <memory>

namespace
{
QString WordOf(eCAUSE cause)
{
    switch (cause)
    {
    case eCAUSE::On:
        return QStringLiteral("On");
    case eCAUSE::OnAny:
        return QStringLiteral("OnAny");
    case eCAUSE::Delivered:
        return QStringLiteral("Delivered");
    case eCAUSE::Changed:
        return QStringLiteral("Changed");
    case eCAUSE::Items:
        return QStringLiteral("Items");
    case eCAUSE::Fresh:
        return QStringLiteral("Fresh");
    case eCAUSE::Twins:
        return QStringLiteral("Twins");
    case eCAUSE::None:
        break;
    }
    return {};
}

QString WhatOf(const t_Row& row)
{
    if (row.cause == eCAUSE::Twins)
    {
        return {};
    }
    return row.again == eAGAIN::Never       ? QStringLiteral("Do")
           : row.again == eAGAIN::WithGroup ? QStringLiteral("Derive")
                                            : QStringLiteral("Settle");
}

int NumberOf(const t_Row& row, const t_Couplings& rules)
{
    return static_cast<int>(&row - rules.begin()) + 1;
}

/** Passes on what the trace of rows tells, as texts, to who watches the node's tree or all trees.
 */
class CTextTrace final : public CRowTrace
{
public:
    /** Of all trees where `root` is null; an empty `watch` ends it. */
    void SetWatch(const CDbPgRoot* root, KW_CouplingWatch watch)
    {
        const auto known = std::find_if(m_watches.begin(), m_watches.end(),
                                        [root](const t_Watch& one) { return one.root == root; });
        if (known != m_watches.end())
        {
            m_watches.erase(known);
        }
        if (watch)
        {
            m_watches.push_back({root, std::move(watch)});
        }
    }
    bool HasWatches() const { return !m_watches.empty(); }

    void OnStarted(const CDbPropertyGroup& /*group*/, const t_Row& /*row*/,
                   const CDbObject* /*source*/) override
    {
    }
    void OnChanged(const CDbObject& node, const t_RunningRow* running) override
    {
        const CDbPgRoot* const root = node.GetDbRoot();
        for (const t_Watch& one : m_watches)
        {
            if (one.root == nullptr || one.root == root)
            {
                one.watch(node.GetPath(), StepsOf(running));
            }
        }
    }

private:
    struct t_Watch
    {
        const CDbPgRoot* root;
        KW_CouplingWatch watch;
    };

    static std::vector<KW_CouplingStep> StepsOf(const t_RunningRow* running)
    {
        std::vector<KW_CouplingStep> steps;
        for (; running != nullptr; running = running->below)
        {
            steps.push_back({running->group->GetPath(),
                             NumberOf(*running->row, running->group->Rules()),
                             QString::fromLatin1(running->step->name)});
        }
        std::reverse(steps.begin(), steps.end());
        return steps;
    }

    std::vector<t_Watch> m_watches;
};

void Watch(const CDbPgRoot* root, KW_CouplingWatch watch)
{
    // Not destroyed with the process: the tree may be written to until its very end.
    static auto* const s_trace = new CTextTrace;
    s_trace->SetWatch(root, std::move(watch));
    CRowTrace::Watch(s_trace->HasWatches() ? s_trace : nullptr);
}
} // namespace

std::vector<KW_CouplingRow> KW_GetCouplingRows(const IDbGroup& group)
{
    const CLockGuard lock(eACCESS_READ);
    const auto& owner = dynamic_cast<const CDbPropertyGroup&>(group);
    const CDbPropertyGroup* const root = owner.GetDbRoot();
    const t_Couplings rules = owner.Rules();
    std::vector<KW_CouplingRow> rows;
    for (const t_Row& row : rules)
    {
        KW_CouplingRow& text = rows.emplace_back();
        text.group = owner.GetPath();
        text.number = NumberOf(row, rules);
        text.word = WordOf(row.cause);
        text.what = WhatOf(row);
        const auto [first, last] = rules.SourcesOf(row);
        for (const NNames::t_Path* path = first; path != last; ++path)
        {
            const bool isBelowRoot = path->isFromRoot && root != nullptr;
            text.sources.append(NWays::TextOf(isBelowRoot ? *root : owner, *path));
        }
        for (UINT8 i = 0; i < row.stepCount; ++i)
        {
            text.steps.append(QString::fromLatin1(row.steps[i].name));
        }
    }
    return rows;
}

QString KW_FormatCouplingWhen(const KW_CouplingRow& row)
{
    const QString own = row.group + QLatin1Char('/');
    QStringList names;
    for (const QString& source : row.sources)
    {
        names.append(source.startsWith(own) ? source.mid(own.size()) : source);
    }
    return row.word.isEmpty()
               ? QString()
               : QStringLiteral("%1(%2)").arg(row.word, names.join(QLatin1String(", ")));
}

void KW_WatchCouplings(KW_CouplingWatch watch)
{
    const CLockGuard lock;
    Watch(nullptr, std::move(watch));
}

void KW_WatchCouplings(const IDbGroup& group, KW_CouplingWatch watch)
{
    const CLockGuard lock;
    // A group that has left its tree belongs to none, and nothing is told of it.
    if (const CDbPgRoot* const root = dynamic_cast<const CDbPropertyGroup&>(group).GetDbRoot())
    {
        Watch(root, std::move(watch));
    }
}
