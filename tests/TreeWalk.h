// SPDX-License-Identifier: MIT
#pragma once

#include "IDbObject.h"

#include <functional>
#include <memory>

/** Visits a group and every node below it, items of containers included, parents first. */
inline void WalkNodes(const std::shared_ptr<IDbGroup>& group,
                      const std::function<void(const std::shared_ptr<IDbObject>&)>& visit)
{
    visit(group);
    for (INT32 i = 0; i < group->GetPropertyCount(); ++i)
    {
        visit(group->GetProperty(i));
    }
    for (INT32 i = 0; i < group->GetActionCount(); ++i)
    {
        visit(group->GetAction(i));
    }
    for (INT32 i = 0; i < group->GetGroupCount(); ++i)
    {
        WalkNodes(group->GetGroup(i), visit);
    }
    const IDbContainer* const container = group->AsContainer();
    for (INT32 i = 0; container != nullptr && i < container->GetCount(); ++i)
    {
        // It may have gone since it was counted.
        if (const auto item = container->GetItemByPosition(i))
        {
            WalkNodes(item, visit);
        }
    }
}

/** The same for nodes of one kind. */
template <typename TNode, typename TVisit>
void Walk(const std::shared_ptr<IDbGroup>& group, const TVisit& visit)
{
    WalkNodes(group,
              [&visit](const std::shared_ptr<IDbObject>& node)
              {
                  if (const auto wanted = std::dynamic_pointer_cast<TNode>(node))
                  {
                      visit(wanted);
                  }
              });
}

/** Whether a value lies within its limits, and has a name where values have names. Reading a
   decimal text keeps the order of numbers, so no kind needs a way of its own; NaN is not within. */
inline bool IsWithinLimits(const IDbProperty& property)
{
    const QString minimum = property.GetMinText();
    const QString maximum = property.GetMaxText();
    const QString text = property.GetText();
    const double value = text.toDouble();
    return (minimum.isEmpty() || minimum.toDouble() <= value) &&
           (maximum.isEmpty() || value <= maximum.toDouble()) &&
           (property.GetEnumNameInfo() == nullptr || !text.isEmpty());
}
