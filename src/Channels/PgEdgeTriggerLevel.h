// SPDX-License-Identifier: MIT
#pragma once

#include "Channels/PgEdgeTriggerLevelBase.h"
#include "Rules/LevelRules.h"

/** Level of the triggers that look for a single crossing. A fixed level is written where it is
    selected, and stands also off the screen; one that the user writes ends the selection, and stays
    on the screen. */
class CPgEdgeTriggerLevel : public NRules::CSelectedLevel<CPgEdgeTriggerLevelBase>
{
public:
    using CSelectedLevel::CSelectedLevel;

    void FollowScreen(const NRules::t_Screen& screen);
    /** Led by the channel, before the screen follows: a fixed level stays. */
    void Rescale(double ratio);
};
