// SPDX-License-Identifier: MIT
#include "Root/PgSMMode.h"

#include "CheckedAccess.h"
#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsAcquisition.h"
#include "KWEnumerationsOnOff.h"
#include "KWEnumerationsSpectrum.h"
#include "Names/FFT.h"
#include "Names/Mask.h"
#include "Names/Spectrum.h"
#include "Names/XY.h"
#include "Names/ZEL.h"
#include "Spectrum/PgSpectrum.h"

using namespace NNames;

namespace
{
constexpr auto kXy = ZEL::XY / XY::State;
constexpr auto kMask = ZEL::Mask / Mask::Enabled;
constexpr auto kSpectrum = ZEL::FFT / FFT::State;
} // namespace

t_Couplings CPgSMMode::Rules() const
{
    using M = CPgSMMode;
    static constexpr auto rows = Table<Names>(
        On(Names::SwitchMode) >> Do<&M::SwitchMode>,
        On(Names::OperationMode) >> Derive<&M::EnterSpectrum>, On(kXy) >> Do<&M::FollowXy>,
        On(kSpectrum) >> Do<&M::FollowSpectrum>,
        On(kMask, ZEL::Mask / Mask::Start) >> Do<&M::FollowMask>,
        // Before the functions follow: what a file switched on says more than the mode that is the
        // default.
        Derive<&M::EnterByFunctions>, Changed(Names::OperationMode) >> Derive<&M::SwitchFunctions>);
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

void CPgSMMode::EnterSpectrum()
{
    const bool isBasic = m_pOperationMode->Get() == eKW_ZEL_OPERATION_MODE_FFT;
    if (!isBasic && m_pOperationMode->Get() != eKW_ZEL_OPERATION_MODE_SPECTRUM)
    {
        return;
    }
    KW_CHECKED(At(ZEL::Spectrum / Spectrum::Mode)
                   ->DbSet(isBasic ? eKW_SPECTRUM_MODE_FFT : eKW_SPECTRUM_MODE_SPA));
    At(ZEL::Spectrum)->UpdateGroup();
    KW_CHECKED(At(kSpectrum)->DbSet(eKW_ONOFF_ON));
    KW_CHECKED(m_pOperationMode->DbSet(eKW_ZEL_OPERATION_MODE_SCOPE_YT));
    KW_CHECKED(m_pSwitchMode->Set());
    SwitchFunctions();
}

void CPgSMMode::FollowXy()
{
    Follow(At(kXy)->Get(), eKW_ZEL_OPERATION_MODE_SCOPE_XY);
}

void CPgSMMode::FollowMask()
{
    Follow(At(kMask)->Get(), eKW_ZEL_OPERATION_MODE_MASKTEST_YT);
}

void CPgSMMode::FollowSpectrum()
{
    Follow(At(kSpectrum)->Get(), eKW_ZEL_OPERATION_MODE_SCOPE_YT);
}

void CPgSMMode::Follow(KW_ONOFF state, KW_ZEL_OPERATION_MODE mode)
{
    if (state == eKW_ONOFF_ON)
    {
        Enter(mode);
    }
    else if (m_pOperationMode->Get() == mode)
    {
        Leave();
    }
}

void CPgSMMode::Enter(KW_ZEL_OPERATION_MODE mode)
{
    const KW_ZEL_OPERATION_MODE before = m_pOperationMode->Get();
    if (before != mode)
    {
        KW_CHECKED(m_pOperationMode->DbSet(before));
        KW_CHECKED(m_pOperationMode->SetForNow(mode));
    }
    KW_CHECKED(m_pSwitchMode->Set());
}

void CPgSMMode::Leave()
{
    constexpr auto kOtherwise = eKW_ZEL_OPERATION_MODE_SCOPE_YT;
    const bool hasBefore = m_pOperationMode->GetUserValueAsInt() != m_pOperationMode->GetAsInt();
    KW_CHECKED(hasBefore ? m_pOperationMode->FollowWish(kOtherwise)
                         : m_pOperationMode->DbSet(kOtherwise));
    KW_CHECKED(m_pSwitchMode->Set());
}

void CPgSMMode::EnterByFunctions()
{
    if (m_pOperationMode->Get() != eKW_ZEL_OPERATION_MODE_SCOPE_YT)
    {
        return;
    }
    if (At(kXy)->Get() == eKW_ONOFF_ON)
    {
        KW_CHECKED(m_pOperationMode->SetForNow(eKW_ZEL_OPERATION_MODE_SCOPE_XY));
    }
    else if (At(kMask)->Get() == eKW_ONOFF_ON)
    {
        KW_CHECKED(m_pOperationMode->SetForNow(eKW_ZEL_OPERATION_MODE_MASKTEST_YT));
    }
}

void CPgSMMode::SwitchFunctions()
{
    const KW_ZEL_OPERATION_MODE mode = m_pOperationMode->Get();
    const auto isOn = [mode](KW_ZEL_OPERATION_MODE its)
    { return mode == its ? eKW_ONOFF_ON : eKW_ONOFF_OFF; };
    KW_CHECKED(At(kXy)->DbSet(isOn(eKW_ZEL_OPERATION_MODE_SCOPE_XY)));
    KW_CHECKED(At(kMask)->DbSet(isOn(eKW_ZEL_OPERATION_MODE_MASKTEST_YT)));
    auto& spectrum = *At(kSpectrum);
    KW_CHECKED(mode == eKW_ZEL_OPERATION_MODE_SCOPE_YT ? spectrum.FollowWish(eKW_ONOFF_OFF)
                                                       : spectrum.SetForNow(eKW_ONOFF_OFF));
}
