// SPDX-License-Identifier: MIT
#include "Buses/PgUARTBusSettings.h"

#include "Buses/BusRules.h"
#include "KWEnumerationsSerialBus.h"

KW_ACCEPTANCE CPgUARTBusSettings::OnPropertySet(const CDbPropBase* property)
{
    return std::max(Follow(property), CPgUARTBusSettingsBase::OnPropertySet(property));
}

void CPgUARTBusSettings::UpdateGroup()
{
    Follow(nullptr);
}

INT32 CPgUARTBusSettings::WordLength() const
{
    constexpr double kUsual = 8.0;
    const INT32 value = m_pDataLength->GetAsInt();
    return static_cast<INT32>(m_pDataLength->GetNameInfo().GetNumber(value).value_or(kUsual));
}

KW_ACCEPTANCE CPgUARTBusSettings::Follow(const CDbPropBase* written)
{
    const KW_FRAME_MODE mode = m_pFrameMode->Get();
    NRules::SetAvailable({m_pIdleTime}, mode == eKW_FRAME_MODE_TIMEOUT);
    NRules::SetAvailable({m_pEndOfFramePattern}, mode == eKW_FRAME_MODE_PATTERN);
    NRules::FitPattern(*m_pEndOfFramePattern, NRules::ExactPattern(WordLength()), QLatin1Char('0'));
    return NRules::FollowStandard(*m_pStandardBitRate, *m_pBitRate, written);
}

std::vector<CDbPropertyGroup::t_Twins> CPgUARTBusSettings::GetTwins() const
{
    return {{m_pStandardBitRate, m_pBitRate}};
}
