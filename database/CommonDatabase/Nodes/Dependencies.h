// SPDX-License-Identifier: MIT
#pragma once

#include "CommonDatabase/Couplings/DbCouplings.h"
#include "CommonDatabase/Values/DbTypes.h"

#include <vector>

class CDbObject;
class CDbPropBase;
class CDbPropertyGroup;

/**
 * What couples groups: the rows of rules that follow settings of other groups, and those that wait
 * for the end of a write. A group's rows are registered when it enters the tree, in the order of
 * the tree, children first, and go with it.
 *
 * Rows that run at once (On, Delivered) follow the own rows of the written group. Of those that
 * wait (Changed) each runs once for a write, in the order of registration; a row whose sources
 * change again after it ran is a cycle, which is reported and not followed. Runs under the tree's
 * lock.
 */
class CDependencies
{
public:
    explicit CDependencies(CDbPropertyGroup& root) : m_root(root) {}

    /** The rows of a group that has become part of the tree. */
    void Enter(CDbPropertyGroup& group, const t_Couplings& rules);
    /** Items came into a container of the tree: rows that follow each item follow them, too. */
    void EnterItem(const CDbPropertyGroup& container);
    /** An item leaves its container, or a group its parent, with its rows and what follows it. */
    void LeaveItem(CDbPropertyGroup& item);

    /** Automatic updates after every write; off while the tree is being built. */
    void SetAutoUpdate(bool on) { m_autoUpdate = on; }
    void MarkChanged(const CDbPropBase& property);
    /** Runs what MarkChanged marked. */
    void RunMarked()
    {
        if (!m_running && !m_marked.empty())
        {
            RunAllMarked();
        }
    }
    /** Drops all marks: what they stood for was taken back. */
    void Forget();
    /** The rows of other groups that follow a node at once, and the greatest of their codes. */
    KW_ACCEPTANCE RunFollowers(eCAUSE cause, const CDbObject& source, const CDbPropBase* written);

    /** Every group's UpdateGroup, children first, in tree order, then every derivation that waits,
        in order of registration. A second run changes nothing. */
    void CalculateEverything();

private:
    void RunAllMarked();
    struct t_Dependant
    {
        CDbPropertyGroup* owner = nullptr; ///< null where the owner has left the tree
        const t_Row* row = nullptr;
        bool marked = false;
        bool done = false;
        bool Waits() const { return row->cause == eCAUSE::Changed; }
    };
    /** The rows that follow one node, by their places in m_dependants: what a write marks must not
        cost more the more is registered. */
    using t_Followers = std::vector<UINT16>;

    UINT16 PlaceFor(const t_Dependant& dependant);
    void FollowSources(UINT16 place);
    void FollowNode(CDbObject& source, UINT16 place, eCAUSE cause);
    void LeaveGroup(const CDbPropertyGroup& group);
    void LeavePlace(UINT16 place);
    void LeaveNode(CDbObject& source);
    static QString NameOf(const t_Dependant& dependant);

    CDbPropertyGroup& m_root;
    std::vector<t_Dependant> m_dependants;
    std::vector<UINT16> m_freePlaces;
    /** By the number that the source carries less one. */
    std::vector<t_Followers> m_followersOfSource;
    std::vector<UINT16> m_freeNumbers;
    /** Places of rows that follow each item of a container. */
    std::vector<UINT16> m_followingItems;
    /** Places of what is marked, as a heap with the earliest registered first. */
    std::vector<UINT16> m_marked;
    /** Places of what ran since the write. */
    std::vector<UINT16> m_ran;
    bool m_autoUpdate = false;
    bool m_running = false;
};
