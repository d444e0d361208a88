// SPDX-License-Identifier: MIT
#include "IKWFunctionZELHelpers/ApplicationDefinitions.h"

#include "KWEnumerationsChannels.h"
#include "KWEnumerationsTrigger.h"

namespace NApplicationDefinitions
{
bool IsAnalogChannel(KW_ZEL_CHANNEL channel)
{
    return channel >= eKW_ZEL_CHANNEL_C1 && channel <= eKW_ZEL_CHANNEL_C4;
}

bool IsDigitalChannel(KW_ZEL_CHANNEL channel)
{
    return channel >= eKW_ZEL_CHANNEL_D0 && channel <= eKW_ZEL_CHANNEL_D7;
}

bool IsSerialBusChannel(KW_ZEL_CHANNEL channel)
{
    return channel == eKW_ZEL_CHANNEL_S1;
}

bool IsHardwareInputChannel(KW_ZEL_CHANNEL channel)
{
    return IsAnalogChannel(channel) || IsDigitalChannel(channel);
}

bool IsAcquisitionChannel(KW_ZEL_CHANNEL channel)
{
    return IsHardwareInputChannel(channel) || IsSerialBusChannel(channel);
}

KW_ZEL_ANALOG_CHANNEL MapApplicationChannelToAnalogChannel(KW_ZEL_CHANNEL channel)
{
    return static_cast<KW_ZEL_ANALOG_CHANNEL>(channel);
}

KW_ZEL_CHANNEL MapAnalogChannelToApplicationChannel(KW_ZEL_ANALOG_CHANNEL channel)
{
    return static_cast<KW_ZEL_CHANNEL>(channel);
}

bool IsAnalogTrigger(KW_ZEL_TRIGGER_TYPE type)
{
    return type == eKW_ZEL_TRIGGER_TYPE_RUNT || type == eKW_ZEL_TRIGGER_TYPE_SLEWRATE ||
           type == eKW_ZEL_TRIGGER_TYPE_WINDOW;
}

bool IsSerialBusTrigger(KW_ZEL_TRIGGER_TYPE type)
{
    return type == eKW_ZEL_TRIGGER_TYPE_VIDEO || type == eKW_ZEL_TRIGGER_TYPE_PROTOCOL;
}

bool IsLogicTrigger(KW_ZEL_TRIGGER_TYPE type)
{
    switch (type)
    {
    case eKW_ZEL_TRIGGER_TYPE_PATTERN:
    case eKW_ZEL_TRIGGER_TYPE_STATE:
    case eKW_ZEL_TRIGGER_TYPE_DATA_TO_CLOCK:
    case eKW_ZEL_TRIGGER_TYPE_SERIAL_PATTERN:
    case eKW_ZEL_TRIGGER_TYPE_TIMEOUT:
        return true;
    default:
        return IsSerialBusTrigger(type);
    }
}

bool RequiresLTG(KW_ZEL_TRIGGER_TYPE type, KW_ZEL_CHANNEL channel)
{
    return IsLogicTrigger(type) || IsDigitalChannel(channel);
}
} // namespace NApplicationDefinitions
