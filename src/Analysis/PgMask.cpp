// SPDX-License-Identifier: MIT
#include "Analysis/PgMask.h"

#include "Analysis/PgMaskChannelSetup.h"
#include "Analysis/PgaMaskChannelSetup.h"
#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsLogger.h"
#include "KWEnumerationsOnOff.h"
#include "Names/Mask.h"
#include "Names/MaskSettings.h"
#include "Rules/NumberRules.h"

using namespace NNames;

t_Couplings CPgMask::Rules() const
{
    using M = CPgMask;
    static constexpr auto rows = Table<Names>(
        OnAny() >> Derive<&M::UpdateState>, On(Names::Start) >> Do<&M::ClearCounts, &M::Start>,
        On(Names::Pause) >> Do<&M::Pause>, On(Names::Stop) >> Do<&M::Stop>,
        On(Names::ClearCounts) >> Do<&M::ClearCounts>,
        On(Names::MaskSettings / MaskSettings::ClearMask) >> Do<&M::ClearMask>);
    return rows;
}

void CPgMask::UpdateState()
{
    if (m_pEnabled->Get() == eKW_ONOFF_OFF)
    {
        KW_CHECKED(m_pState->DbSet(eKW_ZEL_MASK_TESTSTATE_OFF));
    }
}

bool CPgMask::IsUnderWay() const
{
    return m_pState->Get() == eKW_ZEL_MASK_TESTSTATE_RUNNING ||
           m_pState->Get() == eKW_ZEL_MASK_TESTSTATE_PAUSED;
}

KW_ACCEPTANCE CPgMask::Start()
{
    KW_CHECKED(m_pEnabled->DbSet(eKW_ONOFF_ON));
    return KW_CHECKED(m_pState->DbSet(eKW_ZEL_MASK_TESTSTATE_RUNNING));
}

KW_ACCEPTANCE CPgMask::Pause()
{
    if (!IsUnderWay())
    {
        return eKW_ACC_NOTHING_TO_ACT_ON;
    }
    const bool runs = m_pState->Get() == eKW_ZEL_MASK_TESTSTATE_RUNNING;
    return KW_CHECKED(
        m_pState->DbSet(runs ? eKW_ZEL_MASK_TESTSTATE_PAUSED : eKW_ZEL_MASK_TESTSTATE_RUNNING));
}

KW_ACCEPTANCE CPgMask::Stop()
{
    if (!IsUnderWay())
    {
        return eKW_ACC_NOTHING_TO_ACT_ON;
    }
    const bool failed = m_pFailedAcquisitions->Get() > m_pAllowedViolations->Get();
    return KW_CHECKED(
        m_pState->DbSet(failed ? eKW_ZEL_MASK_TESTSTATE_FAILED : eKW_ZEL_MASK_TESTSTATE_PASSED));
}

void CPgMask::ClearCounts()
{
    for (CDbPropNum<UINT64>* const count :
         {m_pTestedAcquisitions, m_pPassedAcquisitions, m_pFailedAcquisitions})
    {
        KW_CHECKED(count->DbSet(0));
    }
    KW_CHECKED(m_pElapsedTime->DbSet(0.0));
    KW_CHECKED(m_pFailureRate->SetValidity(eKW_VALIDITY_INVALID));
    for (INT32 i = 0; i < m_pMaskChannelSetup->GetCount(); ++i)
    {
        m_pMaskChannelSetup->ItemDirect(i)->ClearCounts();
    }
}

void CPgMask::ClearMask()
{
    m_pMaskChannelSetup->ItemDirect(m_pSelectedChannel->GetAsInt())->ClearMask();
}
