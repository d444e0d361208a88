// SPDX-License-Identifier: MIT
// Generated from Demo.toml: change the model, not this file.
#pragma once

#include "CommonDatabase/Containers/DbPgArray.h"
#include "PgChannel.h"

/** Array of groups: One input. */
class CPgaChannel final : public CDbPgArray<CPgChannel, CDbPgArrayBase>
{
public:
    using CDbPgArray::CDbPgArray;
};
