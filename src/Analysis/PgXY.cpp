// SPDX-License-Identifier: MIT
#include "Analysis/PgXY.h"

#include "IKWFunctionZELHelpers/ApplicationDefinitions.h"
#include "KWEnumerationsChannels.h"
#include "Rules/ChannelRules.h"
#include "Rules/SourceDependencies.h"

KW_ACCEPTANCE CPgXY::OnPropertySet(const CDbPropBase* property)
{
    UpdateGroup();
    return CPgXYBase::OnPropertySet(property);
}

void CPgXY::UpdateGroup()
{
    NRules::OfferSources(*m_pSourceX, NRules::eSOURCES_ANALOG);
    NRules::OfferSources(*m_pSourceY1, NRules::eSOURCES_ANALOG, m_pSourceX->Get());
    UpdateSecondCurve();
}

void CPgXY::OnTreeCreated()
{
    CPgXYBase::OnTreeCreated();
    NRules::AddSourceDependency(
        *this, [this] { UpdateGroup(); }, QStringLiteral("XY/SourceX"));
}

void CPgXY::UpdateSecondCurve()
{
    const CSourceActivity activity(eSOURCE_ACTIVITY_SWITCHED_ON, *this);
    for (INT32 value = 0; value < eKW_ZEL_CHANNEL_NONE; ++value)
    {
        const auto channel = static_cast<KW_ZEL_CHANNEL>(value);
        const bool isFree = channel != m_pSourceX->Get() && channel != m_pSourceY1->Get();
        KW_CHECKED(m_pSourceY2->EnableValue(
            channel, isFree && NApplicationDefinitions::IsAnalogChannel(channel) &&
                         activity.IsSourceActive(channel)));
    }
    if (!m_pSourceY2->IsValueEnabled(m_pSourceY2->Get()))
    {
        KW_CHECKED(m_pSourceY2->DbSet(eKW_ZEL_CHANNEL_NONE));
    }
}
