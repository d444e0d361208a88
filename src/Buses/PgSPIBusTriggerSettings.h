// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/BusRules.h"
#include "Buses/PgSPIBusTriggerSettingsBase.h"

/** SPI trigger: the pattern consists of whole words of the bus. */
class CPgSPIBusTriggerSettings : public NRules::CBusTrigger<CPgSPIBusTriggerSettingsBase>
{
public:
    t_Couplings Rules() const override;
    NRules::t_PatternSize DataSize() const override;
};
