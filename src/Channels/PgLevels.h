// SPDX-License-Identifier: MIT
#pragma once

#include "Channels/PgLevelsBase.h"
#include "Rules/ChannelRules.h"

/** Levels of one channel: they have its unit, and stay on its screen unless they are fixed. */
class CPgLevels : public CPgLevelsBase
{
public:
    t_Couplings Rules() const override;

    /** Led by the channel, whenever its screen or unit moves; goes down to each kind of level. */
    void FollowScreen(const NRules::t_Screen& screen);
    /** Led by the channel when its probe makes another level of the same voltage at the input; the
        screen follows then. */
    void Rescale(double ratio);

private:
    void ResetLevels();
};
