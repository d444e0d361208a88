// SPDX-License-Identifier: MIT
#include "Trigger/PgTimeRange.h"

#include "Rules/NumberRules.h"
#include "Trigger/PgSlewRateTriggerSettings.h"

KW_ACCEPTANCE CPgTimeRange::OnPropertySet(const CDbPropBase* property)
{
    NRules::KeepOrdered(*m_pLowerLimit, *m_pUpperLimit, property);
    if (auto* const slewRate = NRules::Above<CPgSlewRateTriggerSettings>(*this))
    {
        slewRate->UpdateGroup();
    }
    return CPgTimeRangeBase::OnPropertySet(property);
}
