// SPDX-License-Identifier: MIT
#include "PgLevels.h"

#include "PgChannel.h"
#include "PgEdgeTriggerLevel.h"
#include "PgHysteresisLevel.h"
#include "PgLogicThresholdSettings.h"
#include "PgRelativeHysteresisLevel.h"
#include "PgRuntTriggerLevelRange.h"
#include "PgSlewRateTriggerLevelRange.h"
#include "PgWindowTriggerLevelRange.h"
#include "PgaEdgeTriggerLevel.h"
#include "PgaHysteresisLevel.h"
#include "PgaLogicThresholdSettings.h"
#include "PgaRelativeHysteresisLevel.h"
#include "PgaRuntTriggerLevelRange.h"
#include "PgaSlewRateTriggerLevelRange.h"
#include "PgaWindowTriggerLevelRange.h"

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
