// SPDX-License-Identifier: MIT
#include "Channels/PgLevels.h"

#include "Channels/PgChannel.h"
#include "Channels/PgEdgeTriggerLevel.h"
#include "Channels/PgHysteresisLevel.h"
#include "Channels/PgLogicThresholdSettings.h"
#include "Channels/PgRelativeHysteresisLevel.h"
#include "Channels/PgRuntTriggerLevelRange.h"
#include "Channels/PgSlewRateTriggerLevelRange.h"
#include "Channels/PgWindowTriggerLevelRange.h"
#include "Channels/PgaEdgeTriggerLevel.h"
#include "Channels/PgaHysteresisLevel.h"
#include "Channels/PgaLogicThresholdSettings.h"
#include "Channels/PgaRelativeHysteresisLevel.h"
#include "Channels/PgaRuntTriggerLevelRange.h"
#include "Channels/PgaSlewRateTriggerLevelRange.h"
#include "Channels/PgaWindowTriggerLevelRange.h"
#include "Rules/ChannelRules.h"

namespace
{
template <typename TArray>
void FollowAll(TArray& array, const NRules::t_Screen& screen)
{
    for (INT32 i = 0; i < array.GetCount(); ++i)
    {
        array.ItemDirect(i)->FollowScreen(screen);
    }
}
} // namespace

KW_ACCEPTANCE CPgLevels::OnFunction(const CDbFunction* function)
{
    auto* const channel = NRules::Above<CPgChannel>(*this);
    if (function == m_pResetLevels && channel != nullptr)
    {
        for (const auto& levels : Groups())
        {
            NRules::WriteUserDefaults(*levels);
        }
        channel->UpdateGroup();
    }
    return CPgLevelsBase::OnFunction(function);
}

void CPgLevels::FollowScreen(const NRules::t_Screen& screen)
{
    FollowAll(*m_pEdgeTriggerLevel, screen);
    FollowAll(*m_pSlewRateTriggerLevelRange, screen);
    FollowAll(*m_pRuntTriggerLevelRange, screen);
    FollowAll(*m_pWindowTriggerLevelRange, screen);
    FollowAll(*m_pLogicThresholdSettings, screen);
    FollowAll(*m_pHysteresisLevel, screen);
    NRules::UpdateSubtree(*m_pRelativeHysteresisLevel);
}
