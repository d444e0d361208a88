// SPDX-License-Identifier: MIT
#include "Analysis/PgMask.h"

#include "Analysis/PgMaskChannelSetup.h"
#include "Analysis/PgaMaskChannelSetup.h"
#include "KWEnumerationsLogger.h"
#include "KWEnumerationsOnOff.h"
#include "Rules/NumberRules.h"

KW_ACCEPTANCE CPgMask::OnPropertySet(const CDbPropBase* property)
{
    UpdateGroup();
    return CPgMaskBase::OnPropertySet(property);
}

void CPgMask::UpdateGroup()
{
    if (m_pEnabled->Get() == eKW_ONOFF_OFF)
    {
        KW_CHECKED(m_pState->DbSet(eKW_ZEL_MASK_TESTSTATE_OFF));
    }
}

KW_ACCEPTANCE CPgMask::OnFunction(const CDbFunction* function)
{
    using t_Action = KW_ACCEPTANCE (CPgMask::*)();
    const std::pair<const CDbFunction*, t_Action> actions[] = {
        {m_pStart, &CPgMask::Start},
        {m_pPause, &CPgMask::Pause},
        {m_pStop, &CPgMask::Stop},
        {m_pClearCounts, &CPgMask::ClearCounts},
    };
    for (const auto& [action, run] : actions)
    {
        if (function == action)
        {
            return (this->*run)();
        }
    }
    return CPgMaskBase::OnFunction(function);
}

bool CPgMask::IsUnderWay() const
{
    return m_pState->Get() == eKW_ZEL_MASK_TESTSTATE_RUNNING ||
           m_pState->Get() == eKW_ZEL_MASK_TESTSTATE_PAUSED;
}

KW_ACCEPTANCE CPgMask::Start()
{
    ClearCounts();
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

KW_ACCEPTANCE CPgMask::ClearCounts()
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
    return eKW_ACC_OK;
}

void CPgMask::ClearMask()
{
    m_pMaskChannelSetup->ItemDirect(m_pSelectedChannel->GetAsInt())->ClearMask();
}
