// SPDX-License-Identifier: MIT
#pragma once

#include "IDbObject.h"

#include <QStringList>
#include <functional>
#include <memory>

/** Calls `visit` for everything below a group down to `depth` levels (0: without end), in the
    order properties, child groups, items, actions; members follow their group. The second argument
    is the level, 1 for members of the group itself. */
void WalkTree(IDbGroup& group, int depth,
              const std::function<void(const std::shared_ptr<IDbObject>&, int)>& visit);

/** Paths of everything below a group. */
QStringList GetAllPaths(IDbGroup& group);

/** "Name", or "[key]" for an item. */
QString GetStep(const IDbObject& node);

/** Path of the group that a node belongs to, empty for the root. Taken from the text of the path:
    keys of items hold neither slash nor brackets. */
QString GetParentPath(const QString& path);

/** "array", "map", "group", "function", "operation" or "property". */
QString GetKindText(KW_NODE_KIND kind);
