// SPDX-License-Identifier: MIT
#pragma once

#include "JsonNodes.h"
#include "PropertyMarks.h"

#include <functional>
#include <map>
#include <memory>
#include <vector>

/** A node that is not as it was: in JSON as NJson::WriteNode writes it without members. */
struct t_TreeChange
{
    QString path;
    QByteArray before; ///< empty where the node is new, and where nobody asked for it
    QByteArray now;    ///< empty where the node is gone, with all that was below it
};

/**
 * Finds what has changed in a tree since the last look. Change counters and marks tell where to
 * look, so that it costs what has changed. What belongs to one group is read together, in a
 * bracket.
 *
 * Items are known by their paths: where one is removed from the middle of an array, those behind it
 * change, and the last one is gone.
 */
class CTreeDiffer
{
public:
    explicit CTreeDiffer(std::shared_ptr<IKWFunctionRootBase> root, bool wantsBefore = false);
    ~CTreeDiffer();

    /** What differs from the last look, in the order of the tree. */
    std::vector<t_TreeChange> Look();

private:
    struct t_Property
    {
        std::shared_ptr<IDbProperty> node;
        std::function<t_PropertyMarks()> read; ///< empty where only texts tell
        t_PropertyMarks marks{};
        t_JsonState state;
    };
    struct t_Group
    {
        std::shared_ptr<IDbGroup> node;
        long long counter = 0;
        KW_AVAILABILITY availability = eAVAILABILITY_AVAILABLE;
        QString path;
        QByteArray head; ///< in JSON, without members
        std::vector<t_Property> properties;
        std::vector<std::unique_ptr<t_Group>> children; ///< groups, and behind them items
    };
    using t_Found = std::vector<t_TreeChange>;
    /** Every node of a part of the tree by its path, in JSON. */
    using t_Picture = std::map<QString, QByteArray>;

    std::unique_ptr<t_Group> Take(const std::shared_ptr<IDbGroup>& node) const;
    static t_Property TakeProperty(const std::shared_ptr<IDbProperty>& node);
    void Look(std::unique_ptr<t_Group>& group, bool isMoved, t_Found& found) const;
    void LookAtOwn(t_Group& group, bool isMoved, t_Found& found) const;
    void LookAtItems(std::unique_ptr<t_Group>& group, t_Found& found) const;
    static bool HasOtherItems(const t_Group& group);
    static void Picture(const t_Group& group, t_Picture& picture);
    QByteArray HeadOf(IDbGroup& node) const;

    const std::shared_ptr<IKWFunctionRootBase> m_root;
    const bool m_wantsBefore;
    std::unique_ptr<t_Group> m_top;
};
