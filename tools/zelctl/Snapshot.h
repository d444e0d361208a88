// SPDX-License-Identifier: MIT
#pragma once

#include "NodeText.h"

#include <QHash>
#include <QJsonObject>
#include <QStringList>
#include <vector>

/** What one moment knows of a group or property. Limits and the rest are of properties only. */
struct t_NodeState
{
    QString path;
    bool isProperty = false;
    bool isSaved = false; ///< part of the user's settings, hence of settings files
    KW_AVAILABILITY availability = eAVAILABILITY_AVAILABLE;
    t_ShownValue value;
    QString minimum;
    QString maximum;
    QStringList selectable;
    bool isValid = true;
};

t_NodeState TakeState(const IDbObject& node);

/** Everything that clients can see of a tree at one moment. */
class CSnapshot
{
public:
    CSnapshot() = default;
    explicit CSnapshot(IDbGroup& root);
    /** Everything below a group, in the order of the tree. */
    void AddAllBelow(IDbGroup& group);
    /** Members follow their group. */
    void Add(t_NodeState state);

    const std::vector<t_NodeState>& GetNodes() const { return m_nodes; }
    /** Null for a path that did not exist. */
    const t_NodeState* Find(const QString& path) const;

private:
    std::vector<t_NodeState> m_nodes;
    QHash<QString, std::size_t> m_byPath;
};

enum class eCHANGE
{
    Value,
    Minimum,
    Maximum,
    Selectable,
    Unit,
    Validity,
    Availability,
    Added,
    Removed
};

/** One difference of two snapshots. Of what was added or removed only the topmost group counts. */
struct t_Change
{
    eCHANGE kind;
    t_NodeState before; ///< empty when added
    t_NodeState after;  ///< empty when removed
    int properties = 0; ///< number of properties added or removed with the group
};

/** "value", "maximum" and so on. */
QString GetKindName(eCHANGE kind);

/** Appends what differs between two states of one node, but for its availability, which may be
    its group's. */
void AddDifferences(std::vector<t_Change>& changes, const t_NodeState& before,
                    const t_NodeState& after);

/** Differences in the order of the tree. */
std::vector<t_Change> Compare(const CSnapshot& before, const CSnapshot& after);

/** "Spectrum/Center maximum: 1 MHz → 2 MHz". */
QString ShowChange(const t_Change& change, bool exact);
QJsonObject ToJson(const t_Change& change);
