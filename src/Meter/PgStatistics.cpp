// SPDX-License-Identifier: MIT
#include "Meter/PgStatistics.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "Names/Statistics.h"
#include "Rules/ReadingRules.h"

using namespace NNames;

t_Couplings CPgStatistics::Rules() const
{
    static constexpr auto rows = Table<Names>(On(Names::Reset) >> Do<&CPgStatistics::Reset>);
    return rows;
}

void CPgStatistics::Reset()
{
    NRules::Invalidate({m_pMinimum, m_pMaximum, m_pMean, m_pStandardDeviation, m_pAllanDeviation});
    KW_CHECKED(m_pCount->DbSet(0));
}
