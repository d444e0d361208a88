// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/BusRules.h"
#include "Buses/PgI2CBusTriggerSettingsBase.h"

/** I²C trigger: the address type gives the address its bits. */
class CPgI2CBusTriggerSettings : public NRules::CBusTrigger<CPgI2CBusTriggerSettingsBase>
{
public:
    NRules::t_PatternSize DataSize() const override { return NRules::PatternOfUnits(8); }
    NRules::t_PatternSize IdentifierSize() const override;
};
