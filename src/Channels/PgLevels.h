// SPDX-License-Identifier: MIT
#pragma once

#include "Channels/PgLevelsBase.h"
#include "Rules/ChannelRules.h"

/** Levels of one channel: they stay on its screen and have its unit. */
class CPgLevels : public CPgLevelsBase
{
public:
    t_Couplings Rules() const override;

    void FollowScreen(const NRules::t_Screen& screen);

private:
    void ResetLevels();
};
