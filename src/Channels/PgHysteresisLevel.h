// SPDX-License-Identifier: MIT
#pragma once

#include "Channels/PgHysteresisLevelBase.h"
#include "Rules/ChannelRules.h"

/** Hysteresis of a channel's trigger comparators: divisions by the size that is selected. */
class CPgHysteresisLevel : public CPgHysteresisLevelBase
{
public:
    void FollowScreen(const NRules::t_Screen& screen);
};
