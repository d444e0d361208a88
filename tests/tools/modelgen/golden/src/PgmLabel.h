// SPDX-License-Identifier: MIT
// Generated from Demo.toml: change the model, not this file.
#pragma once

#include "CommonDatabase/Containers/DbPgMap.h"
#include "PgLabel.h"

/** Map of groups: A named item. */
class CPgmLabel final : public CDbPgMap<CPgLabel>
{
public:
    using CDbPgMap::CDbPgMap;
};
