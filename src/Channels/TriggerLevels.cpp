// SPDX-License-Identifier: MIT
#include "Channels/TriggerLevels.h"

#include "Channels/PgChannel.h"
#include "Channels/PgEdgeTriggerLevel.h"
#include "Channels/PgHysteresisLevel.h"
#include "Channels/PgLevels.h"
#include "Channels/PgRuntTriggerLevelRange.h"
#include "Channels/PgSlewRateTriggerLevelRange.h"
#include "Channels/PgVertical.h"
#include "Channels/PgWindowTriggerLevelRange.h"
#include "Channels/PgaChannel.h"
#include "Channels/PgaEdgeTriggerLevel.h"
#include "Channels/PgaHysteresisLevel.h"
#include "Channels/PgaRuntTriggerLevelRange.h"
#include "Channels/PgaSlewRateTriggerLevelRange.h"
#include "Channels/PgaWindowTriggerLevelRange.h"
#include "CommonDatabase/Nodes/DbPgRoot.h"
#include "IKWFunctionZELHelpers/ApplicationDefinitions.h"
#include "KWEnumerationsChannels.h"
#include "KWEnumerationsTrigger.h"
#include "Root/PgZEL.h"
#include "Trigger/PgTrigger.h"

namespace
{
template <typename TRange>
NTriggerLevels::t_Levels Both(const TRange& range)
{
    return {2, range.GetPrLowerLevel()->Get(), range.GetPrUpperLevel()->Get()};
}

CPgLevels& LevelsOf(const CPgZEL& root, INT32 channel)
{
    return *root.GetPgVertical()->GetPgChannel()->ItemDirect(channel)->GetPgLevels();
}
} // namespace

NTriggerLevels::t_Levels NTriggerLevels::InUse(const CPgZEL& root, KW_ZEL_TRIGGER_TYPE type,
                                               KW_ZEL_CHANNEL source)
{
    if (!NApplicationDefinitions::IsAnalogChannel(source))
    {
        return {0, 0.0, 0.0};
    }
    const CPgLevels& levels = LevelsOf(root, source);
    switch (type)
    {
    case eKW_ZEL_TRIGGER_TYPE_EDGE:
    case eKW_ZEL_TRIGGER_TYPE_GLITCH:
    case eKW_ZEL_TRIGGER_TYPE_WIDTH:
    case eKW_ZEL_TRIGGER_TYPE_INTERVAL:
    case eKW_ZEL_TRIGGER_TYPE_TIMEOUT:
    {
        const double level = levels.GetPgEdgeTriggerLevel()->ItemDirect(0)->GetPrLevel()->Get();
        return {1, level, level};
    }
    case eKW_ZEL_TRIGGER_TYPE_SLEWRATE:
        return Both(*levels.GetPgSlewRateTriggerLevelRange()->ItemDirect(0));
    case eKW_ZEL_TRIGGER_TYPE_RUNT:
        return Both(*levels.GetPgRuntTriggerLevelRange()->ItemDirect(0));
    case eKW_ZEL_TRIGGER_TYPE_WINDOW:
        return Both(*levels.GetPgWindowTriggerLevelRange()->ItemDirect(0));
    default:
        return {0, 0.0, 0.0};
    }
}

void NTriggerLevels::AddDependency(CDbPropertyGroup& owner, const std::function<void()>& update,
                                   const QString& name)
{
    CPgZEL* const root = CPgZEL::Of(owner);
    if (root == nullptr)
    {
        return;
    }
    root->GetDependencies().Add(
        owner, {root->GetPgTrigger()->GetPrType(), root->GetPgTrigger()->GetPrSource()}, update,
        name);
    for (INT32 channel = 0; channel < root->GetPgVertical()->GetPgChannel()->GetCount(); ++channel)
    {
        const CPgLevels& levels = LevelsOf(*root, channel);
        const auto* const slewRate = levels.GetPgSlewRateTriggerLevelRange()->ItemDirect(0);
        const auto* const runt = levels.GetPgRuntTriggerLevelRange()->ItemDirect(0);
        const auto* const window = levels.GetPgWindowTriggerLevelRange()->ItemDirect(0);
        root->GetDependencies().Add(
            owner,
            {levels.GetPgEdgeTriggerLevel()->ItemDirect(0)->GetPrLevel(),
             slewRate->GetPrLowerLevel(), slewRate->GetPrUpperLevel(), runt->GetPrLowerLevel(),
             runt->GetPrUpperLevel(), window->GetPrLowerLevel(), window->GetPrUpperLevel(),
             levels.GetPgHysteresisLevel()->ItemDirect(0)->GetPrHysteresis()},
            update, name);
    }
}
