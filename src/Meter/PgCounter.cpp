// SPDX-License-Identifier: MIT
#include "Meter/PgCounter.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsLogger.h"
#include "Meter/PgStatistics.h"
#include "Meter/PgaCounterChannel.h"
#include "Meter/PgaMeterSourceChannel.h"
#include "Names/Counter.h"
#include "Names/CounterChannel.h"
#include "Names/MeterSourceChannel.h"

using namespace NNames;

t_Couplings CPgCounter::Rules() const
{
    using C = CPgCounter;
    static constexpr auto rows = Table<Names>(
        On(Names::ResetStatistics) >> Do<&C::ResetStatistics>,
        On(Names::MeterSourceChannel / each / MeterSourceChannel::Range) >>
            Derive<&C::FollowInputs>,
        Changed(Names::CounterChannel / each / CounterChannel::Source) >> Derive<&C::FollowInputs>,
        CPgMeterSourceChannel::kOtherProbe >> Derive<&C::FollowInputs>);
    return rows;
}

void CPgCounter::ResetStatistics()
{
    for (INT32 i = 0; i < m_pCounterChannel->GetCount(); ++i)
    {
        m_pCounterChannel->ItemDirect(i)->GetPgStatistics()->Reset();
    }
}

void CPgCounter::FollowInputs()
{
    for (INT32 i = 0; i < m_pCounterChannel->GetCount(); ++i)
    {
        CPgCounterChannel* const counter = m_pCounterChannel->ItemDirect(i);
        const t_MeterInput input =
            m_pMeterSourceChannel->ItemDirect(counter->GetPrSource()->Get())->Input();
        counter->FollowInput({-input.highest, input.highest,
                              input.highest * 2.0 / NRules::kVerticalDivisions, input.unit});
    }
}
