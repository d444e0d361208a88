// SPDX-License-Identifier: MIT
#include "Buses/PgCANBusSettings.h"

#include "Buses/BusRules.h"
#include "KWEnumerationsSerialBus.h"

KW_ACCEPTANCE CPgCANBusSettings::OnPropertySet(const CDbPropBase* property)
{
    return std::max(Follow(property), CPgCANBusSettingsBase::OnPropertySet(property));
}

void CPgCANBusSettings::UpdateGroup()
{
    Follow(nullptr);
}

KW_ACCEPTANCE CPgCANBusSettings::Follow(const CDbPropBase* written)
{
    const KW_ACCEPTANCE rate = NRules::FollowStandard(*m_pStandardBitRate, *m_pBitRate, written);
    NRules::SetLimits(*m_pDataBitRate, m_pBitRate->Get(), m_pDataBitRate->GetDeclaredMax());
    NRules::OfferStandards(*m_pStandardDataBitRate, *m_pDataBitRate);
    const KW_ACCEPTANCE dataRate =
        NRules::FollowStandard(*m_pStandardDataBitRate, *m_pDataBitRate, written);
    NRules::SetAvailable(
        {m_pProtocolStandard, m_pStandardDataBitRate, m_pDataBitRate, m_pDataSamplePoint},
        m_pStandard->Get() == eKW_CAN_STANDARD_CAN_FD);
    return std::max(rate, dataRate);
}

std::vector<CDbPropertyGroup::t_Twins> CPgCANBusSettings::GetTwins() const
{
    return {{m_pStandardBitRate, m_pBitRate}, {m_pStandardDataBitRate, m_pDataBitRate}};
}
