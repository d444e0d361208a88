// SPDX-License-Identifier: MIT
#include "RemoteTree.h"

#include "IKWFunctionBase.h"
#include "KWRemoteNames.h"

#include <algorithm>

namespace
{
constexpr char kItemWord[] = "ITEM";

t_RemoteError Undefined(const QByteArray& word)
{
    return {eREMOTE_UNDEFINED_HEADER, QString::fromLatin1(word)};
}

bool IsContainer(const IDbObject& node)
{
    return node.GetKind() == eKW_NODE_ARRAY || node.GetKind() == eKW_NODE_MAP;
}

/** The node as a group, null where it is none. A node's kind says what it can be asked: a cast that
    looks at its class costs more than all else of finding it. */
std::shared_ptr<IDbGroup> AsGroup(const std::shared_ptr<IDbObject>& node)
{
    const bool isGroup = node->GetKind() == eKW_NODE_GROUP || IsContainer(*node);
    return isGroup ? std::static_pointer_cast<IDbGroup>(node) : nullptr;
}

/** Digits at the end of a word: their place, the word's length where there are none. */
int BeginOfNumber(const QByteArray& word)
{
    int begin = static_cast<int>(word.size());
    while (begin > 0 && word[begin - 1] >= '0' && word[begin - 1] <= '9')
    {
        --begin;
    }
    return begin;
}
} // namespace

std::shared_ptr<IDbGroup> CRemoteTree::ItemAt(IDbGroup& container, INT64 number)
{
    if (number < 1 || number > INT64{2147483647})
    {
        return nullptr;
    }
    const auto index = static_cast<INT32>(number - 1);
    if (container.GetKind() == eKW_NODE_ARRAY)
    {
        return container.AsContainer()->GetItemByPosition(index);
    }
    const auto map = std::dynamic_pointer_cast<IKWMapBase>(container.GetHandle());
    const auto item = map ? map->GetMapItem(index) : nullptr;
    return item ? item->GetGroup()->GetDbObject() : nullptr;
}

CRemoteTree::t_Members CRemoteTree::Read(const IDbGroup& group)
{
    t_Members members;
    const auto add = [&members](const IDbObject& node, t_Member::eLIST list, INT32 index)
    {
        const KW_RemoteNames names = KW_GetRemoteNames(node);
        const t_Member member{list, index, node.GetNodeName()};
        members.insert(names.longForm.toLatin1(), member);
        members.insert(names.shortForm.toLatin1(), member);
    };
    for (INT32 i = 0; i < group.GetPropertyCount(); ++i)
    {
        add(*group.GetProperty(i), t_Member::eLIST::Properties, i);
    }
    for (INT32 i = 0; i < group.GetGroupCount(); ++i)
    {
        add(*group.GetGroup(i), t_Member::eLIST::Groups, i);
    }
    for (INT32 i = 0; i < group.GetActionCount(); ++i)
    {
        add(*group.GetAction(i), t_Member::eLIST::Actions, i);
    }
    return members;
}

const CRemoteTree::t_Members& CRemoteTree::MembersOf(const IDbGroup& group)
{
    const std::type_index type(typeid(group));
    const auto found = m_classes.find(type);
    return found != m_classes.end() ? found->second
                                    : m_classes.emplace(type, Read(group)).first->second;
}

std::shared_ptr<IDbObject> CRemoteTree::NodeOf(const IDbGroup& group, const t_Member& member)
{
    switch (member.list)
    {
    case t_Member::eLIST::Properties:
        return group.GetProperty(member.index);
    case t_Member::eLIST::Groups:
        return group.GetGroup(member.index);
    default:
        return group.GetAction(member.index);
    }
}

std::shared_ptr<IDbObject> CRemoteTree::MemberOf(const IDbGroup& group, const t_Members& members,
                                                 const QByteArray& word)
{
    const auto found = members.constFind(word);
    auto node = found != members.constEnd() ? NodeOf(group, *found) : nullptr;
    return node && node->GetNodeName() == found->name ? node : nullptr;
}

std::shared_ptr<IDbObject> CRemoteTree::MemberOf(const IDbGroup& group, const t_Members& members,
                                                 const QByteArray& word, INT64& number)
{
    number = 0;
    if (auto node = MemberOf(group, members, word))
    {
        return node;
    }
    const int suffix = BeginOfNumber(word);
    if (suffix == word.size())
    {
        return nullptr;
    }
    bool isNumber = false;
    number = word.mid(suffix).toLongLong(&isNumber);
    number = isNumber && number > 0 ? number : -1;
    return MemberOf(group, members, word.left(suffix));
}

std::shared_ptr<IDbObject> CRemoteTree::MemberOf(const IDbGroup& group, const QByteArray& word,
                                                 INT64& number)
{
    auto node = MemberOf(group, MembersOf(group), word, number);
    // A group of a class whose objects differ is looked at each time.
    return node ? node : MemberOf(group, Read(group), word, number);
}

t_RemoteError CRemoteTree::Find(const std::shared_ptr<IDbGroup>& root,
                                const std::vector<QByteArray>& words, t_RemoteTarget& target)
{
    std::shared_ptr<IDbGroup> group = root;
    for (std::size_t i = 0; i < words.size(); ++i)
    {
        INT64 number = 0;
        target.node = MemberOf(*group, words[i], number);
        if (!target.node)
        {
            return Undefined(words[i]);
        }
        const bool isLast = i + 1 == words.size();
        if (!IsContainer(*target.node) && number != 0)
        {
            return {eREMOTE_HEADER_SUFFIX, QString::fromLatin1(words[i])};
        }
        group = AsGroup(target.node);
        if (!group || isLast)
        {
            return group || !isLast ? Undefined(words[group ? i : i + 1]) : t_RemoteError{};
        }
        if (!IsContainer(*group))
        {
            continue;
        }
        if (number == 0 && words[i + 1] == kItemWord)
        {
            target.command = i + 3 == words.size() ? words[i + 2] : QByteArray();
            return target.command.isEmpty() ? Undefined(words[i + 1]) : t_RemoteError{};
        }
        const bool isArray = group->GetKind() == eKW_NODE_ARRAY;
        group = ItemAt(*group, number == 0 ? 1 : number);
        if (!group)
        {
            return {isArray ? eREMOTE_HEADER_SUFFIX : eREMOTE_ITEM_NOT_FOUND,
                    QString::fromLatin1(words[i])};
        }
    }
    return Undefined(QByteArray());
}
