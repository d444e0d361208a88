// SPDX-License-Identifier: MIT
#include "Channels/PgLevels.h"

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
#include "CommonDatabase/Couplings/DbRules.h"
#include "Names/Levels.h"
#include "Rules/ChannelRules.h"

using namespace NNames;

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

template <typename TArray>
void RescaleAll(TArray& array, double ratio)
{
    for (INT32 i = 0; i < array.GetCount(); ++i)
    {
        array.ItemDirect(i)->Rescale(ratio);
    }
}
} // namespace

t_Couplings CPgLevels::Rules() const
{
    static constexpr auto rows =
        Table<Names>(On(Names::ResetLevels) >> Do<&CPgLevels::ResetLevels>);
    return rows;
}

/** The channel brings what depends on its screen up to date. */
void CPgLevels::ResetLevels()
{
    for (const auto& levels : Groups())
    {
        NRules::WriteUserDefaults(*levels);
    }
    NRules::UpdateSubtree(*m_pRelativeHysteresisLevel);
}

void CPgLevels::FollowScreen(const NRules::t_Screen& screen)
{
    FollowAll(*m_pEdgeTriggerLevel, screen);
    FollowAll(*m_pSlewRateTriggerLevelRange, screen);
    FollowAll(*m_pRuntTriggerLevelRange, screen);
    FollowAll(*m_pWindowTriggerLevelRange, screen);
    FollowAll(*m_pLogicThresholdSettings, screen);
    FollowAll(*m_pHysteresisLevel, screen);
}

/** Hystereses are shares of the screen. */
void CPgLevels::Rescale(double ratio)
{
    RescaleAll(*m_pEdgeTriggerLevel, ratio);
    RescaleAll(*m_pSlewRateTriggerLevelRange, ratio);
    RescaleAll(*m_pRuntTriggerLevelRange, ratio);
    RescaleAll(*m_pWindowTriggerLevelRange, ratio);
    RescaleAll(*m_pLogicThresholdSettings, ratio);
}
