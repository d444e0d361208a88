// SPDX-License-Identifier: MIT
#pragma once

#include "DbTypes.h"

#include <functional>
#include <vector>

class CDbPropBase;
class CDbPropertyGroup;

/**
 * What couples groups: updates of one group that depend on properties of another, registered once
 * when the tree is created. After a write each update whose sources changed runs once, in the
 * order of registration; an update whose source changes again after it ran is a cycle, which is
 * reported and not followed. Runs under the tree's lock.
 */
class CDependencies
{
public:
    explicit CDependencies(CDbPropertyGroup& root) : m_root(root) {}

    /** `update` belongs to `owner` and depends on `sources`; `name` is for reports. */
    void Add(CDbPropertyGroup& owner, const std::vector<CDbPropBase*>& sources,
             std::function<void()> update, const QString& name);
    /** Drops the updates of an owner that leaves the tree. */
    void Remove(const CDbPropertyGroup& owner);

    /** Automatic updates after every write; off while the tree is being built. */
    void SetAutoUpdate(bool on) { m_autoUpdate = on; }
    void MarkChanged(const CDbPropBase& property);
    /** Runs what MarkChanged marked. */
    void RunMarked();
    /** Drops all marks: what they stood for was taken back. */
    void Forget();

    /** Every group's UpdateGroup, children first, in tree order, then every dependent update in
        order of registration. A second run changes nothing. */
    void CalculateEverything();

private:
    struct t_Dependant
    {
        CDbPropertyGroup* owner; ///< null once the owner has left the tree
        std::function<void()> update;
        QString name;
        bool marked;
        bool done;
    };

    CDbPropertyGroup& m_root;
    std::vector<t_Dependant> m_dependants;
    /** Places in m_dependants for each source, by the number that the source carries less one: what
        a write marks must not cost more the more is registered. */
    std::vector<std::vector<UINT16>> m_dependantsOfSource;
    /** Places of what is marked, as a heap with the earliest registered first. */
    std::vector<UINT16> m_marked;
    /** Places of what ran since the write. */
    std::vector<UINT16> m_ran;
    bool m_autoUpdate = false;
    bool m_running = false;
};
