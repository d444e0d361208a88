// SPDX-License-Identifier: MIT
#include "Buses/PgLINBusSettings.h"

#include "Buses/BusRules.h"

KW_ACCEPTANCE CPgLINBusSettings::OnPropertySet(const CDbPropBase* property)
{
    return std::max(NRules::FollowStandard(*m_pStandardBitRate, *m_pBitRate, property),
                    CPgLINBusSettingsBase::OnPropertySet(property));
}

void CPgLINBusSettings::UpdateGroup()
{
    NRules::FollowStandard(*m_pStandardBitRate, *m_pBitRate);
}

std::vector<CDbPropertyGroup::t_Twins> CPgLINBusSettings::GetTwins() const
{
    return {{m_pStandardBitRate, m_pBitRate}};
}
