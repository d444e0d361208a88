// SPDX-License-Identifier: MIT
#include "InstrumentSettings.h"

#include "CommonDatabase/Nodes/DbPgRoot.h"
#include "CommonDatabase/Properties/DbPropEnum.h"
#include "Names/Meter.h"
#include "Names/ZEL.h"
#include "Rules/PresentTree.h"

using namespace NNames;

std::optional<KW_ZEL_DMM_ADC_RATE> NInstrumentSettings::DmmAdcRate()
{
    if (const auto root = NPresentTree::Peek())
    {
        return root->At(ZEL::Meter / Meter::AdcRate)->Get();
    }
    return std::nullopt;
}

std::optional<KW_UNIT> NInstrumentSettings::TemperatureUnit()
{
    if (const auto root = NPresentTree::Peek())
    {
        return root->At(ZEL::Meter / Meter::TemperatureUnit)->Get();
    }
    return std::nullopt;
}
