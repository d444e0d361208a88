// SPDX-License-Identifier: MIT
#pragma once

#include "IDbObject.h"
#include "RemoteErrors.h"

#include <QHash>
#include <memory>
#include <typeindex>
#include <unordered_map>
#include <vector>

/** What a header leads to. */
struct t_RemoteTarget
{
    std::shared_ptr<IDbObject> node; ///< a property or an action, or a container with a command
    QByteArray command;              ///< of the container, in capitals; empty for a node
};

/**
 * Finds nodes by the words of headers. A class of groups is looked at once: its members and their
 * names are the model's, so that a word costs one search in a table.
 */
class CRemoteTree
{
public:
    /** Finds what `words` (in capitals) lead to from the root. An item's number stands behind its
        word, 1 where none does: the place in an array, the key in a map, both counted from 1. */
    t_RemoteError Find(const std::shared_ptr<IDbGroup>& root, const std::vector<QByteArray>& words,
                       t_RemoteTarget& target);

    /** Item of a container by its number. */
    static std::shared_ptr<IDbGroup> ItemAt(IDbGroup& container, INT64 number);

private:
    /** Where a member stands in its group. */
    struct t_Member
    {
        enum class eLIST
        {
            Properties,
            Groups,
            Actions
        };
        eLIST list;
        INT32 index;
        QString name; ///< of the node, to notice a group that is not as others of its class
    };
    using t_Members = QHash<QByteArray, t_Member>;

    const t_Members& MembersOf(const IDbGroup& group);
    static t_Members Read(const IDbGroup& group);
    static std::shared_ptr<IDbObject> NodeOf(const IDbGroup& group, const t_Member& member);
    static std::shared_ptr<IDbObject> MemberOf(const IDbGroup& group, const t_Members& members,
                                               const QByteArray& word);
    /** A member, or a container with the number behind its word, 0 where there is none. */
    ///@{
    static std::shared_ptr<IDbObject> MemberOf(const IDbGroup& group, const t_Members& members,
                                               const QByteArray& word, INT64& number);
    std::shared_ptr<IDbObject> MemberOf(const IDbGroup& group, const QByteArray& word,
                                        INT64& number);
    ///@}

    std::unordered_map<std::type_index, t_Members> m_classes;
};
