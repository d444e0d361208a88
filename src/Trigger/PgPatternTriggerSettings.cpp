// SPDX-License-Identifier: MIT
#include "Trigger/PgPatternTriggerSettings.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "Names/PatternTriggerSettings.h"
#include "Trigger/TriggerRules.h"

using namespace NNames;

t_Couplings CPgPatternTriggerSettings::Rules() const
{
    static constexpr auto rows =
        Table<Names>(On(Names::ClearPattern) >> Do<&CPgPatternTriggerSettings::ClearStates>);
    return rows;
}

void CPgPatternTriggerSettings::ClearStates()
{
    NTriggerRules::ClearStates(*m_pChannelState);
}
