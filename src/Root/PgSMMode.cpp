// SPDX-License-Identifier: MIT
#include "Root/PgSMMode.h"

#include "CheckedAccess.h"
#include "KWEnumerationsAcquisition.h"

KW_ACCEPTANCE CPgSMMode::OnFunction(const CDbFunction* function)
{
    const KW_ZEL_OPERATION_MODE active = m_pActiveMode->Get();
    if (function != m_pSwitchMode || active == m_pOperationMode->Get())
    {
        return eKW_ACC_OK;
    }
    KW_CHECKED(m_pPreviousMode->DbSet(active));
    const KW_ACCEPTANCE code = KW_CHECKED(m_pActiveMode->DbSet(m_pOperationMode->Get()));
    KW_CHECKED(m_pOperationState->DbSet(eKW_ZEL_OPSTATE_DONE));
    return code;
}
