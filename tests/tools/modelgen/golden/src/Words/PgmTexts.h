// SPDX-License-Identifier: MIT
// Generated from Texts.toml: change the model, not this file.
#pragma once

#include "CommonDatabase/Containers/DbPgMap.h"
#include "Words/PgTexts.h"

/** Map of groups: All kinds of texts; the name | pipe is part of this. */
class CPgmTexts final : public CDbPgMap<CPgTexts>
{
public:
    using CDbPgMap::CDbPgMap;
};
