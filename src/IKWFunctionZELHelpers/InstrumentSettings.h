// SPDX-License-Identifier: MIT
#pragma once

#include "KWEnumerationsMeter.h"
#include "KWEnumerationsUnits.h"

#include <optional>

/**
 * The settings of the instrument that the stateless calculations look up by themselves. Reads
 * only: none of them builds a tree, takes part in keeping one alive, or reports. Nothing is
 * answered while no tree is alive. Callable from any thread.
 */
namespace NInstrumentSettings
{
/** What a fresh tree has, and what calculations assume while none is alive. */
constexpr KW_ZEL_DMM_ADC_RATE kFreshDmmAdcRate = eKW_ZEL_DMM_ADC_RATE_1_MSPS;
constexpr KW_UNIT kFreshTemperatureUnit = eKW_UNIT_TEMPERATURE_DEG;

/** Sample rate selection of the meter's A/D converter. */
std::optional<KW_ZEL_DMM_ADC_RATE> DmmAdcRate();

/** Unit in which the meter shows temperatures. */
std::optional<KW_UNIT> TemperatureUnit();
} // namespace NInstrumentSettings
