// SPDX-License-Identifier: MIT
#include "Channels/PgHysteresisLevel.h"

#include "KWEnumerationsTrigger.h"
#include "Rules/ChannelRules.h"

#include <array>

namespace
{
/** Divisions for each KW_ZEL_TRIGGER_NOISE_REJECT. */
constexpr std::array<double, 4> kNoiseRejectDivisions{0.05, 0.2, 0.5, 1.0};
static_assert(kNoiseRejectDivisions.size() == eKW_ZEL_TRIGGER_NOISE_REJECT_HIGH + 1);
} // namespace

void CPgHysteresisLevel::FollowScreen(const NRules::t_Screen& screen)
{
    const auto size = static_cast<std::size_t>(m_pNoiseReject->GetAsInt());
    KW_CHECKED(m_pHysteresis->SetUnit(screen.unit));
    KW_CHECKED(m_pHysteresis->DbSet(kNoiseRejectDivisions[size] * screen.division));
}
