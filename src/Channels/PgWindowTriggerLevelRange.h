// SPDX-License-Identifier: MIT
#pragma once

#include "Channels/PgWindowTriggerLevelRangeBase.h"
#include "Rules/LevelRules.h"

/** Edges of the window. */
class CPgWindowTriggerLevelRange : public NRules::COrderedLevels<CPgWindowTriggerLevelRangeBase>
{
public:
    using COrderedLevels::COrderedLevels;
};
