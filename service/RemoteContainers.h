// SPDX-License-Identifier: MIT
#pragma once

#include "IDbObject.h"
#include "RemoteMessage.h"

namespace NRemote
{
/**
 * A command of an array or map itself, which stands below its word ITEM:
 *
 *     COUNt?                number of items
 *     CATalog?              numbers of an array's items; of a map's each with its name behind it
 *     INSert [item]         before a place of an array, or at its end; under a name in a map, or
 *                           under one made from the pattern
 *     REMove item           by number, in maps also by name
 *     REName item,"name"    in maps
 *     COPY item,new         to a place, or under a name
 *     ACTive item           the active item; query: its number, or name in quotes; 0 or "" for none
 */
t_RemoteError ExecuteContainer(IDbGroup& group, const QByteArray& command, const t_RemoteUnit& unit,
                               QByteArray& answer);
} // namespace NRemote
