// SPDX-License-Identifier: MIT
#include "Analysis/PgMask.h"

#include "Analysis/MaskExchange.h"
#include "Analysis/PgMaskChannelSetup.h"
#include "Analysis/PgMaskSettings.h"
#include "Analysis/PgaMaskChannelSetup.h"
#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsAcquisition.h"
#include "KWEnumerationsLogger.h"
#include "KWEnumerationsOnOff.h"
#include "Names/Control.h"
#include "Names/Mask.h"
#include "Names/MaskSettings.h"
#include "Names/Runs.h"
#include "Names/SMScope.h"
#include "Names/ZEL.h"
#include "Rules/NumberRules.h"

using namespace NNames;

namespace
{
constexpr auto kScope = ZEL::Control / Control::SMScope / SMScope::RunStop;
} // namespace

t_Couplings CPgMask::Rules() const
{
    using M = CPgMask;
    static constexpr auto rows = Table<Names>(
        Changed(Names::Enabled) >> Derive<&M::UpdateState>,
        On(Names::Start) >> Do<&M::ClearCounts, &M::Start>, On(Names::Pause) >> Do<&M::Pause>,
        On(Names::Stop) >> Do<&M::Stop>, On(Names::ClearCounts) >> Do<&M::ClearCounts>,
        On(Names::ClearCounts, Names::AllowedViolations) >> Do<&M::JudgeEnded>,
        On(Names::MaskSettings / MaskSettings::ClearMask) >> Do<&M::ClearMask>,
        On(Names::MaskSettings / MaskSettings::LockToScreen) >> Do<&M::KeepPlaces>,
        Delivered(Names::State) >> Do<&M::JudgeEnded>, Changed(kScope) >> Derive<&M::WaitForScope>,
        Changed(ZEL::Runs / Runs::NumberOfRuns) >> Do<&M::GoOn>);
    return rows;
}

void CPgMask::UpdateState()
{
    if (m_pEnabled->Get() == eKW_ONOFF_OFF)
    {
        KW_CHECKED(m_pState->DbSet(eKW_ZEL_MASK_TESTSTATE_OFF));
    }
}

bool CPgMask::IsScopeRunning() const
{
    return At(kScope)->Get() != eKW_ZEL_RUNSTOP_STATE_STOP;
}

void CPgMask::WaitForScope()
{
    if (m_pState->Get() == eKW_ZEL_MASK_TESTSTATE_RUNNING && !IsScopeRunning())
    {
        KW_CHECKED(m_pState->DbSet(eKW_ZEL_MASK_TESTSTATE_PAUSED));
    }
}

void CPgMask::GoOn()
{
    if (m_pState->Get() == eKW_ZEL_MASK_TESTSTATE_PAUSED && IsScopeRunning())
    {
        KW_CHECKED(m_pState->DbSet(eKW_ZEL_MASK_TESTSTATE_RUNNING));
    }
}

KW_ZEL_MASK_TESTSTATE CPgMask::Verdict() const
{
    const UINT64 failed = m_pFailedAcquisitions->Get();
    // The counts are delivered one by one.
    if (m_pTestedAcquisitions->Get() == 0 && failed == 0)
    {
        return eKW_ZEL_MASK_TESTSTATE_OFF;
    }
    return failed > m_pAllowedViolations->Get() ? eKW_ZEL_MASK_TESTSTATE_FAILED
                                                : eKW_ZEL_MASK_TESTSTATE_PASSED;
}

void CPgMask::JudgeEnded()
{
    if (m_pState->Get() == eKW_ZEL_MASK_TESTSTATE_PASSED ||
        m_pState->Get() == eKW_ZEL_MASK_TESTSTATE_FAILED)
    {
        KW_CHECKED(m_pState->DbSet(Verdict()));
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
    return KW_CHECKED(m_pState->DbSet(IsScopeRunning() ? eKW_ZEL_MASK_TESTSTATE_RUNNING
                                                       : eKW_ZEL_MASK_TESTSTATE_PAUSED));
}

KW_ACCEPTANCE CPgMask::Pause()
{
    if (!IsUnderWay() || !IsScopeRunning())
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
    return KW_CHECKED(m_pState->DbSet(Verdict()));
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

void CPgMask::KeepPlaces()
{
    const bool isLocked = m_pMaskSettings->GetPrLockToScreen()->Get() == eKW_ONOFF_ON;
    for (INT32 i = 0; i < m_pMaskChannelSetup->GetCount(); ++i)
    {
        CPgMaskChannelSetup& setup = *m_pMaskChannelSetup->ItemDirect(i);
        KW_Mask mask = *setup.GetMask();
        const KW_MaskFrame frame =
            NMaskExchange::FrameOf(*this, static_cast<KW_ZEL_CHANNEL>(setup.GetPrChannel()->Get()));
        // One that is too far away, or of another unit, comes to the screen as it is.
        if (!isLocked || !KW_IsAccepted(KW_MoveMaskToFrame(mask, frame)))
        {
            mask.frame = frame;
        }
        KW_CHECKED(setup.SetMask(mask));
    }
}
