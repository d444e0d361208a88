// SPDX-License-Identifier: MIT
#include "Timebase/PgSampleCounter.h"

#include "CheckedAccess.h"
#include "CommonDatabase/Couplings/DbRules.h"
#include "Names/SampleCounter.h"

using namespace NNames;

t_Couplings CPgSampleCounter::Rules() const
{
    static constexpr auto rows =
        Table<Names>(On(Names::ResetCounters) >> Do<&CPgSampleCounter::ResetCounters>);
    return rows;
}

void CPgSampleCounter::ResetCounters()
{
    KW_CHECKED(m_pAcquiredBlocks->DbSet(0));
    KW_CHECKED(m_pAcquisitions->DbSet(0));
    KW_CHECKED(m_pLostAcquisitions->DbSet(0));
}
