// SPDX-License-Identifier: MIT
#include "Analysis/PgXY.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "IKWFunctionZELHelpers/ApplicationDefinitions.h"
#include "KWEnumerationsChannels.h"
#include "Names/XY.h"
#include "Rules/ChannelRules.h"
#include "Rules/SourceDependencies.h"

using namespace NNames;

t_Couplings CPgXY::Rules() const
{
    static constexpr auto all = Derive<&CPgXY::OfferAxes, &CPgXY::UpdateSecondCurve>;
    static constexpr auto rows = Table<Names>(OnAny() >> all, NRules::kSwitched >> all);
    return rows;
}

void CPgXY::OfferAxes()
{
    NRules::OfferSources(*m_pSourceX, NRules::eSOURCES_ANALOG);
    NRules::OfferSources(*m_pSourceY1, NRules::eSOURCES_ANALOG, m_pSourceX->Get());
}

void CPgXY::UpdateSecondCurve()
{
    const CSourceActivity activity(eSOURCE_ACTIVITY_SWITCHED_ON, this);
    for (INT32 value = 0; value < eKW_ZEL_CHANNEL_NONE; ++value)
    {
        const auto channel = static_cast<KW_ZEL_CHANNEL>(value);
        const bool isFree = channel != m_pSourceX->Get() && channel != m_pSourceY1->Get();
        KW_CHECKED(m_pSourceY2->EnableValue(
            channel, isFree && NApplicationDefinitions::IsAnalogChannel(channel) &&
                         activity.IsSourceActive(channel)));
    }
    KW_CHECKED(m_pSourceY2->FollowWish(eKW_ZEL_CHANNEL_NONE));
}
