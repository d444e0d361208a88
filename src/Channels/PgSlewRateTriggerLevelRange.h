// SPDX-License-Identifier: MIT
#pragma once

#include "Channels/PgSlewRateTriggerLevelRangeBase.h"
#include "Rules/LevelRules.h"

/** Levels between which an edge is timed. */
class CPgSlewRateTriggerLevelRange : public NRules::COrderedLevels<CPgSlewRateTriggerLevelRangeBase>
{
public:
    using COrderedLevels::COrderedLevels;
};
