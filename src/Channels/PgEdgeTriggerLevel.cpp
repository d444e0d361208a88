// SPDX-License-Identifier: MIT
#include "Channels/PgEdgeTriggerLevel.h"
#include "Rules/ChannelRules.h"

void CPgEdgeTriggerLevel::FollowScreen(const NRules::t_Screen& screen)
{
    NRules::PutOnScreen(*m_pLevel, screen);
    FollowSelection();
}
