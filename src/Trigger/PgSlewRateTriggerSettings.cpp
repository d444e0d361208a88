// SPDX-License-Identifier: MIT
#include "Trigger/PgSlewRateTriggerSettings.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsChannels.h"
#include "KWEnumerationsTrigger.h"
#include "KWEnumerationsUnits.h"
#include "Mathematics/UnitRules.h"
#include "Names/SlewRateTriggerSettings.h"
#include "Names/TimeRange.h"
#include "Rules/ChannelRules.h"
#include "Rules/TriggerLevels.h"
#include "Trigger/PgTimeRange.h"
#include "Trigger/PgaTimeRange.h"

#include <cmath>

using namespace NNames;

t_Couplings CPgSlewRateTriggerSettings::Rules() const
{
    using S = CPgSlewRateTriggerSettings;
    static constexpr auto rows =
        Table<Names>(On(Names::TimeRange / each / TimeRange::LowerLimit,
                        Names::TimeRange / each / TimeRange::UpperLimit) >>
                         Do<&S::UpdateSlewRates>,
                     NTriggerLevels::kTrigger >> Derive<&S::UpdateSlewRates>,
                     NTriggerLevels::kLevels >> Do<&S::UpdateSlewRates>);
    return rows;
}

void CPgSlewRateTriggerSettings::UpdateSlewRates()
{
    const KW_ZEL_CHANNEL source = At(ZEL::Trigger / Trigger::Source)->Get();
    const auto levels = NTriggerLevels::InUse(*this, eKW_ZEL_TRIGGER_TYPE_SLEWRATE, source);
    const CPgTimeRange& range = *m_pTimeRange->ItemDirect(0);
    const KW_UNIT unit = NUnits::PerSecond(NRules::UnitOf(*this, source));
    for (const auto& [rate, time] : {std::pair{m_pUpperSlewRate, range.GetPrLowerLimit()},
                                     {m_pLowerSlewRate, range.GetPrUpperLimit()}})
    {
        const double slope = (levels.upper - levels.lower) / time->Get();
        KW_CHECKED(rate->SetUnit(levels.count > 0 ? unit : eKW_UNIT_LEVEL_V_PER_S));
        NRules::WriteResult(*rate, levels.count > 0 ? slope : NAN);
    }
}
