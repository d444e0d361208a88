// SPDX-License-Identifier: MIT
#pragma once

#include "Channels/PgEdgeTriggerLevelBase.h"
#include "Rules/LevelRules.h"

/** Level of the triggers that look for a single crossing. A fixed level is written where it is
    selected, as near as the screen lets it; one that the user writes ends the selection. */
class CPgEdgeTriggerLevel : public NRules::CSelectedLevel<CPgEdgeTriggerLevelBase>
{
public:
    using CSelectedLevel::CSelectedLevel;

    void FollowScreen(const NRules::t_Screen& screen);
};
