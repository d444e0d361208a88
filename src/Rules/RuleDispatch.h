// SPDX-License-Identifier: MIT
#pragma once

#include "CommonDatabase/Nodes/DbPropBase.h"

#include <algorithm>
#include <initializer_list>

namespace NRules
{
/** A row of a group's dispatch: the steps that run when one of these properties was set. */
template <typename TGroup>
struct t_DispatchRow
{
    std::initializer_list<const CDbPropBase*> properties;
    std::initializer_list<void (TGroup::*)()> steps;
};

/** Runs the steps of every row that names the property, in their order. */
template <typename TGroup, std::size_t N>
void Dispatch(TGroup& group, const t_DispatchRow<TGroup> (&rows)[N], const CDbPropBase* property)
{
    for (const t_DispatchRow<TGroup>& row : rows)
    {
        if (std::find(row.properties.begin(), row.properties.end(), property) ==
            row.properties.end())
        {
            continue;
        }
        for (const auto step : row.steps)
        {
            (group.*step)();
        }
    }
}
} // namespace NRules
