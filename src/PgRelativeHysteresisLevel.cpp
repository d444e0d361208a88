// SPDX-License-Identifier: MIT
#include "PgRelativeHysteresisLevel.h"

#include "PgChannel.h"
#include "RuleHelpers.h"
#include "VerticalHardware.h"

#include <cmath>

using namespace NVerticalHardware;

KW_ACCEPTANCE CPgRelativeHysteresisLevel::OnPropertySet(const CDbPropBase* property)
{
    if (property == m_pUserHysteresis)
    {
        KW_CHECKED(m_pAutoHysteresis->DbSet(eKW_ONOFF_OFF));
    }
    UpdateGroup();
    return CPgRelativeHysteresisLevelBase::OnPropertySet(property);
}

void CPgRelativeHysteresisLevel::UpdateGroup()
{
    if (m_pAutoHysteresis->Get() == eKW_ONOFF_OFF)
    {
        KW_CHECKED(m_pHysteresis->DbSet(m_pUserHysteresis->Get()));
        return;
    }
    const double noise = kNoiseHysteresis * std::sqrt(Bandwidth() / kFullBandwidth);
    KW_CHECKED(
        m_pHysteresis->DbSet(KWMath::Bound(m_pHysteresis->GetMin(), noise, kNoiseHysteresis)));
}

double CPgRelativeHysteresisLevel::Bandwidth() const
{
    const auto* const channel = NRules::Above<CPgChannel>(*this);
    if (channel == nullptr)
    {
        return kFullBandwidth;
    }
    const auto* const limit = channel->GetPrBandwidthLimit();
    const double filter = limit->GetNameInfo().GetNumber(limit->GetAsInt()).value_or(0.0);
    return filter > 0.0 ? filter : kFullBandwidth;
}
