// SPDX-License-Identifier: MIT
#include "InstrumentSettings.h"

__attribute__((weak)) std::optional<KW_ZEL_DMM_ADC_RATE> NInstrumentSettings::DmmAdcRate()
{
    return kFreshDmmAdcRate;
}

__attribute__((weak)) std::optional<KW_UNIT> NInstrumentSettings::TemperatureUnit()
{
    return kFreshTemperatureUnit;
}
