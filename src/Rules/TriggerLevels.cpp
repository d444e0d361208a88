// SPDX-License-Identifier: MIT
#include "Rules/TriggerLevels.h"

#include "CommonDatabase/Nodes/DbPropertyGroup.h"
#include "CommonDatabase/Properties/DbPropNum.h"
#include "IKWFunctionZELHelpers/ApplicationDefinitions.h"
#include "KWEnumerationsChannels.h"
#include "KWEnumerationsTrigger.h"

using namespace NNames;

namespace
{
template <typename TRange>
NTriggerLevels::t_Levels Both(const CDbPropertyGroup& group, const t_Way<ZEL, TRange>& range)
{
    return {2, group.At(range / TRange::LowerLevel)->Get(),
            group.At(range / TRange::UpperLevel)->Get()};
}
} // namespace

NTriggerLevels::t_Levels NTriggerLevels::InUse(const CDbPropertyGroup& group,
                                               KW_ZEL_TRIGGER_TYPE type, KW_ZEL_CHANNEL source)
{
    if (!NApplicationDefinitions::IsAnalogChannel(source))
    {
        return {0, 0.0, 0.0};
    }
    const auto levels = ZEL::Vertical / Vertical::Channel / source / Channel::Levels;
    switch (type)
    {
    case eKW_ZEL_TRIGGER_TYPE_EDGE:
    case eKW_ZEL_TRIGGER_TYPE_GLITCH:
    case eKW_ZEL_TRIGGER_TYPE_WIDTH:
    case eKW_ZEL_TRIGGER_TYPE_INTERVAL:
    case eKW_ZEL_TRIGGER_TYPE_TIMEOUT:
    {
        const double level =
            group.At(levels / Levels::EdgeTriggerLevel / 0 / EdgeTriggerLevel::Level)->Get();
        return {1, level, level};
    }
    case eKW_ZEL_TRIGGER_TYPE_SLEWRATE:
        return Both(group, levels / Levels::SlewRateTriggerLevelRange / 0);
    case eKW_ZEL_TRIGGER_TYPE_RUNT:
        return Both(group, levels / Levels::RuntTriggerLevelRange / 0);
    case eKW_ZEL_TRIGGER_TYPE_WINDOW:
        return Both(group, levels / Levels::WindowTriggerLevelRange / 0);
    default:
        return {0, 0.0, 0.0};
    }
}
