// SPDX-License-Identifier: MIT
#include "Trigger/PgTriggerHoldOff.h"

#include "Rules/NumberRules.h"

KW_ACCEPTANCE CPgTriggerHoldOff::OnPropertySet(const CDbPropBase* property)
{
    NRules::KeepOrdered(*m_pRandomMinimumTime, *m_pRandomMaximumTime, property);
    return CPgTriggerHoldOffBase::OnPropertySet(property);
}
