// SPDX-License-Identifier: MIT
#include "PgTimeRange.h"

#include "PgSlewRateTriggerSettings.h"
#include "RuleHelpers.h"

KW_ACCEPTANCE CPgTimeRange::OnPropertySet(const CDbPropBase* property)
{
    NRules::KeepOrdered(*m_pLowerLimit, *m_pUpperLimit, property);
    if (auto* const slewRate = NRules::Above<CPgSlewRateTriggerSettings>(*this))
    {
        slewRate->UpdateGroup();
    }
    return CPgTimeRangeBase::OnPropertySet(property);
}
