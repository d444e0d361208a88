// SPDX-License-Identifier: MIT
#include "Root/PgSMScope.h"

#include "KWEnumerationsTrigger.h"
#include "Names/Trigger.h"

#include <algorithm>

using namespace NNames;

t_Couplings CPgSMScope::Rules() const
{
    using S = CPgSMScope;
    static constexpr auto follow = Do<&S::EndByRepetition, &S::CountDown>;
    static constexpr auto rows = Table<Names>(
        MachineRows(), On(Names::RunStop) >> follow, Delivered(Names::RunStop) >> follow,
        Delivered(Names::AcquisitionsLeft) >> Do<&S::EndSingle>,
        On(Names::SingleCount) >> Do<&S::SelectNSingle>,
        Changed(ZEL::Trigger / Trigger::RepetitionMode,
                ZEL::Trigger / Trigger::NumberOfAcquisitions) >>
            Derive<&S::FollowRepetition, &S::EndByRepetition>);
    return rows;
}

KW_ZEL_TRIGGER_REPETITION_MODE CPgSMScope::Repetition() const
{
    return At(ZEL::Trigger / Trigger::RepetitionMode)->Get();
}

void CPgSMScope::EndByRepetition()
{
    const KW_ZEL_RUNSTOP_STATE present = m_pRunStop->Get();
    if (Repetition() == eKW_ZEL_TRIGGER_REPETITION_MODE_CONTINUOUS)
    {
        KW_CHECKED(m_pRunStop->FollowWish(present));
    }
    else if (present == eKW_ZEL_RUNSTOP_STATE_RUN)
    {
        KW_CHECKED(m_pRunStop->SetForNow(eKW_ZEL_RUNSTOP_STATE_SINGLE));
    }
    if (m_pRunStop->Get() != present)
    {
        CountDown();
    }
}

void CPgSMScope::CountDown()
{
    const bool isSingle = m_pRunStop->Get() == eKW_ZEL_RUNSTOP_STATE_SINGLE;
    KW_CHECKED(m_pAcquisitionsLeft->DbSet(isSingle ? m_pSingleCount->Get() : 0));
}

void CPgSMScope::EndSingle()
{
    if (m_pRunStop->Get() == eKW_ZEL_RUNSTOP_STATE_SINGLE && m_pAcquisitionsLeft->Get() == 0)
    {
        Stop();
    }
}

void CPgSMScope::SelectNSingle()
{
    constexpr auto kCounted = eKW_ZEL_TRIGGER_REPETITION_MODE_N_SINGLE;
    auto& repetition = *At(ZEL::Trigger / Trigger::RepetitionMode);
    const UINT32 count = m_pSingleCount->Get();
    if (count == 1 && repetition.GetUserValueAsInt() != kCounted)
    {
        KW_CHECKED(repetition.FollowWish(kCounted));
        return;
    }
    KW_CHECKED(At(ZEL::Trigger / Trigger::NumberOfAcquisitions)->DbSet(count));
    KW_CHECKED(repetition.SetForNow(kCounted));
}

void CPgSMScope::FollowRepetition()
{
    const bool isCounted = Repetition() == eKW_ZEL_TRIGGER_REPETITION_MODE_N_SINGLE;
    const UINT32 count =
        isCounted ? At(ZEL::Trigger / Trigger::NumberOfAcquisitions)->Get() : UINT32{1};
    KW_CHECKED(m_pSingleCount->DbSet(count));
    KW_CHECKED(m_pAcquisitionsLeft->DbSet(std::min(m_pAcquisitionsLeft->Get(), count)));
}
