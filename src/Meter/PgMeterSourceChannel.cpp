// SPDX-License-Identifier: MIT
#include "Meter/PgMeterSourceChannel.h"

#include "IKWFunctionZELHelpers/ZELDatabaseHelperCommon.h"
#include "KWEnumerationsMeter.h"
#include "Meter/PgCounter.h"
#include "Meter/PgMeter.h"
#include "Rules/NumberRules.h"

KW_ACCEPTANCE CPgMeterSourceChannel::OnPropertySet(const CDbPropBase* property)
{
    if (property == m_pRange)
    {
        KW_CHECKED(m_pAutoRange->DbSet(eKW_ZEL_METER_AUTORANGE_OFF));
        UpdateGroup();
        if (CPgMeter* const meter = NRules::Above<CPgMeter>(*this))
        {
            meter->UpdateGroup();
        }
        if (CPgCounter* const counter = NRules::Above<CPgCounter>(*this))
        {
            counter->UpdateGroup();
        }
    }
    return CPgMeterSourceChannelBase::OnPropertySet(property);
}

void CPgMeterSourceChannel::UpdateGroup()
{
    KW_CHECKED(m_pScale->DbSet(
        CZELDatabaseHelperCommon::ConvertMeterRange2VerticalScale(m_pRange->Get())));
}
