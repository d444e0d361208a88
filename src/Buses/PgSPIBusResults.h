// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/BusResultRules.h"
#include "Buses/PgSPIBusResultsBase.h"

/** Decoded frames; the table of the bus follows their coming and going. */
class CPgSPIBusResults
    : public NRules::CBusResults<CPgSPIBusResultsBase, NNames::SPIBusResults::SPIBusFrame>
{
};
