// SPDX-License-Identifier: MIT
#include "Root/PgCurrentRun.h"

#include "CheckedAccess.h"
#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsAcquisition.h"
#include "Names/Control.h"
#include "Names/Runs.h"
#include "Names/SMLogger.h"
#include "Names/SMMeter.h"
#include "Names/SMMode.h"
#include "Names/SMScope.h"
#include "Names/ZEL.h"
#include "Rules/NumberRules.h"

using namespace NNames;

namespace
{
constexpr auto kScope = ZEL::Control / Control::SMScope / SMScope::RunStop;
constexpr auto kMeter = ZEL::Control / Control::SMMeter / SMMeter::RunStop;
constexpr auto kLogger = ZEL::Control / Control::SMLogger / SMLogger::RunStop;
} // namespace

t_Couplings CPgCurrentRun::Rules() const
{
    static constexpr auto rows = Table<Names>(
        Changed(ZEL::Control / Control::SMMode / SMMode::ActiveMode, kScope, kMeter, kLogger) >>
        Derive<&CPgCurrentRun::FollowStateMachine>);
    return rows;
}

void CPgCurrentRun::FollowStateMachine()
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

KW_ZEL_RUNSTOP_STATE CPgCurrentRun::Asked() const
{
    switch (At(ZEL::Control / Control::SMMode / SMMode::ActiveMode)->Get())
    {
    case eKW_ZEL_OPERATION_MODE_METER:
        return At(kMeter)->Get();
    case eKW_ZEL_OPERATION_MODE_LOGGER:
        return At(kLogger)->Get();
    default:
        return At(kScope)->Get();
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
    CDbPropNum<UINT64>& runs = *At(ZEL::Runs / Runs::NumberOfRuns);
    KW_CHECKED(runs.DbSet(runs.Get() + 1));
}
