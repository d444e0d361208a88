// SPDX-License-Identifier: MIT
#include "TreeWatch.h"

#include "TreeWalk.h"

CTreeWatch::t_Property::t_Property(const std::shared_ptr<IDbProperty>& property)
    : node(property), read(GetMarksReader(property)), state(TakeState(*property))
{
    if (read)
    {
        marks = read();
    }
}

bool CTreeWatch::t_Property::MayDiffer() const
{
    return !read || read() != marks;
}

CTreeWatch::CTreeWatch(std::shared_ptr<IDbGroup> group) : m_group(std::move(group))
{
    Take();
}

void CTreeWatch::Take()
{
    m_group->HasChanged(m_counter);
    m_state = TakeState(*m_group);
    m_properties.clear();
    m_children.clear();
    WalkTree(*m_group, 1,
             [this](const std::shared_ptr<IDbObject>& node, int)
             {
                 if (auto group = std::dynamic_pointer_cast<IDbGroup>(node))
                 {
                     m_children.emplace_back(std::move(group));
                 }
                 else if (const auto property = std::dynamic_pointer_cast<IDbProperty>(node))
                 {
                     m_properties.emplace_back(property);
                 }
             });
}

std::vector<t_Change> CTreeWatch::GetChanges()
{
    t_Collecting collecting{false, {}};
    Collect(collecting, false);
    return std::move(collecting.changes);
}

std::vector<t_Change> CTreeWatch::Update()
{
    t_Collecting collecting{true, {}};
    Collect(collecting, false);
    return std::move(collecting.changes);
}

/** Items are the last children: they stand behind the groups that the model declares. */
bool CTreeWatch::HasOtherItems() const
{
    const IDbContainer* const container = m_group->AsContainer();
    if (container == nullptr)
    {
        return false;
    }
    const INT32 count = container->GetCount();
    const auto first = static_cast<std::size_t>(m_group->GetGroupCount());
    if (m_children.size() != first + static_cast<std::size_t>(count))
    {
        return true;
    }
    for (INT32 i = 0; i < count; ++i)
    {
        const CTreeWatch& known = m_children[first + static_cast<std::size_t>(i)];
        const auto item = container->GetItemByPosition(i);
        if (item != known.m_group || item->GetPath() != known.m_state.path)
        {
            return true;
        }
    }
    return false;
}

void CTreeWatch::AddStates(CSnapshot& snapshot) const
{
    snapshot.Add(m_state);
    for (const t_Property& property : m_properties)
    {
        snapshot.Add(property.state);
    }
    for (const CTreeWatch& child : m_children)
    {
        child.AddStates(snapshot);
    }
}

/** Other items: paths tell which of them are the same. */
void CTreeWatch::CollectItems(t_Collecting& collecting)
{
    CSnapshot before;
    AddStates(before);
    CTreeWatch other(m_group);
    CSnapshot after;
    other.AddStates(after);
    for (t_Change& change : Compare(before, after))
    {
        collecting.changes.push_back(std::move(change));
    }
    if (collecting.follows)
    {
        *this = std::move(other);
    }
}

void CTreeWatch::CollectProperty(t_Collecting& collecting, t_Property& property, bool groupMoved)
{
    if (!property.MayDiffer())
    {
        return;
    }
    t_NodeState now = TakeState(*property.node);
    AddDifferences(collecting.changes, property.state, now);
    if (!groupMoved && now.availability != property.state.availability)
    {
        collecting.changes.push_back({eCHANGE::Availability, property.state, now});
    }
    if (collecting.follows)
    {
        property.state = std::move(now);
        property.marks = property.read ? property.read() : t_PropertyMarks{};
    }
}

void CTreeWatch::Collect(t_Collecting& collecting, bool parentMoved)
{
    long long counter = m_counter;
    const bool changed = m_group->HasChanged(collecting.follows ? m_counter : counter);
    if (!changed && !parentMoved)
    {
        return;
    }
    if (HasOtherItems())
    {
        CollectItems(collecting);
        return;
    }
    const KW_AVAILABILITY availability = m_group->GetAvailability();
    const bool moved = availability != m_state.availability;
    t_NodeState before = m_state;
    m_state.availability = availability;
    if (moved && !parentMoved)
    {
        collecting.changes.push_back({eCHANGE::Availability, before, m_state});
    }
    for (t_Property& property : m_properties)
    {
        CollectProperty(collecting, property, moved);
    }
    for (CTreeWatch& child : m_children)
    {
        child.Collect(collecting, moved);
    }
    if (!collecting.follows)
    {
        m_state = std::move(before);
    }
}
