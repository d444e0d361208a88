// SPDX-License-Identifier: MIT
#include "Trigger/PgTrigger.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "Names/Trigger.h"
#include "Rules/ChannelRules.h"

using namespace NNames;

t_Couplings CPgTrigger::Rules() const
{
    static constexpr auto rows =
        Table<Names>(On(Names::ResetSettings) >> Do<&CPgTrigger::ResetSettings>,
                     NRules::kSwitched >> Derive<&CPgTrigger::OfferInputs>);
    return rows;
}

void CPgTrigger::ResetSettings()
{
    NRules::WriteUserDefaults(*this);
    NRules::UpdateSubtree(*this);
}

void CPgTrigger::OfferInputs()
{
    NRules::OfferSources(*m_pSource, NRules::eSOURCES_INPUTS);
}
