// SPDX-License-Identifier: MIT
#include "Trigger/PgCurrentTriggerThresholdLevels.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsChannels.h"
#include "KWEnumerationsUnits.h"
#include "Names/CurrentTriggerThresholdLevels.h"
#include "Rules/ChannelRules.h"
#include "Rules/TriggerLevels.h"

#include <cmath>

using namespace NNames;

t_Couplings CPgCurrentTriggerThresholdLevels::Rules() const
{
    using L = CPgCurrentTriggerThresholdLevels;
    static constexpr auto rows = Table<Names>(NTriggerLevels::kTrigger >> Derive<&L::UpdateLevels>,
                                              NTriggerLevels::kLevels >> Do<&L::UpdateLevels>);
    return rows;
}

void CPgCurrentTriggerThresholdLevels::UpdateLevels()
{
    const KW_ZEL_CHANNEL source = At(ZEL::Trigger / Trigger::Source)->Get();
    const auto levels =
        NTriggerLevels::InUse(*this, At(ZEL::Trigger / Trigger::Type)->Get(), source);
    KW_CHECKED(m_pNumberOfLevels->DbSet(levels.count));
    KW_CHECKED(m_pSource->DbSet(levels.count > 0 ? source : eKW_ZEL_CHANNEL_NONE));
    const KW_UNIT unit = NRules::UnitOf(*this, source);
    for (const auto& [level, value] :
         {std::pair{m_pLowerLevel, levels.lower}, {m_pUpperLevel, levels.upper}})
    {
        KW_CHECKED(level->SetUnit(levels.count > 0 ? unit : eKW_UNIT_LEVEL_V));
        NRules::WriteResult(*level, levels.count > 0 ? value : NAN);
    }
    UpdateHysteresis(levels.count > 0 ? source : eKW_ZEL_CHANNEL_NONE);
}

void CPgCurrentTriggerThresholdLevels::UpdateHysteresis(KW_ZEL_CHANNEL source)
{
    if (source == eKW_ZEL_CHANNEL_NONE)
    {
        KW_CHECKED(m_pHysteresis->SetValidity(eKW_VALIDITY_INVALID));
        return;
    }
    const auto channel = ZEL::Vertical / Vertical::Channel / source;
    KW_CHECKED(m_pHysteresis->SetUnit(At(channel / Channel::ProbeUnit)->Get()));
    KW_CHECKED(m_pHysteresis->DbSet(
        At(channel / Channel::Levels / Levels::HysteresisLevel / 0 / HysteresisLevel::Hysteresis)
            ->Get()));
}
