// SPDX-License-Identifier: MIT
#include "Trigger/PgSlewRateTriggerSettings.h"

#include "Channels/TriggerLevels.h"
#include "KWEnumerationsChannels.h"
#include "KWEnumerationsTrigger.h"
#include "KWEnumerationsUnits.h"
#include "Root/PgZEL.h"
#include "Rules/ChannelRules.h"
#include "Rules/UnitRules.h"
#include "Trigger/PgTimeRange.h"
#include "Trigger/PgTrigger.h"
#include "Trigger/PgaTimeRange.h"

#include <cmath>

void CPgSlewRateTriggerSettings::UpdateGroup()
{
    const CPgZEL* const root = CPgZEL::Of(*this);
    if (root == nullptr)
    {
        return;
    }
    const KW_ZEL_CHANNEL source = root->GetPgTrigger()->GetPrSource()->Get();
    const auto levels = NTriggerLevels::InUse(*root, eKW_ZEL_TRIGGER_TYPE_SLEWRATE, source);
    const CPgTimeRange& range = *m_pTimeRange->ItemDirect(0);
    const KW_UNIT unit = NRules::UnitPerSecond(NRules::UnitOf(*this, source));
    for (const auto& [rate, time] : {std::pair{m_pUpperSlewRate, range.GetPrLowerLimit()},
                                     {m_pLowerSlewRate, range.GetPrUpperLimit()}})
    {
        const double slope = (levels.upper - levels.lower) / time->Get();
        KW_CHECKED(rate->SetUnit(levels.count > 0 ? unit : eKW_UNIT_LEVEL_V_PER_S));
        NRules::WriteResult(*rate, levels.count > 0 ? slope : NAN);
    }
}

void CPgSlewRateTriggerSettings::OnTreeCreated()
{
    CPgSlewRateTriggerSettingsBase::OnTreeCreated();
    NTriggerLevels::AddDependency(
        *this, [this] { UpdateGroup(); }, QStringLiteral("SlewRateTriggerSettings/UpperSlewRate"));
}
