// SPDX-License-Identifier: MIT
#include "Trigger/PgDataToClockTriggerSettings.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "Names/DataToClockTriggerSettings.h"
#include "Rules/ChannelRules.h"
#include "Trigger/TriggerRules.h"

using namespace NNames;

t_Couplings CPgDataToClockTriggerSettings::Rules() const
{
    using D = CPgDataToClockTriggerSettings;
    static constexpr auto rows = Table<Names>(OnAny() >> Derive<&D::OfferSources>,
                                              Items(Names::DataSource) >> Do<&D::OfferData>,
                                              NRules::kSwitched >> Derive<&D::OfferSources>);
    return rows;
}

void CPgDataToClockTriggerSettings::OfferSources()
{
    NTriggerRules::OfferClockAndData(*m_pClockSource, *m_pDataSource);
}

/** Not the clock: in a recall the digital channel that it is may not be on yet. */
void CPgDataToClockTriggerSettings::OfferData()
{
    NTriggerRules::OfferData(*m_pDataSource, m_pClockSource->Get());
}
