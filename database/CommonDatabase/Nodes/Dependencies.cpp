// SPDX-License-Identifier: MIT
#include "Dependencies.h"

#include "DbPropertyGroup.h"
#include "ErrorReport.h"

#include <algorithm>

void CDependencies::Add(CDbPropertyGroup& owner, const std::vector<CDbPropBase*>& sources,
                        std::function<void()> update, const QString& name)
{
    const auto place = static_cast<UINT16>(m_dependants.size());
    m_dependants.push_back({&owner, std::move(update), name, false, false});
    for (CDbPropBase* const source : sources)
    {
        if (!source->HasDependants())
        {
            m_dependantsOfSource.emplace_back();
            source->SetSourceNumber(static_cast<UINT16>(m_dependantsOfSource.size()));
        }
        m_dependantsOfSource[source->GetSourceNumber() - 1U].push_back(place);
    }
}

void CDependencies::Remove(const CDbPropertyGroup& owner)
{
    for (t_Dependant& dependant : m_dependants)
    {
        if (dependant.owner == &owner)
        {
            dependant = {nullptr, [] {}, QString(), false, false};
        }
    }
}

void CDependencies::MarkChanged(const CDbPropBase& property)
{
    if (!m_autoUpdate)
    {
        return;
    }
    for (const UINT16 place : m_dependantsOfSource[property.GetSourceNumber() - 1U])
    {
        t_Dependant& dependant = m_dependants[place];
        if (dependant.done)
        {
            KW_REPORT_ERROR(QStringLiteral("Dependency cycle: \"%1\" changed again after \"%2\" "
                                           "ran; it is not run a second time")
                                .arg(property.GetPath(), dependant.name),
                            "CommonDatabase/Src/Dependencies");
            continue;
        }
        if (!dependant.marked)
        {
            m_marked.push_back(place);
            dependant.marked = true;
            std::push_heap(m_marked.begin(), m_marked.end(), std::greater<>());
        }
    }
}

void CDependencies::RunMarked()
{
    if (m_running || m_marked.empty())
    {
        return;
    }
    m_running = true;
    while (!m_marked.empty())
    {
        std::pop_heap(m_marked.begin(), m_marked.end(), std::greater<>());
        m_ran.push_back(m_marked.back());
        m_marked.pop_back();
        t_Dependant& next = m_dependants[m_ran.back()];
        next.marked = false;
        next.done = true;
        next.update();
    }
    Forget();
}

void CDependencies::Forget()
{
    for (const UINT16 place : m_marked)
    {
        m_dependants[place].marked = false;
    }
    for (const UINT16 place : m_ran)
    {
        m_dependants[place].done = false;
    }
    m_marked.clear();
    m_ran.clear();
    m_running = false;
}

void CDependencies::CalculateEverything()
{
    m_root.VisitChildrenFirst([](CDbPropertyGroup& group) { group.UpdateGroup(); });
    m_root.VisitChildrenFirst([](CDbPropertyGroup& group) { group.UpdateChildAvailabilities(); });
    for (const t_Dependant& dependant : m_dependants)
    {
        dependant.update();
    }
}
