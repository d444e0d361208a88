// SPDX-License-Identifier: MIT
#include "Channels/PgLogic.h"

#include "Channels/PgChannelDeskew.h"
#include "Channels/PgLogicChannel.h"
#include "Channels/PgLogicThresholdSettings.h"
#include "Channels/PgaChannelDeskew.h"
#include "Channels/PgaLogicChannel.h"
#include "Channels/PgaLogicThresholdSettings.h"
#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsOnOff.h"
#include "KWEnumerationsUnits.h"
#include "Names/Logic.h"
#include "Names/LogicThresholdSettings.h"
#include "Rules/ChannelRules.h"

using namespace NNames;

namespace
{
/** Thresholds that the logic probe can be set to, in steps of 10 mV. */
constexpr NRules::t_Screen kProbeRange{-2.0, 8.0, 0.5, eKW_UNIT_LEVEL_V};
} // namespace

t_Couplings CPgLogic::Rules() const
{
    using L = CPgLogic;
    constexpr auto half = Names::LogicThresholdSettings / each;
    static constexpr auto rows =
        Table<Names>(On(Names::CoupleThresholds) >> Do<&L::CoupleToSelected>,
                     On(half / LogicThresholdSettings::ThresholdType,
                        half / LogicThresholdSettings::UserThreshold,
                        half / LogicThresholdSettings::Hysteresis) >>
                         Do<&L::CoupleToWritten>,
                     On(Names::EnableAllChannels) >> Do<&L::EnableAllChannels>,
                     On(Names::DisableAllChannels) >> Do<&L::DisableAllChannels>,
                     On(Names::ResetOrder) >> Do<&L::ResetOrder>,
                     On(Names::ResetDeskew) >> Do<&L::ResetDeskew>, Derive<&L::LimitThresholds>);
    return rows;
}

void CPgLogic::LimitThresholds()
{
    for (INT32 i = 0; i < m_pLogicThresholdSettings->GetCount(); ++i)
    {
        m_pLogicThresholdSettings->ItemDirect(i)->FollowScreen(kProbeRange);
    }
}

void CPgLogic::CoupleToSelected()
{
    CoupleTo(m_pSelectedThresholdRange->GetAsInt());
}

void CPgLogic::CoupleToWritten(const CDbPropBase* written)
{
    CoupleTo(NRules::IndexInArray(*written->GetParent()));
}

void CPgLogic::CoupleTo(INT32 half)
{
    for (INT32 i = 0; i < m_pLogicThresholdSettings->GetCount(); ++i)
    {
        if (m_pCoupleThresholds->Get() == eKW_ONOFF_ON && i != half)
        {
            m_pLogicThresholdSettings->ItemDirect(i)->CopyFrom(
                *m_pLogicThresholdSettings->ItemDirect(half));
        }
    }
}

void CPgLogic::EnableAllChannels()
{
    EnableChannels(eKW_ONOFF_ON);
}

void CPgLogic::DisableAllChannels()
{
    EnableChannels(eKW_ONOFF_OFF);
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
