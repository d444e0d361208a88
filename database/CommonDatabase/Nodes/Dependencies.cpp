// SPDX-License-Identifier: MIT
#include "Dependencies.h"

#include "DbPropertyGroup.h"
#include "DbWays.h"
#include "ErrorReport.h"

#include <algorithm>
#include <functional>

void CDependencies::Enter(CDbPropertyGroup& group, const t_Couplings& rules)
{
    for (const t_Row& row : rules)
    {
        const auto [first, last] = rules.SourcesOf(row);
        const bool waits = row.cause == eCAUSE::Changed;
        const bool isAtOnce = row.cause == eCAUSE::On || row.cause == eCAUSE::Delivered;
        const bool isElsewhere =
            isAtOnce && std::any_of(first, last, [](const auto& path) { return !path.IsOwn(); });
        if (waits || isElsewhere)
        {
            FollowSources(PlaceFor({&group, &row, false, false}));
        }
    }
}

UINT16 CDependencies::PlaceFor(const t_Dependant& dependant)
{
    if (m_freePlaces.empty())
    {
        m_dependants.push_back(dependant);
        // What leaves again must not need memory: it may leave because there is none.
        m_freePlaces.reserve(m_dependants.capacity());
        return static_cast<UINT16>(m_dependants.size() - 1);
    }
    // The lowest first: rows of one table come back in their order.
    std::pop_heap(m_freePlaces.begin(), m_freePlaces.end(), std::greater<>());
    const UINT16 place = m_freePlaces.back();
    m_freePlaces.pop_back();
    m_dependants[place] = dependant;
    return place;
}

/** Own settings that start a row at once are the group's own business. */
void CDependencies::FollowSources(UINT16 place)
{
    CDbPropertyGroup& owner = *m_dependants[place].owner;
    const t_Row& row = *m_dependants[place].row;
    const auto [first, last] = owner.Rules().SourcesOf(row);
    const auto follow = [this, place, &row](CDbObject& source)
    { FollowNode(source, place, row.cause); };
    const auto mark = [this, place](CDbPropertyGroup& container)
    {
        container.SetFollowed(0, static_cast<UINT8>(eCAUSE::Items));
        if (std::find(m_followingItems.begin(), m_followingItems.end(), place) ==
            m_followingItems.end())
        {
            m_followingItems.push_back(place);
        }
    };
    for (const NNames::t_Path* path = first; path != last; ++path)
    {
        if (row.cause == eCAUSE::Changed || !path->IsOwn())
        {
            NWays::Visit(path->isFromRoot ? m_root : owner, *path, std::ref(follow),
                         std::ref(mark));
        }
    }
}

void CDependencies::FollowNode(CDbObject& source, UINT16 place, eCAUSE cause)
{
    if (source.GetSourceNumber() == 0)
    {
        if (m_freeNumbers.empty())
        {
            m_followersOfSource.emplace_back();
            m_freeNumbers.reserve(m_followersOfSource.capacity());
            m_freeNumbers.push_back(static_cast<UINT16>(m_followersOfSource.size()));
        }
        source.SetFollowed(m_freeNumbers.back(), 0);
        m_freeNumbers.pop_back();
    }
    t_Followers& followers = m_followersOfSource[source.GetSourceNumber() - 1U];
    if (std::find(followers.begin(), followers.end(), place) == followers.end())
    {
        followers.insert(std::upper_bound(followers.begin(), followers.end(), place), place);
    }
    source.SetFollowed(source.GetSourceNumber(), source.GetFollowed() | cause);
}

void CDependencies::EnterItem(const CDbPropertyGroup& container)
{
    if (HasCause(container.GetFollowed(), eCAUSE::Items))
    {
        // By index: what follows may add more.
        for (std::size_t i = 0; i < m_followingItems.size(); ++i)
        {
            FollowSources(m_followingItems[i]);
        }
    }
}

void CDependencies::LeaveItem(CDbPropertyGroup& item)
{
    item.VisitChildrenFirst([this](CDbPropertyGroup& group) { LeaveGroup(group); });
}

void CDependencies::LeaveGroup(const CDbPropertyGroup& group)
{
    for (const auto& property : group.Properties())
    {
        LeaveNode(*property);
    }
    for (const auto& action : group.Objects())
    {
        LeaveNode(*action);
    }
    for (std::size_t place = 0; place < m_dependants.size(); ++place)
    {
        if (m_dependants[place].owner == &group)
        {
            LeavePlace(static_cast<UINT16>(place));
        }
    }
}

void CDependencies::LeavePlace(UINT16 place)
{
    m_dependants[place] = {};
    m_freePlaces.push_back(place);
    std::push_heap(m_freePlaces.begin(), m_freePlaces.end(), std::greater<>());
    std::erase(m_followingItems, place);
    for (t_Followers& followers : m_followersOfSource)
    {
        std::erase(followers, place);
    }
}

void CDependencies::LeaveNode(CDbObject& source)
{
    if (source.GetSourceNumber() != 0)
    {
        m_followersOfSource[source.GetSourceNumber() - 1U].clear();
        m_freeNumbers.push_back(source.GetSourceNumber());
        source.SetFollowed(0, 0);
    }
}

QString CDependencies::NameOf(const t_Dependant& dependant)
{
    return QStringLiteral("%1/%2").arg(dependant.owner->GetPath(),
                                       QLatin1String(dependant.row->steps[0].name));
}

void CDependencies::MarkChanged(const CDbPropBase& property)
{
    if (!m_autoUpdate)
    {
        return;
    }
    for (const UINT16 place : m_followersOfSource[property.GetSourceNumber() - 1U])
    {
        t_Dependant& dependant = m_dependants[place];
        if (!dependant.Waits())
        {
            continue;
        }
        CRowTrace::NoteStart(*dependant.owner, *dependant.row, &property);
        if (dependant.marked)
        {
            continue;
        }
        if (dependant.done)
        {
            KW_REPORT_ERROR(QStringLiteral("Dependency cycle: \"%1\" changed again after \"%2\" "
                                           "ran; it is not run a second time")
                                .arg(property.GetPath(), NameOf(dependant)),
                            "CommonDatabase/Src/Dependencies");
            continue;
        }
        m_marked.push_back(place);
        dependant.marked = true;
        std::push_heap(m_marked.begin(), m_marked.end(), std::greater<>());
    }
}

void CDependencies::RunAllMarked()
{
    m_running = true;
    while (!m_marked.empty())
    {
        std::pop_heap(m_marked.begin(), m_marked.end(), std::greater<>());
        const UINT16 place = m_marked.back();
        m_marked.pop_back();
        if (m_dependants[place].marked) // its group may have left since
        {
            m_ran.push_back(place);
            m_dependants[place].marked = false;
            m_dependants[place].done = true;
            // The entry may move while it runs: a row may take items in.
            m_dependants[place].owner->RunRow(*m_dependants[place].row, nullptr);
        }
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

KW_ACCEPTANCE CDependencies::RunFollowers(eCAUSE cause, const CDbObject& source,
                                          const CDbPropBase* written)
{
    KW_ACCEPTANCE code = eKW_ACC_OK;
    // By index, and asked anew each time: a row may take items in or out.
    const std::size_t number = source.GetSourceNumber() - 1U;
    for (std::size_t i = 0; i < m_followersOfSource[number].size(); ++i)
    {
        const t_Dependant& dependant = m_dependants[m_followersOfSource[number][i]];
        if (m_autoUpdate && dependant.row->cause == cause)
        {
            CRowTrace::NoteStart(*dependant.owner, *dependant.row, &source);
            code = std::max(code, dependant.owner->RunRow(*dependant.row, written));
        }
    }
    return code;
}

void CDependencies::CalculateEverything()
{
    m_root.VisitChildrenFirst([](CDbPropertyGroup& group) { group.UpdateGroup(); });
    m_root.VisitChildrenFirst([](CDbPropertyGroup& group) { group.UpdateChildAvailabilities(); });
    for (std::size_t place = 0; place < m_dependants.size(); ++place)
    {
        const t_Dependant& dependant = m_dependants[place];
        if (dependant.owner != nullptr && dependant.Waits() &&
            dependant.row->again != eAGAIN::Never)
        {
            CRowTrace::NoteStart(*dependant.owner, *dependant.row, nullptr);
            dependant.owner->RunRow(*dependant.row, nullptr);
        }
    }
}
