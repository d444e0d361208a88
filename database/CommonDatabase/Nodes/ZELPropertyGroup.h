// SPDX-License-Identifier: MIT
#pragma once

#include "DbPropertyGroup.h"

/** Common base of all instrument groups. */
class CZELPropertyGroup : public CDbPropertyGroup
{
public:
    /** The root of the tree; null while the group is not part of a tree with a CDbPgRoot. */
    CDbPgRoot* GetPgRoot() const { return GetDbRoot(); }
};
