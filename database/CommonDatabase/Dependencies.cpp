// SPDX-License-Identifier: MIT
#include "Dependencies.h"

#include "DbPropertyGroup.h"
#include "ErrorReport.h"

#include <algorithm>

void CDependencies::Add(CDbPropertyGroup& owner, std::initializer_list<CDbPropBase*> sources,
                        std::function<void()> update, const QString& name)
{
    for (CDbPropBase* const source : sources)
    {
        source->SetHasDependants();
    }
    m_dependants.push_back(
        {&owner, {sources.begin(), sources.end()}, std::move(update), name, false, false});
}

void CDependencies::Remove(const CDbPropertyGroup& owner)
{
    m_dependants.erase(std::remove_if(m_dependants.begin(), m_dependants.end(),
                                      [&owner](const t_Dependant& dependant)
                                      { return dependant.owner == &owner; }),
                       m_dependants.end());
}

void CDependencies::MarkChanged(const CDbPropBase& property)
{
    if (!m_autoUpdate)
    {
        return;
    }
    for (t_Dependant& dependant : m_dependants)
    {
        if (std::find(dependant.sources.begin(), dependant.sources.end(), &property) ==
            dependant.sources.end())
        {
            continue;
        }
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
