// SPDX-License-Identifier: MIT
#pragma once

#include "PgRuntTriggerLevelRangeBase.h"
#include "RuleHelpers.h"

/** Levels of the runt trigger. */
class CPgRuntTriggerLevelRange : public NRules::COrderedLevels<CPgRuntTriggerLevelRangeBase>
{
public:
    using COrderedLevels::COrderedLevels;
};
