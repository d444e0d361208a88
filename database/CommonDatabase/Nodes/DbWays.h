// SPDX-License-Identifier: MIT
#pragma once

#include "CommonDatabase/Couplings/DbNames.h"

#include <functional>

class CDbPropertyGroup;

/** Where the paths of names (DbNames.h) lead in a tree. Under the tree's lock. */
namespace NWays
{
/** The node that a path without "each" leads to; null where a step leads nowhere. */
CDbObject* Resolve(const CDbPropertyGroup& from, const NNames::t_Path& path);

/** Calls `visit` for every node that a path leads to, and `visitContainer`, before its items, for
    every container of which it takes each item. */
void Visit(CDbPropertyGroup& from, const NNames::t_Path& path,
           const std::function<void(CDbObject&)>& visit,
           const std::function<void(CDbPropertyGroup&)>& visitContainer);

/** The path of what a path of names leads to, "[each]" for every item. All its names exist, but for
    that of an item. */
QString TextOf(const CDbPropertyGroup& from, const NNames::t_Path& path);
} // namespace NWays
