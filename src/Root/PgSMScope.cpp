// SPDX-License-Identifier: MIT
#include "Root/PgSMScope.h"

#include "KWEnumerationsAcquisition.h"

KW_ACCEPTANCE CPgSMScope::OnPropertySet(const CDbPropBase* property)
{
    if (property == m_pRunStop)
    {
        CountDown();
    }
    return CRunStopMachine::OnPropertySet(property);
}

void CPgSMScope::OnPropertyDbSet(const CDbPropBase* property)
{
    if (property == m_pRunStop)
    {
        CountDown();
    }
    CRunStopMachine::OnPropertyDbSet(property);
}

void CPgSMScope::CountDown()
{
    const bool isSingle = m_pRunStop->Get() == eKW_ZEL_RUNSTOP_STATE_SINGLE;
    KW_CHECKED(m_pAcquisitionsLeft->DbSet(isSingle ? m_pSingleCount->Get() : 0));
}
