// SPDX-License-Identifier: MIT
#include "Root/PgCurrentRun.h"

#include "CheckedAccess.h"
#include "KWEnumerationsAcquisition.h"
#include "Root/PgControl.h"
#include "Root/PgRuns.h"
#include "Root/PgSMLogger.h"
#include "Root/PgSMMeter.h"
#include "Root/PgSMMode.h"
#include "Root/PgSMScope.h"
#include "Root/PgZEL.h"
#include "Rules/NumberRules.h"

void CPgCurrentRun::UpdateGroup()
{
    const KW_ZEL_RUNSTOP_STATE asked = Asked();
    const bool begins =
        m_pRunStop->Get() == eKW_ZEL_RUNSTOP_STATE_STOP && asked != eKW_ZEL_RUNSTOP_STATE_STOP;
    KW_CHECKED(m_pRunStop->DbSet(asked));
    if (begins)
    {
        Begin();
    }
}

void CPgCurrentRun::OnTreeCreated()
{
    CPgCurrentRunBase::OnTreeCreated();
    if (CPgZEL* const root = CPgZEL::Of(*this))
    {
        const CPgControl* const control = root->GetPgControl();
        root->GetDependencies().Add(
            *this,
            {control->GetPgSMMode()->GetPrActiveMode(), control->GetPgSMScope()->GetPrRunStop(),
             control->GetPgSMMeter()->GetPrRunStop(), control->GetPgSMLogger()->GetPrRunStop()},
            [this] { UpdateGroup(); }, QStringLiteral("CurrentRun/RunStop"));
    }
}

KW_ZEL_RUNSTOP_STATE CPgCurrentRun::Asked() const
{
    const CPgZEL* const root = CPgZEL::Of(*this);
    if (root == nullptr)
    {
        return m_pRunStop->Get();
    }
    const CPgControl* const control = root->GetPgControl();
    switch (control->GetPgSMMode()->GetPrActiveMode()->Get())
    {
    case eKW_ZEL_OPERATION_MODE_METER:
        return control->GetPgSMMeter()->GetPrRunStop()->Get();
    case eKW_ZEL_OPERATION_MODE_LOGGER:
        return control->GetPgSMLogger()->GetPrRunStop()->Get();
    default:
        return control->GetPgSMScope()->GetPrRunStop()->Get();
    }
}

void CPgCurrentRun::Begin()
{
    for (CDbPropNum<UINT64>* const count : {m_pAcquisitions, m_pTriggers})
    {
        KW_CHECKED(count->DbSet(0));
    }
    KW_CHECKED(m_pDuration->DbSet(0.0));
    KW_CHECKED(m_pLastTriggerAge->SetValidity(eKW_VALIDITY_INVALID));
    if (const CPgRuns* const runs = NRules::Above<CPgRuns>(*this))
    {
        KW_CHECKED(runs->GetPrNumberOfRuns()->DbSet(runs->GetPrNumberOfRuns()->Get() + 1));
    }
}
