// SPDX-License-Identifier: MIT
#include "Buses/PgSPIBusSettings.h"

#include "Buses/BusRules.h"
#include "KWEnumerationsOnOff.h"
#include "KWEnumerationsSerialBus.h"
#include "Rules/ChannelRules.h"

KW_ACCEPTANCE CPgSPIBusSettings::OnPropertySet(const CDbPropBase* property)
{
    return std::max(Follow(property), CPgSPIBusSettingsBase::OnPropertySet(property));
}

void CPgSPIBusSettings::UpdateGroup()
{
    Follow(nullptr);
}

void CPgSPIBusSettings::OnTreeCreated()
{
    CPgSPIBusSettingsBase::OnTreeCreated();
    NRules::AddSourceDependency(
        *this, [this] { UpdateGroup(); }, QStringLiteral("SPIBusSettings/Sources"));
}

KW_ACCEPTANCE CPgSPIBusSettings::Follow(const CDbPropBase* written)
{
    const bool isSelected = m_pFrameMode->Get() == eKW_FRAME_MODE_SELECT;
    NRules::AssignLines({{m_pClockSource, true},
                         {m_pMosiSource, m_pMosiEnabled->Get() == eKW_ONOFF_ON},
                         {m_pMisoSource, m_pMisoEnabled->Get() == eKW_ONOFF_ON},
                         {m_pSelectSource, isSelected}},
                        written);
    NRules::SetAvailable({m_pSelectPolarity}, isSelected);
    NRules::SetAvailable({m_pIdleTime}, !isSelected);
    return NRules::FollowStandard(*m_pStandardWordLength, *m_pWordLength, written);
}

std::vector<CDbPropertyGroup::t_Twins> CPgSPIBusSettings::GetTwins() const
{
    return {{m_pStandardWordLength, m_pWordLength}};
}
