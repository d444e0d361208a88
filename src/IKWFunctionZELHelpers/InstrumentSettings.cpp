// SPDX-License-Identifier: MIT
#include "InstrumentSettings.h"

#include "Meter/PgMeter.h"
#include "Root/PgZEL.h"

std::optional<KW_ZEL_DMM_ADC_RATE> NInstrumentSettings::DmmAdcRate()
{
    if (const auto root = KW_PeekZELRoot())
    {
        return root->GetPgMeter()->GetPrAdcRate()->Get();
    }
    return std::nullopt;
}

std::optional<KW_UNIT> NInstrumentSettings::TemperatureUnit()
{
    if (const auto root = KW_PeekZELRoot())
    {
        return root->GetPgMeter()->GetPrTemperatureUnit()->Get();
    }
    return std::nullopt;
}
