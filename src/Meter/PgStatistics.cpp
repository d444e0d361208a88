// SPDX-License-Identifier: MIT
#include "Meter/PgStatistics.h"

#include "Rules/ReadingRules.h"

KW_ACCEPTANCE CPgStatistics::OnFunction(const CDbFunction* function)
{
    if (function == m_pReset)
    {
        Reset();
    }
    return CPgStatisticsBase::OnFunction(function);
}

void CPgStatistics::Reset()
{
    NRules::Invalidate({m_pMinimum, m_pMaximum, m_pMean, m_pStandardDeviation, m_pAllanDeviation});
    KW_CHECKED(m_pCount->DbSet(0));
}
