// SPDX-License-Identifier: MIT
#include "Root/PgSMMode.h"

#include "CheckedAccess.h"
#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsAcquisition.h"

using namespace NNames;

t_Couplings CPgSMMode::Rules() const
{
    static constexpr auto rows = Table<Names>(On(Names::SwitchMode) >> Do<&CPgSMMode::SwitchMode>);
    return rows;
}

KW_ACCEPTANCE CPgSMMode::SwitchMode()
{
    const KW_ZEL_OPERATION_MODE active = m_pActiveMode->Get();
    if (active == m_pOperationMode->Get())
    {
        return eKW_ACC_OK;
    }
    KW_CHECKED(m_pPreviousMode->DbSet(active));
    const KW_ACCEPTANCE code = KW_CHECKED(m_pActiveMode->DbSet(m_pOperationMode->Get()));
    KW_CHECKED(m_pOperationState->DbSet(eKW_ZEL_OPSTATE_DONE));
    return code;
}
