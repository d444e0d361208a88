// SPDX-License-Identifier: MIT
#pragma once

#include "PgWindowTriggerLevelRangeBase.h"
#include "RuleHelpers.h"

/** Edges of the window. */
class CPgWindowTriggerLevelRange : public NRules::COrderedLevels<CPgWindowTriggerLevelRangeBase>
{
public:
    using COrderedLevels::COrderedLevels;
};
