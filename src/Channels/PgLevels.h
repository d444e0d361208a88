// SPDX-License-Identifier: MIT
#pragma once

#include "Channels/PgLevelsBase.h"
#include "Rules/ChannelRules.h"

/** Levels of one channel: they stay on its screen and have its unit. */
class CPgLevels : public CPgLevelsBase
{
public:
    t_Couplings Rules() const override;

    /** Led by the channel, whenever its screen or unit moves; goes down to each kind of level. */
    void FollowScreen(const NRules::t_Screen& screen);

private:
    void ResetLevels();
};
