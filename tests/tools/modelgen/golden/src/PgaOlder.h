// SPDX-License-Identifier: MIT
// Generated from Demo.toml: change the model, not this file.
#pragma once

#include "CommonDatabase/Containers/DbPgArray.h"
#include "PgOlder.h"

/** Array of groups: What only a removed array holds. */
class CPgaOlder final : public CDbPgArray<CPgOlder, CDbPgArrayBase>
{
public:
    using CDbPgArray::CDbPgArray;
};
