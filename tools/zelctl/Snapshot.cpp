// SPDX-License-Identifier: MIT
#include "Snapshot.h"

#include "KWEnumerationsUnits.h"
#include "TreeWalk.h"
#include "ValueText.h"

#include <QJsonArray>
#include <algorithm>

t_NodeState TakeState(const IDbObject& node)
{
    t_NodeState state;
    state.path = node.GetPath();
    state.availability = node.GetAvailability();
    state.value.unit = eKW_UNIT_NOT_DEFINED;
    if (const auto* const property = dynamic_cast<const IDbProperty*>(&node))
    {
        state.isProperty = true;
        state.isSaved = (node.GetSaveRecallType() & eSAVERECALL_SETTINGS) != 0;
        state.value = GetShownValue(*property);
        state.minimum = property->GetMinText();
        state.maximum = property->GetMaxText();
        state.selectable = property->GetValueTexts();
        state.isValid = property->GetValidity() == eKW_VALIDITY_VALID;
    }
    return state;
}

QString GetKindName(eCHANGE kind)
{
    switch (kind)
    {
    case eCHANGE::Value:
        return QStringLiteral("value");
    case eCHANGE::Minimum:
        return QStringLiteral("minimum");
    case eCHANGE::Maximum:
        return QStringLiteral("maximum");
    case eCHANGE::Selectable:
        return QStringLiteral("selectable");
    case eCHANGE::Unit:
        return QStringLiteral("unit");
    case eCHANGE::Validity:
        return QStringLiteral("valid");
    case eCHANGE::Availability:
        return QStringLiteral("availability");
    case eCHANGE::Added:
        return QStringLiteral("added");
    case eCHANGE::Removed:
        return QStringLiteral("removed");
    }
    return {};
}

void AddDifferences(std::vector<t_Change>& changes, const t_NodeState& before,
                    const t_NodeState& after)
{
    const auto add = [&](bool differs, eCHANGE kind)
    {
        if (differs)
        {
            changes.push_back({kind, before, after});
        }
    };
    add(before.value.text != after.value.text, eCHANGE::Value);
    add(before.value.unit != after.value.unit, eCHANGE::Unit);
    add(before.isValid != after.isValid, eCHANGE::Validity);
    add(before.minimum != after.minimum, eCHANGE::Minimum);
    add(before.maximum != after.maximum, eCHANGE::Maximum);
    add(before.selectable != after.selectable, eCHANGE::Selectable);
}

namespace
{
/** Nodes of one snapshot that the other lacks, each with the properties below it. */
std::vector<t_Change> GetMissing(const CSnapshot& in, const CSnapshot& other, eCHANGE kind)
{
    std::vector<t_Change> missing;
    for (const t_NodeState& node : in.GetNodes())
    {
        if (other.Find(node.path) != nullptr)
        {
            continue;
        }
        const QString parent = GetParentPath(node.path);
        // A snapshot may begin in the middle of the tree.
        if (in.Find(parent) == nullptr || other.Find(parent) != nullptr)
        {
            missing.push_back(kind == eCHANGE::Added ? t_Change{kind, {}, node}
                                                     : t_Change{kind, node, {}});
        }
        // Members follow their group: this one belongs to the last group that is missing.
        missing.back().properties += node.isProperty ? 1 : 0;
    }
    return missing;
}

/** A group that becomes unavailable takes all below it along: the group alone tells that. */
bool FollowsParent(const t_NodeState& before, const t_NodeState& after, const CSnapshot& first,
                   const CSnapshot& second)
{
    const QString parent = GetParentPath(after.path);
    const t_NodeState* const parentBefore = first.Find(parent);
    const t_NodeState* const parentAfter = second.Find(parent);
    return parentBefore != nullptr && parentAfter != nullptr &&
           parentBefore->availability != parentAfter->availability &&
           (parentAfter->availability == after.availability ||
            parentBefore->availability == before.availability);
}

QString DescribeSelection(const t_Change& change, bool exact)
{
    QStringList added;
    QStringList removed;
    const auto collect = [exact](const t_NodeState& in, const t_NodeState& other, QStringList& list)
    {
        for (const QString& text : in.selectable)
        {
            if (!other.selectable.contains(text))
            {
                list.append(ShowValue({text, in.value.type, in.value.unit}, exact));
            }
        }
    };
    collect(change.after, change.before, added);
    collect(change.before, change.after, removed);
    QStringList parts;
    const QString comma = QStringLiteral(", ");
    parts += added.isEmpty() ? QStringList()
                             : QStringList(QStringLiteral("now also ") + added.join(comma));
    parts += removed.isEmpty() ? QStringList()
                               : QStringList(QStringLiteral("no longer ") + removed.join(comma));
    return parts.isEmpty() ? QStringLiteral("in another order") : parts.join(QLatin1String("; "));
}

/** The text of the state that a limit or value change is about. */
t_ShownValue GetChanged(const t_NodeState& state, eCHANGE kind)
{
    t_ShownValue value = state.value;
    if (kind == eCHANGE::Minimum || kind == eCHANGE::Maximum)
    {
        value.text = kind == eCHANGE::Minimum ? state.minimum : state.maximum;
    }
    return value;
}

QString ShowTransition(const t_Change& change, bool exact)
{
    const auto show = [kind = change.kind](const t_NodeState& state, bool full)
    {
        const t_ShownValue value = GetChanged(state, kind);
        return kind != eCHANGE::Value && value.text.isEmpty() ? QStringLiteral("none")
                                                              : ShowValue(value, full);
    };
    // Two values that look the same when rounded are shown in full.
    const bool full = exact || show(change.before, false) == show(change.after, false);
    return show(change.before, full) + QStringLiteral(" → ") + show(change.after, full);
}

QString DescribeCount(int properties)
{
    return properties == 0 ? QString()
                           : QStringLiteral(" with %1 %2")
                                 .arg(properties)
                                 .arg(properties == 1 ? QLatin1String("property")
                                                      : QLatin1String("properties"));
}

QJsonValue GetJsonSide(const t_NodeState& state, eCHANGE kind)
{
    switch (kind)
    {
    case eCHANGE::Value:
    case eCHANGE::Minimum:
    case eCHANGE::Maximum:
        return ToJsonValue(GetChanged(state, kind));
    case eCHANGE::Selectable:
        return ToJsonValues(state.selectable, state.value);
    case eCHANGE::Unit:
        return KW_GetUnitText(state.value.unit);
    case eCHANGE::Validity:
        return state.isValid;
    case eCHANGE::Availability:
        return GetAvailabilityText(state.availability);
    default:
        return {};
    }
}

} // namespace

CSnapshot::CSnapshot(IDbGroup& root)
{
    AddAllBelow(root);
}

void CSnapshot::AddAllBelow(IDbGroup& group)
{
    WalkTree(group, 0,
             [this](const std::shared_ptr<IDbObject>& node, int)
             {
                 if (dynamic_cast<const IDbAction*>(node.get()) == nullptr)
                 {
                     Add(TakeState(*node));
                 }
             });
}

void CSnapshot::Add(t_NodeState state)
{
    m_byPath.insert(state.path, m_nodes.size());
    m_nodes.push_back(std::move(state));
}

const t_NodeState* CSnapshot::Find(const QString& path) const
{
    const auto found = m_byPath.constFind(path);
    return found == m_byPath.constEnd() ? nullptr : &m_nodes[*found];
}

std::vector<t_Change> Compare(const CSnapshot& before, const CSnapshot& after)
{
    std::vector<t_Change> changes = GetMissing(before, after, eCHANGE::Removed);
    const std::vector<t_Change> added = GetMissing(after, before, eCHANGE::Added);
    changes.insert(changes.end(), added.begin(), added.end());
    for (const t_NodeState& now : after.GetNodes())
    {
        const t_NodeState* const then = before.Find(now.path);
        if (then == nullptr)
        {
            continue;
        }
        AddDifferences(changes, *then, now);
        if (then->availability != now.availability && !FollowsParent(*then, now, before, after))
        {
            changes.push_back({eCHANGE::Availability, *then, now});
        }
    }
    return changes;
}

QString ShowChange(const t_Change& change, bool exact)
{
    const QString path = change.kind == eCHANGE::Removed ? change.before.path : change.after.path;
    switch (change.kind)
    {
    case eCHANGE::Value:
        return path + QStringLiteral(": ") + ShowTransition(change, exact);
    case eCHANGE::Selectable:
        return path + QStringLiteral(" selectable: ") + DescribeSelection(change, exact);
    case eCHANGE::Unit:
        return QStringLiteral("%1 unit: %2 → %3")
            .arg(path, KW_GetUnitText(change.before.value.unit),
                 KW_GetUnitText(change.after.value.unit));
    case eCHANGE::Validity:
        return path + (change.after.isValid ? QStringLiteral(": now valid")
                                            : QStringLiteral(": now invalid"));
    case eCHANGE::Availability:
        return path + QStringLiteral(": now ") + GetAvailabilityText(change.after.availability);
    case eCHANGE::Added:
    case eCHANGE::Removed:
        return path + QStringLiteral(": ") + GetKindName(change.kind) +
               (change.after.isProperty || change.before.isProperty
                    ? QString()
                    : DescribeCount(change.properties));
    default:
        return QStringLiteral("%1 %2: %3")
            .arg(path, GetKindName(change.kind), ShowTransition(change, exact));
    }
}

QJsonObject ToJson(const t_Change& change)
{
    const bool removed = change.kind == eCHANGE::Removed;
    QJsonObject json{{QStringLiteral("path"), removed ? change.before.path : change.after.path},
                     {QStringLiteral("what"), GetKindName(change.kind)}};
    if (!removed && change.kind != eCHANGE::Added)
    {
        json[QStringLiteral("old")] = GetJsonSide(change.before, change.kind);
        json[QStringLiteral("new")] = GetJsonSide(change.after, change.kind);
        json[QStringLiteral("unit")] = KW_GetUnitText(change.after.value.unit);
    }
    return json;
}
