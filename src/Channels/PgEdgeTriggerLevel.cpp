// SPDX-License-Identifier: MIT
#include "Channels/PgEdgeTriggerLevel.h"
#include "Rules/ChannelRules.h"

void CPgEdgeTriggerLevel::FollowScreen(const NRules::t_Screen& screen)
{
    NRules::OfferFixedLevels(*m_pLevelSet, screen.unit, eKW_TRIGGER_LEVEL_SET_USER);
    const double fixed = FixedLevel().value_or(screen.top);
    NRules::PutOnScreen(*m_pLevel, {std::min(screen.bottom, fixed), std::max(screen.top, fixed),
                                    screen.division, screen.unit});
    FollowSelection();
}

void CPgEdgeTriggerLevel::Rescale(double ratio)
{
    if (!FixedLevel())
    {
        NRules::Rescale(*m_pLevel, ratio);
    }
}
