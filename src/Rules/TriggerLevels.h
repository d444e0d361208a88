// SPDX-License-Identifier: MIT
#pragma once

#include "CommonDatabase/Couplings/DbRules.h"
#include "Names/Channel.h"
#include "Names/EdgeTriggerLevel.h"
#include "Names/HysteresisLevel.h"
#include "Names/Levels.h"
#include "Names/RuntTriggerLevelRange.h"
#include "Names/SlewRateTriggerLevelRange.h"
#include "Names/Trigger.h"
#include "Names/Vertical.h"
#include "Names/WindowTriggerLevelRange.h"
#include "Names/ZEL.h"

enum KW_ZEL_CHANNEL : INT32;
enum KW_ZEL_TRIGGER_TYPE : INT32;

/** The levels of the channels, as the trigger needs them. Under the tree's lock. */
namespace NTriggerLevels
{
struct t_Levels
{
    UINT32 count; ///< 0: the trigger type looks at no level of an analog channel
    double lower;
    double upper; ///< the same as the lower one where there is only one
};

/** Levels in use for a trigger type at a source, in the tree that `group` is part of. */
t_Levels InUse(const CDbPropertyGroup& group, KW_ZEL_TRIGGER_TYPE type, KW_ZEL_CHANNEL source);

/** The trigger looks at another channel, or in another way. */
inline constexpr auto kTrigger = NNames::Changed(NNames::ZEL::Trigger / NNames::Trigger::Type,
                                                 NNames::ZEL::Trigger / NNames::Trigger::Source);

/** The levels of all channels, from which the ways to single ones go on. */
inline constexpr auto kEachLevels =
    NNames::ZEL::Vertical / NNames::Vertical::Channel / NNames::each / NNames::Channel::Levels;

/** A level of any channel moved. Followed by a row of its own: where a write moves levels and
    switches a channel off, the trigger's source gives way after the levels have been looked at. */
inline constexpr auto kLevels = NNames::Changed(
    kEachLevels / NNames::Levels::EdgeTriggerLevel / 0 / NNames::EdgeTriggerLevel::Level,
    kEachLevels / NNames::Levels::SlewRateTriggerLevelRange / 0 /
        NNames::SlewRateTriggerLevelRange::LowerLevel,
    kEachLevels / NNames::Levels::SlewRateTriggerLevelRange / 0 /
        NNames::SlewRateTriggerLevelRange::UpperLevel,
    kEachLevels / NNames::Levels::RuntTriggerLevelRange / 0 /
        NNames::RuntTriggerLevelRange::LowerLevel,
    kEachLevels / NNames::Levels::RuntTriggerLevelRange / 0 /
        NNames::RuntTriggerLevelRange::UpperLevel,
    kEachLevels / NNames::Levels::WindowTriggerLevelRange / 0 /
        NNames::WindowTriggerLevelRange::LowerLevel,
    kEachLevels / NNames::Levels::WindowTriggerLevelRange / 0 /
        NNames::WindowTriggerLevelRange::UpperLevel,
    kEachLevels / NNames::Levels::HysteresisLevel / 0 / NNames::HysteresisLevel::Hysteresis);
} // namespace NTriggerLevels
