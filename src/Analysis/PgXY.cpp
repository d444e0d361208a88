// SPDX-License-Identifier: MIT
#include "Analysis/PgXY.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "IKWFunctionZELHelpers/ApplicationDefinitions.h"
#include "KWEnumerationsChannels.h"
#include "Names/XY.h"
#include "Rules/ChannelRules.h"
#include "Rules/SourceDependencies.h"

#include <algorithm>

using namespace NNames;

namespace
{
/** What stands in for a channel that is off should be nobody's choice, so that no other axis has to
    yield to it for the time being. */
void SpareChoices(CDbPropEnum<KW_ZEL_CHANNEL>& axis, std::initializer_list<INT32> chosen)
{
    for (INT32 value = 0;
         axis.GetAsInt() != axis.GetUserValueAsInt() && value < eKW_ZEL_CHANNEL_NONE; ++value)
    {
        const bool isChosen = std::find(chosen.begin(), chosen.end(), value) != chosen.end();
        if (axis.IsValueEnabled(value) && !isChosen)
        {
            KW_CHECKED(axis.SetForNow(value));
            return;
        }
    }
}
} // namespace

t_Couplings CPgXY::Rules() const
{
    static constexpr auto all = Derive<&CPgXY::OfferAxes, &CPgXY::UpdateSecondCurve>;
    static constexpr auto rows = Table<Names>(OnAny() >> all, NRules::kSwitched >> all);
    return rows;
}

void CPgXY::OfferAxes()
{
    const INT32 second = m_pSourceY2->GetUserValueAsInt();
    NRules::OfferSources(*m_pSourceX, NRules::eSOURCES_ANALOG);
    SpareChoices(*m_pSourceX, {m_pSourceY1->GetUserValueAsInt(), second});
    NRules::OfferSources(*m_pSourceY1, NRules::eSOURCES_ANALOG, m_pSourceX->Get());
    SpareChoices(*m_pSourceY1, {second});
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
