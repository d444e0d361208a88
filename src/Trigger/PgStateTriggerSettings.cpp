// SPDX-License-Identifier: MIT
#include "Trigger/PgStateTriggerSettings.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "Names/StateTriggerSettings.h"
#include "Rules/ChannelRules.h"
#include "Trigger/TriggerRules.h"

using namespace NNames;

t_Couplings CPgStateTriggerSettings::Rules() const
{
    using S = CPgStateTriggerSettings;
    static constexpr auto rows = Table<Names>(On(Names::ClearPattern) >> Do<&S::ClearStates>,
                                              NRules::kSwitched >> Derive<&S::OfferClocks>);
    return rows;
}

void CPgStateTriggerSettings::OfferClocks()
{
    NRules::OfferSources(*m_pClockSource, NRules::eSOURCES_INPUTS);
}

void CPgStateTriggerSettings::ClearStates()
{
    NTriggerRules::ClearStates(*m_pChannelState);
}
