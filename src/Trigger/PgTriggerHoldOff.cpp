// SPDX-License-Identifier: MIT
#include "Trigger/PgTriggerHoldOff.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "Names/TriggerHoldOff.h"
#include "Rules/NumberRules.h"

using namespace NNames;

t_Couplings CPgTriggerHoldOff::Rules() const
{
    static constexpr auto rows =
        Table<Names>(On(Names::RandomMinimumTime, Names::RandomMaximumTime) >>
                     Do<&CPgTriggerHoldOff::OrderLimits>);
    return rows;
}

void CPgTriggerHoldOff::OrderLimits(const CDbPropBase* written)
{
    NRules::KeepOrdered(*m_pRandomMinimumTime, *m_pRandomMaximumTime, written);
}
