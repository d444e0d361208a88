// SPDX-License-Identifier: MIT
#include "Root/PgSMScope.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsAcquisition.h"

using namespace NNames;

t_Couplings CPgSMScope::Rules() const
{
    static constexpr auto rows =
        Table<Names>(MachineRows(), On(Names::RunStop) >> Do<&CPgSMScope::CountDown>,
                     Delivered(Names::RunStop) >> Do<&CPgSMScope::CountDown>);
    return rows;
}

void CPgSMScope::CountDown()
{
    const bool isSingle = m_pRunStop->Get() == eKW_ZEL_RUNSTOP_STATE_SINGLE;
    KW_CHECKED(m_pAcquisitionsLeft->DbSet(isSingle ? m_pSingleCount->Get() : 0));
}
