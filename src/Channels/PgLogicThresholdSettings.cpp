// SPDX-License-Identifier: MIT
#include "Channels/PgLogicThresholdSettings.h"

#include "Channels/PgLogic.h"
#include "KWEnumerationsAcquisition.h"
#include "Rules/ChannelRules.h"

KW_ACCEPTANCE CPgLogicThresholdSettings::OnPropertySet(const CDbPropBase* property)
{
    if (property == m_pUserThreshold)
    {
        KW_CHECKED(m_pThresholdType->DbSet(eKW_LOGIC_THRESHOLD_TYPE_USER));
    }
    UpdateGroup();
    if (auto* const logic = NRules::Above<CPgLogic>(*this))
    {
        logic->OnThreshold(*this);
    }
    return CPgLogicThresholdSettingsBase::OnPropertySet(property);
}

void CPgLogicThresholdSettings::UpdateGroup()
{
    const auto family = m_pThresholdType->GetNameInfo().GetNumber(m_pThresholdType->GetAsInt());
    KW_CHECKED(m_pThreshold->DbSet(KWMath::Bound(m_pUserThreshold->GetMin(),
                                                 family.value_or(m_pUserThreshold->Get()),
                                                 m_pUserThreshold->GetMax())));
}

void CPgLogicThresholdSettings::FollowScreen(const NRules::t_Screen& screen)
{
    NRules::PutOnScreen(*m_pUserThreshold, screen);
    NRules::PutOnScreen(*m_pThreshold, screen);
    UpdateGroup();
}

void CPgLogicThresholdSettings::CopyFrom(const CPgLogicThresholdSettings& other)
{
    KW_CHECKED(m_pUserThreshold->DbSet(other.m_pUserThreshold->Get()));
    KW_CHECKED(m_pThresholdType->DbSet(other.m_pThresholdType->Get()));
    KW_CHECKED(m_pHysteresis->DbSet(other.m_pHysteresis->Get()));
    UpdateGroup();
}
