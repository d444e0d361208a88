// SPDX-License-Identifier: MIT
#include "PgEdgeTriggerLevel.h"

void CPgEdgeTriggerLevel::FollowScreen(const NRules::t_Screen& screen)
{
    KW_CHECKED(m_pLevel->SetUnit(screen.unit));
    NRules::SetLimits(*m_pLevel, screen.bottom, screen.top);
    FollowSelection();
}
