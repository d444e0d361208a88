// SPDX-License-Identifier: MIT
#pragma once

#include "KWEnumerationsChannels.h"
#include "KWEnumerationsTrigger.h"

/**
 * What kind of source or trigger a value is. Plain functions of their arguments, callable from any
 * thread; nothing is reported.
 */
namespace NApplicationDefinitions
{
/** C1 to C4. */
KW_EXPORT bool IsAnalogChannel(KW_ZEL_CHANNEL channel);
/** D0 to D7. */
KW_EXPORT bool IsDigitalChannel(KW_ZEL_CHANNEL channel);
/** S1. */
KW_EXPORT bool IsSerialBusChannel(KW_ZEL_CHANNEL channel);
/** Analog or digital. */
KW_EXPORT bool IsHardwareInputChannel(KW_ZEL_CHANNEL channel);
/** Hardware input or serial bus: everything that an acquisition delivers. */
KW_EXPORT bool IsAcquisitionChannel(KW_ZEL_CHANNEL channel);

/** The analog channels have the same numbers in both types: any value passes unchanged, without
    a range check. */
///@{
KW_EXPORT KW_ZEL_ANALOG_CHANNEL MapApplicationChannelToAnalogChannel(KW_ZEL_CHANNEL channel);
KW_EXPORT KW_ZEL_CHANNEL MapAnalogChannelToApplicationChannel(KW_ZEL_ANALOG_CHANNEL channel);
///@}

/** Runt, Slew Rate and Window: the trigger compares with two analog levels. */
KW_EXPORT bool IsAnalogTrigger(KW_ZEL_TRIGGER_TYPE type);
/** Bus, and Video/TV with it on purpose: both are decoded from a serial stream. */
KW_EXPORT bool IsSerialBusTrigger(KW_ZEL_TRIGGER_TYPE type);
/** Pattern, State, Data2Clk, Serial Pattern, Timeout and every serial-bus trigger. */
KW_EXPORT bool IsLogicTrigger(KW_ZEL_TRIGGER_TYPE type);
/** Whether the logic trigger unit takes part: a logic trigger, or any trigger on a digital
    channel. */
KW_EXPORT bool RequiresLTG(KW_ZEL_TRIGGER_TYPE type, KW_ZEL_CHANNEL channel);
} // namespace NApplicationDefinitions
