// SPDX-License-Identifier: MIT
#pragma once

#include "Channels/PgLevelsBase.h"
#include "Rules/ChannelRules.h"

/** Levels of one channel: they stay on its screen and have its unit. */
class CPgLevels : public CPgLevelsBase
{
public:
    KW_ACCEPTANCE OnFunction(const CDbFunction* function) override;

    void FollowScreen(const NRules::t_Screen& screen);
};
