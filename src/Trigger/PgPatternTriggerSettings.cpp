// SPDX-License-Identifier: MIT
#include "Trigger/PgPatternTriggerSettings.h"

#include "Trigger/TriggerRules.h"

KW_ACCEPTANCE CPgPatternTriggerSettings::OnFunction(const CDbFunction* function)
{
    if (function == m_pClearPattern)
    {
        NTriggerRules::ClearStates(*m_pChannelState);
    }
    return CPgPatternTriggerSettingsBase::OnFunction(function);
}
