// SPDX-License-Identifier: MIT
#include "Channels/PgLogicThresholdSettings.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsAcquisition.h"
#include "Names/LogicThresholdSettings.h"
#include "Rules/ChannelRules.h"
#include "Rules/LevelRules.h"

using namespace NNames;

t_Couplings CPgLogicThresholdSettings::Rules() const
{
    using T = CPgLogicThresholdSettings;
    static constexpr auto rows =
        Table<Names>(On(Names::UserThreshold) >> Do<&T::SelectUser>,
                     On(Names::UserThreshold, Names::ThresholdType) >> Derive<&T::UpdateThreshold>);
    return rows;
}

void CPgLogicThresholdSettings::SelectUser()
{
    KW_CHECKED(m_pThresholdType->DbSet(eKW_LOGIC_THRESHOLD_TYPE_USER));
}

void CPgLogicThresholdSettings::UpdateThreshold()
{
    const auto family = m_pThresholdType->GetNameInfo().GetNumber(m_pThresholdType->GetAsInt());
    KW_CHECKED(m_pThreshold->DbSet(family.value_or(m_pUserThreshold->Get())));
}

void CPgLogicThresholdSettings::FollowScreen(const NRules::t_Screen& screen)
{
    NRules::OfferFixedLevels(*m_pThresholdType, screen.unit, eKW_LOGIC_THRESHOLD_TYPE_USER);
    NRules::PutOnScreen(*m_pUserThreshold, screen);
    KW_CHECKED(m_pThreshold->SetUnit(screen.unit));
    UpdateThreshold();
}

void CPgLogicThresholdSettings::Rescale(double ratio)
{
    NRules::Rescale(*m_pUserThreshold, ratio);
}

void CPgLogicThresholdSettings::CopyFrom(const CPgLogicThresholdSettings& other)
{
    KW_CHECKED(m_pUserThreshold->DbSet(other.m_pUserThreshold->Get()));
    KW_CHECKED(m_pThresholdType->DbSet(other.m_pThresholdType->Get()));
    KW_CHECKED(m_pHysteresis->DbSet(other.m_pHysteresis->Get()));
    UpdateThreshold();
}
