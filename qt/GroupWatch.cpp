// SPDX-License-Identifier: MIT
#include "GroupWatch.h"

#include <algorithm>
#include <set>

// Models first: pages then ask for what new rows show, before what has left says so.
void CGroupWatch::t_Found::Tell() const
{
    for (const auto& container : containers)
    {
        if (container)
        {
            Q_EMIT container->itemsChanged();
        }
    }
    for (const auto& [property, what] : properties)
    {
        if (property)
        {
            property->Tell(what);
        }
    }
    for (const auto& action : actions)
    {
        if (action)
        {
            action->Tell();
        }
    }
}

CGroupWatch::CGroupWatch(std::shared_ptr<IDbGroup> group)
    : m_group(std::move(group)), m_container(m_group->AsContainer()),
      m_itemsMove(m_container != nullptr &&
                  (m_container->IsDynamic() || m_group->GetKind() == eKW_NODE_MAP))
{
    m_group->HasChanged(m_counter);
    m_availability = m_group->GetAvailability();
    m_path = m_group->GetPath();
    m_isItem = m_path.endsWith(QLatin1Char(']'));
    if (m_container != nullptr)
    {
        UpdateItems();
    }
}

CGroupWatch& CGroupWatch::GetChild(const std::shared_ptr<IDbGroup>& group)
{
    const auto found =
        std::find_if(m_children.begin(), m_children.end(),
                     [&group](const auto& child) { return child->m_group == group; });
    if (found != m_children.end())
    {
        return **found;
    }
    m_hasNewChild = true; // its item may have come and gone between two polls
    return *m_children.emplace_back(std::make_unique<CGroupWatch>(group));
}

void CGroupWatch::Collect(t_Found& found, bool moved, bool attached)
{
    const bool counted = m_group->HasChanged(m_counter);
    if (!counted && !moved)
    {
        return;
    }
    const bool wasAttached = m_attached;
    m_attached = attached;
    const KW_AVAILABILITY availability = m_group->GetAvailability();
    moved = moved || availability != m_availability;
    m_availability = availability;

    if (m_container != nullptr)
    {
        const QString path = moved && attached ? m_group->GetPath() : m_path;
        const bool isElsewhere = path != m_path;
        m_path = path;
        const bool areOther = attached && (m_itemsMove || moved) && UpdateItems();
        if (areOther || m_hasNewChild)
        {
            UpdateMembers();
        }
        if (areOther || isElsewhere || attached != wasAttached)
        {
            found.containers.emplace_back(this);
            moved = true;
        }
    }
    for (CKWQtProperty* const property : m_properties)
    {
        if (const unsigned what = property->Look(moved, attached))
        {
            found.properties.emplace_back(property, what);
        }
    }
    for (CKWQtAction* const action : m_actions)
    {
        if (action->Look(moved, attached))
        {
            found.actions.emplace_back(action);
        }
    }
    for (const auto& child : m_children)
    {
        const bool stays = attached && child->m_isMember;
        child->Collect(found, moved || stays != child->m_attached, stays);
    }
}

void CGroupWatch::TakeDetached(std::vector<QObject*>& objects)
{
    for (const auto& child : m_children)
    {
        child->TakeDetached(objects);
    }
    if (!m_attached)
    {
        objects.insert(objects.end(), m_properties.begin(), m_properties.end());
        objects.insert(objects.end(), m_actions.begin(), m_actions.end());
        m_properties.clear();
        m_actions.clear();
    }
    std::erase_if(m_children, [](const auto& child) { return !child->m_attached; });
}

/** Whether items, names or the active one are others now. */
bool CGroupWatch::UpdateItems()
{
    std::vector<std::shared_ptr<IDbGroup>> items;
    QStringList names;
    const INT32 count = m_container->GetCount();
    items.reserve(static_cast<std::size_t>(count));
    for (INT32 i = 0; i < count; ++i)
    {
        if (auto item = m_container->GetItemByPosition(i)) // another thread may remove meanwhile
        {
            names.append(item->GetNodeName());
            items.push_back(std::move(item));
        }
    }
    QString active = m_container->GetActiveItem();
    const bool areOther = items != m_items || names != m_names || active != m_active;
    m_items = std::move(items);
    m_names = std::move(names);
    m_active = std::move(active);
    return areOther;
}

void CGroupWatch::UpdateMembers()
{
    const std::set<std::shared_ptr<IDbGroup>> items(m_items.begin(), m_items.end());
    for (const auto& child : m_children)
    {
        child->m_isMember = !child->m_isItem || items.count(child->m_group) != 0;
    }
    m_hasNewChild = false;
}
