// SPDX-License-Identifier: MIT
#include "Timebase/PgSampleCounter.h"

#include "CheckedAccess.h"

KW_ACCEPTANCE CPgSampleCounter::OnFunction(const CDbFunction* function)
{
    if (function == m_pResetCounters)
    {
        KW_CHECKED(m_pAcquiredBlocks->DbSet(0));
        KW_CHECKED(m_pAcquisitions->DbSet(0));
        KW_CHECKED(m_pLostAcquisitions->DbSet(0));
    }
    return CPgSampleCounterBase::OnFunction(function);
}
