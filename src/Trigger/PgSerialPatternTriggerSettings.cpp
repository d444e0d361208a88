// SPDX-License-Identifier: MIT
#include "Trigger/PgSerialPatternTriggerSettings.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "Names/SerialPatternTriggerSettings.h"
#include "Rules/ChannelRules.h"
#include "Trigger/TriggerRules.h"

using namespace NNames;

t_Couplings CPgSerialPatternTriggerSettings::Rules() const
{
    using S = CPgSerialPatternTriggerSettings;
    static constexpr auto rows = Table<Names>(OnAny() >> Derive<&S::OfferSources>,
                                              On(Names::ClearPattern) >> Do<&S::ClearBits>,
                                              NRules::kSwitched >> Derive<&S::OfferSources>);
    return rows;
}

void CPgSerialPatternTriggerSettings::OfferSources()
{
    NTriggerRules::OfferClockAndData(*m_pClockSource, *m_pDataSource);
}

void CPgSerialPatternTriggerSettings::ClearBits()
{
    KW_CHECKED(m_pPattern->DbSet(QString(m_pPattern->Get().size(), QLatin1Char('X'))));
}
