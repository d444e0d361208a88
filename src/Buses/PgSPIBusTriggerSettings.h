// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/BusRules.h"
#include "Buses/PgSPIBusTriggerSettingsBase.h"

/** SPI trigger: the pattern consists of whole words of the bus. */
class CPgSPIBusTriggerSettings : public NRules::CBusTrigger<CPgSPIBusTriggerSettingsBase>
{
public:
    void OnTreeCreated() override;
    NRules::t_PatternSize DataSize() const override;
};
