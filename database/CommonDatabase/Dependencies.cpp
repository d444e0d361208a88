// SPDX-License-Identifier: MIT
#include "Dependencies.h"

#include "DbPropertyGroup.h"
#include "ErrorReport.h"

void CDependencies::Add(CDbPropertyGroup& owner, const std::vector<CDbPropBase*>& sources,
                        std::function<void()> update, const QString& name)
{
    const auto place = static_cast<UINT16>(m_dependants.size());
    for (CDbPropBase* const source : sources)
    {
        if (!source->HasDependants())
        {
            m_dependantsOfSource.emplace_back();
            source->SetSourceNumber(static_cast<UINT16>(m_dependantsOfSource.size()));
        }
        m_dependantsOfSource[source->GetSourceNumber() - 1U].push_back(place);
    }
    m_dependants.push_back({&owner, std::move(update), name, false, false});
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
        dependant.marked = true;
        m_anyMarked = true;
    }
}

void CDependencies::RunMarked()
{
    if (m_running || !m_anyMarked)
    {
        return;
    }
    m_running = true;
    const auto isMarked = [](const t_Dependant& dependant) { return dependant.marked; };
    for (auto next = std::find_if(m_dependants.begin(), m_dependants.end(), isMarked);
         next != m_dependants.end();
         next = std::find_if(m_dependants.begin(), m_dependants.end(), isMarked))
    {
        next->marked = false;
        next->done = true;
        next->update();
    }
    for (t_Dependant& dependant : m_dependants)
    {
        dependant.done = false;
    }
    m_anyMarked = false;
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
