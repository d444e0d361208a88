// SPDX-License-Identifier: MIT
#include "Channels/PgLogic.h"

#include "Channels/PgChannelDeskew.h"
#include "Channels/PgLogicChannel.h"
#include "Channels/PgLogicThresholdSettings.h"
#include "Channels/PgaChannelDeskew.h"
#include "Channels/PgaLogicChannel.h"
#include "Channels/PgaLogicThresholdSettings.h"
#include "KWEnumerationsOnOff.h"
#include "KWEnumerationsUnits.h"
#include "Rules/ChannelRules.h"

namespace
{
/** Thresholds that the logic probe can be set to, in steps of 10 mV. */
constexpr NRules::t_Screen kProbeRange{-2.0, 8.0, 0.5, eKW_UNIT_LEVEL_V};
} // namespace

KW_ACCEPTANCE CPgLogic::OnPropertySet(const CDbPropBase* property)
{
    if (property == m_pCoupleThresholds)
    {
        OnThreshold(*m_pLogicThresholdSettings->ItemDirect(m_pSelectedThresholdRange->GetAsInt()));
    }
    return CPgLogicBase::OnPropertySet(property);
}

KW_ACCEPTANCE CPgLogic::OnFunction(const CDbFunction* function)
{
    if (function == m_pEnableAllChannels || function == m_pDisableAllChannels)
    {
        EnableChannels(function == m_pEnableAllChannels ? eKW_ONOFF_ON : eKW_ONOFF_OFF);
    }
    if (function == m_pResetOrder)
    {
        ResetOrder();
    }
    if (function == m_pResetDeskew)
    {
        ResetDeskew();
    }
    return CPgLogicBase::OnFunction(function);
}

void CPgLogic::UpdateGroup()
{
    for (INT32 i = 0; i < m_pLogicThresholdSettings->GetCount(); ++i)
    {
        m_pLogicThresholdSettings->ItemDirect(i)->FollowScreen(kProbeRange);
    }
}

void CPgLogic::OnThreshold(const CPgLogicThresholdSettings& half)
{
    for (INT32 i = 0; i < m_pLogicThresholdSettings->GetCount(); ++i)
    {
        CPgLogicThresholdSettings* const other = m_pLogicThresholdSettings->ItemDirect(i);
        if (m_pCoupleThresholds->Get() == eKW_ONOFF_ON && other != &half)
        {
            other->CopyFrom(half);
        }
    }
}

void CPgLogic::EnableChannels(KW_ONOFF state)
{
    for (INT32 i = 0; i < m_pLogicChannel->GetCount(); ++i)
    {
        KW_CHECKED(m_pLogicChannel->ItemDirect(i)->GetPrEnabled()->DbSet(state));
    }
}

void CPgLogic::ResetOrder()
{
    for (INT32 i = 0; i < m_pLogicChannel->GetCount(); ++i)
    {
        KW_CHECKED(
            m_pLogicChannel->ItemDirect(i)->GetPrStackIndex()->DbSet(static_cast<UINT32>(i)));
    }
}

void CPgLogic::ResetDeskew()
{
    for (INT32 i = 0; i < m_pChannelDeskew->GetCount(); ++i)
    {
        KW_CHECKED(m_pChannelDeskew->ItemDirect(i)->GetPrDeskew()->DbSet(0.0));
    }
}
