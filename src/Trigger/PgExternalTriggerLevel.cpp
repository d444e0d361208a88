// SPDX-License-Identifier: MIT
#include "Trigger/PgExternalTriggerLevel.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "Names/ExternalTriggerLevel.h"
#include "Names/ExternalTriggerSettings.h"
#include "Names/Trigger.h"
#include "Names/ZEL.h"

using namespace NNames;

t_Couplings CPgExternalTriggerLevel::Rules() const
{
    using L = CPgExternalTriggerLevel;
    static constexpr auto rows =
        Table<Names>(Changed(ZEL::Trigger / Trigger::ExternalTriggerSettings /
                             ExternalTriggerSettings::Attenuation) >>
                         Derive<&L::LimitLevel>,
                     SelectionRows());
    return rows;
}

void CPgExternalTriggerLevel::LimitLevel()
{
    constexpr double kInputRange = 5.0;
    const double range = kInputRange * At(ZEL::Trigger / Trigger::ExternalTriggerSettings /
                                          ExternalTriggerSettings::Attenuation)
                                           ->Get();
    NRules::SetLimits(*m_pLevel, -range, range);
}
