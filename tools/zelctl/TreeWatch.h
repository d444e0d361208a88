// SPDX-License-Identifier: MIT
#pragma once

#include "PropertyMarks.h"
#include "Snapshot.h"

#include <vector>

/** A known state of everything below a group. Change counters and marks tell where to look again,
    so that asking what changed costs what has changed. */
class CTreeWatch
{
public:
    explicit CTreeWatch(std::shared_ptr<IDbGroup> group);

    /** What differs from the known state, which stays; in the order of the tree. */
    std::vector<t_Change> GetChanges();
    /** The same; what is found becomes the known state. */
    std::vector<t_Change> Update();

private:
    struct t_Property
    {
        explicit t_Property(const std::shared_ptr<IDbProperty>& property);
        bool MayDiffer() const;

        std::shared_ptr<IDbProperty> node;
        std::function<t_PropertyMarks()> read;
        t_PropertyMarks marks{};
        t_NodeState state;
    };
    struct t_Collecting
    {
        bool follows; ///< whether what is found becomes the known state
        std::vector<t_Change> changes;
    };

    void Take();
    void Collect(t_Collecting& collecting, bool parentMoved);
    void CollectItems(t_Collecting& collecting);
    void CollectProperty(t_Collecting& collecting, t_Property& property, bool groupMoved);
    bool HasOtherItems() const;
    void AddStates(CSnapshot& snapshot) const;

    std::shared_ptr<IDbGroup> m_group;
    long long m_counter = 0;
    t_NodeState m_state;
    std::vector<t_Property> m_properties;
    std::vector<CTreeWatch> m_children;
};
