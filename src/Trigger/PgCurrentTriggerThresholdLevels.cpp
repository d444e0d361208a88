// SPDX-License-Identifier: MIT
#include "Trigger/PgCurrentTriggerThresholdLevels.h"

#include "Channels/PgChannel.h"
#include "Channels/PgHysteresisLevel.h"
#include "Channels/PgLevels.h"
#include "Channels/PgVertical.h"
#include "Channels/PgaChannel.h"
#include "Channels/PgaHysteresisLevel.h"
#include "Channels/TriggerLevels.h"
#include "KWEnumerationsChannels.h"
#include "KWEnumerationsUnits.h"
#include "Root/PgZEL.h"
#include "Rules/ChannelRules.h"
#include "Trigger/PgTrigger.h"

#include <cmath>

void CPgCurrentTriggerThresholdLevels::UpdateGroup()
{
    const CPgZEL* const root = CPgZEL::Of(*this);
    if (root == nullptr)
    {
        return;
    }
    const KW_ZEL_CHANNEL source = root->GetPgTrigger()->GetPrSource()->Get();
    const auto levels =
        NTriggerLevels::InUse(*root, root->GetPgTrigger()->GetPrType()->Get(), source);
    KW_CHECKED(m_pNumberOfLevels->DbSet(levels.count));
    KW_CHECKED(m_pSource->DbSet(levels.count > 0 ? source : eKW_ZEL_CHANNEL_NONE));
    const KW_UNIT unit = NRules::UnitOf(*this, source);
    for (const auto& [level, value] :
         {std::pair{m_pLowerLevel, levels.lower}, {m_pUpperLevel, levels.upper}})
    {
        KW_CHECKED(level->SetUnit(levels.count > 0 ? unit : eKW_UNIT_LEVEL_V));
        NRules::WriteResult(*level, levels.count > 0 ? value : NAN);
    }
    UpdateHysteresis(levels.count > 0 ? source : eKW_ZEL_CHANNEL_NONE);
}

void CPgCurrentTriggerThresholdLevels::OnTreeCreated()
{
    CPgCurrentTriggerThresholdLevelsBase::OnTreeCreated();
    NTriggerLevels::AddDependency(
        *this, [this] { UpdateGroup(); },
        QStringLiteral("CurrentTriggerThresholdLevels/UpperLevel"));
}

void CPgCurrentTriggerThresholdLevels::UpdateHysteresis(KW_ZEL_CHANNEL source)
{
    if (source == eKW_ZEL_CHANNEL_NONE)
    {
        KW_CHECKED(m_pHysteresis->SetValidity(eKW_VALIDITY_INVALID));
        return;
    }
    const CPgChannel* const channel =
        CPgZEL::Of(*this)->GetPgVertical()->GetPgChannel()->ItemDirect(source);
    const CPgHysteresisLevel* const level =
        channel->GetPgLevels()->GetPgHysteresisLevel()->ItemDirect(0);
    KW_CHECKED(m_pHysteresis->SetUnit(channel->GetPrProbeUnit()->Get()));
    KW_CHECKED(m_pHysteresis->DbSet(level->GetPrHysteresis()->Get()));
}
