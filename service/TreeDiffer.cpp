// SPDX-License-Identifier: MIT
#include "TreeDiffer.h"

#include "KWBrackets.h"

namespace
{
QByteArray JsonOf(const t_JsonState& state)
{
    CJsonWriter json;
    NJson::WriteState(json, state);
    return json.GetText();
}

/** Whether a path is another one's, or of something below it. */
bool IsWithin(const QString& path, const QString& top)
{
    return path.startsWith(top) &&
           (path.size() == top.size() || path[top.size()] == QLatin1Char('/') ||
            path[top.size()] == QLatin1Char('['));
}
} // namespace

CTreeDiffer::CTreeDiffer(std::shared_ptr<IKWFunctionRootBase> root, bool wantsBefore)
    : m_root(std::move(root)), m_wantsBefore(wantsBefore), m_top(Take(m_root->GetDbObject()))
{
}

CTreeDiffer::~CTreeDiffer() = default;

QByteArray CTreeDiffer::HeadOf(IDbGroup& node) const
{
    CJsonWriter json;
    NJson::WriteNode(json, m_root, node, {false, 0});
    return json.GetText();
}

CTreeDiffer::t_Property CTreeDiffer::TakeProperty(const std::shared_ptr<IDbProperty>& node)
{
    t_Property property{node, GetMarksReader(node), {}, NJson::StateOf(*node)};
    if (property.read)
    {
        property.marks = property.read();
    }
    return property;
}

std::unique_ptr<CTreeDiffer::t_Group> CTreeDiffer::Take(const std::shared_ptr<IDbGroup>& node) const
{
    auto group = std::make_unique<t_Group>();
    group->node = node;
    node->HasChanged(group->counter);
    {
        const CKWReadBracket together(m_root);
        group->path = node->GetPath();
        group->availability = node->GetAvailability();
        group->head = HeadOf(*node);
        for (INT32 i = 0; i < node->GetPropertyCount(); ++i)
        {
            group->properties.push_back(TakeProperty(node->GetProperty(i)));
        }
    }
    for (INT32 i = 0; i < node->GetGroupCount(); ++i)
    {
        group->children.push_back(Take(node->GetGroup(i)));
    }
    if (const IDbContainer* const container = node->AsContainer())
    {
        for (INT32 i = 0; const auto item = container->GetItemByPosition(i); ++i)
        {
            group->children.push_back(Take(item));
        }
    }
    return group;
}

std::vector<t_TreeChange> CTreeDiffer::Look()
{
    t_Found found;
    Look(m_top, false, found);
    return found;
}

bool CTreeDiffer::HasOtherItems(const t_Group& group)
{
    const IDbContainer* const container = group.node->AsContainer();
    if (container == nullptr)
    {
        return false;
    }
    const auto first = static_cast<std::size_t>(group.node->GetGroupCount());
    for (std::size_t i = first; i < group.children.size(); ++i)
    {
        const auto item = container->GetItemByPosition(static_cast<INT32>(i - first));
        if (item != group.children[i]->node || item->GetPath() != group.children[i]->path)
        {
            return true;
        }
    }
    return container->GetItemByPosition(static_cast<INT32>(group.children.size() - first)) !=
           nullptr;
}

void CTreeDiffer::LookAtOwn(t_Group& group, bool isMoved, t_Found& found) const
{
    const CKWReadBracket together(m_root);
    const QByteArray before = std::exchange(group.head, HeadOf(*group.node));
    if (group.head != before)
    {
        found.push_back({group.path, m_wantsBefore ? before : QByteArray(), group.head});
    }
    for (t_Property& property : group.properties)
    {
        const t_PropertyMarks marks = property.read ? property.read() : t_PropertyMarks{};
        if (property.read && marks == property.marks && !isMoved)
        {
            continue;
        }
        property.marks = marks;
        t_JsonState now = NJson::StateOf(*property.node);
        if (now != property.state)
        {
            found.push_back(
                {now.path, m_wantsBefore ? JsonOf(property.state) : QByteArray(), JsonOf(now)});
            property.state = std::move(now);
        }
    }
}

void CTreeDiffer::Look(std::unique_ptr<t_Group>& group, bool isMoved, t_Found& found) const
{
    if (!group->node->HasChanged(group->counter) && !isMoved)
    {
        return;
    }
    if (HasOtherItems(*group))
    {
        LookAtItems(group, found);
        return;
    }
    const KW_AVAILABILITY before =
        std::exchange(group->availability, group->node->GetAvailability());
    const bool moves = isMoved || before != group->availability;
    LookAtOwn(*group, moves, found);
    for (auto& child : group->children)
    {
        Look(child, moves, found);
    }
}

void CTreeDiffer::Picture(const t_Group& group, t_Picture& picture)
{
    picture[group.path] = group.head;
    for (const t_Property& property : group.properties)
    {
        picture[property.state.path] = JsonOf(property.state);
    }
    for (const auto& child : group.children)
    {
        Picture(*child, picture);
    }
}

void CTreeDiffer::LookAtItems(std::unique_ptr<t_Group>& group, t_Found& found) const
{
    t_Picture before;
    t_Picture now;
    Picture(*group, before);
    group = Take(group->node);
    Picture(*group, now);
    QString gone;
    for (const auto& [path, json] : before)
    {
        if (now.count(path) == 0 && (gone.isEmpty() || !IsWithin(path, gone)))
        {
            gone = path;
            found.push_back({path, m_wantsBefore ? json : QByteArray(), QByteArray()});
        }
    }
    for (const auto& [path, json] : now)
    {
        const auto then = before.find(path);
        if (then == before.end() || then->second != json)
        {
            const bool isKnown = then != before.end() && m_wantsBefore;
            found.push_back({path, isKnown ? then->second : QByteArray(), json});
        }
    }
}
