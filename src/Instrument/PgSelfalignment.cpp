// SPDX-License-Identifier: MIT
#include "Instrument/PgSelfalignment.h"

#include "CheckedAccess.h"
#include "CommonDatabase/Couplings/DbRules.h"
#include "Instrument/PgaSelfalignmentResult.h"
#include "KWEnumerationsSelfTest.h"

using namespace NNames;

t_Couplings CPgSelfalignment::Rules() const
{
    static constexpr auto rows =
        Table<Names>(On(Names::Start) >> Do<&CPgSelfalignment::Begin>,
                     On(Names::Abort) >> Do<&CPgSelfalignment::AbortRunning>);
    return rows;
}

void CPgSelfalignment::Begin()
{
    KW_CHECKED(m_pResult->DbSet(eKW_ZEL_SELFALIGNMENT_RESULT_NOT_DONE));
    ForgetSteps();
}

void CPgSelfalignment::ForgetSteps()
{
    KW_CHECKED(m_pStep->DbSet(eKW_ZEL_SELFALIGNMENT_STEP_IDLE));
    KW_CHECKED(m_pDialog->DbSet(eKW_ZEL_SELFALIGNMENT_DIALOG_NONE));
    KW_CHECKED(m_pProgress->DbSet(0.0));
    for (INT32 i = 0; i < m_pSelfalignmentResult->GetCount(); ++i)
    {
        const CPgSelfalignmentResult* const step = m_pSelfalignmentResult->ItemDirect(i);
        KW_CHECKED(step->GetPrResult()->DbSet(eKW_ZEL_SELFALIGNMENT_STEPRESULT_NOT_DONE));
        KW_CHECKED(step->GetPrDeviation()->SetValidity(eKW_VALIDITY_INVALID));
    }
}

void CPgSelfalignment::AbortRunning()
{
    if (m_pResult->Get() != eKW_ZEL_SELFALIGNMENT_RESULT_RUNNING)
    {
        return;
    }
    KW_CHECKED(m_pResult->DbSet(eKW_ZEL_SELFALIGNMENT_RESULT_ABORTED));
    KW_CHECKED(m_pStep->DbSet(eKW_ZEL_SELFALIGNMENT_STEP_IDLE));
    KW_CHECKED(m_pDialog->DbSet(eKW_ZEL_SELFALIGNMENT_DIALOG_NONE));
    for (INT32 i = 0; i < m_pSelfalignmentResult->GetCount(); ++i)
    {
        CDbPropEnum<KW_ZEL_SELFALIGNMENT_STEPRESULT>* const result =
            m_pSelfalignmentResult->ItemDirect(i)->GetPrResult();
        if (result->Get() == eKW_ZEL_SELFALIGNMENT_STEPRESULT_RUNNING)
        {
            KW_CHECKED(result->DbSet(eKW_ZEL_SELFALIGNMENT_STEPRESULT_NOT_DONE));
        }
    }
}
