// SPDX-License-Identifier: MIT
#include "Trigger/PgStateTriggerSettings.h"

#include "Rules/ChannelRules.h"
#include "Trigger/TriggerRules.h"

KW_ACCEPTANCE CPgStateTriggerSettings::OnFunction(const CDbFunction* function)
{
    if (function == m_pClearPattern)
    {
        NTriggerRules::ClearStates(*m_pChannelState);
    }
    return CPgStateTriggerSettingsBase::OnFunction(function);
}

void CPgStateTriggerSettings::UpdateGroup()
{
    NRules::OfferSources(*m_pClockSource, NRules::eSOURCES_INPUTS);
}

void CPgStateTriggerSettings::OnTreeCreated()
{
    CPgStateTriggerSettingsBase::OnTreeCreated();
    NRules::AddSourceDependency(
        *this, [this] { UpdateGroup(); }, QStringLiteral("StateTriggerSettings/ClockSource"));
}
