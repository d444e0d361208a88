// SPDX-License-Identifier: MIT
#pragma once

#include "Channels/PgRuntTriggerLevelRangeBase.h"
#include "Rules/LevelRules.h"

/** Levels of the runt trigger. */
class CPgRuntTriggerLevelRange : public NRules::COrderedLevels<CPgRuntTriggerLevelRangeBase>
{
public:
    using COrderedLevels::COrderedLevels;
};
