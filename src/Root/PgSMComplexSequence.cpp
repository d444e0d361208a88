// SPDX-License-Identifier: MIT
#include "Root/PgSMComplexSequence.h"

#include "CheckedAccess.h"
#include "KWEnumerationsAcquisition.h"

KW_ACCEPTANCE CPgSMComplexSequence::OnFunction(const CDbFunction* function)
{
    const KW_ZEL_OPSTATE state = m_pOperationState->Get();
    const bool runs = state == eKW_ZEL_OPSTATE_PENDING || state == eKW_ZEL_OPSTATE_ACTIVE;
    if (function == m_pAbort && runs)
    {
        KW_CHECKED(m_pOperationState->DbSet(eKW_ZEL_OPSTATE_ABORTED));
    }
    if (function == m_pAutoset || function == m_pAbort)
    {
        KW_CHECKED(m_pProgress->DbSet(0.0));
        KW_CHECKED(m_pStep->DbSet(QStringLiteral("")));
    }
    return CPgSMComplexSequenceBase::OnFunction(function);
}
