// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/BusResultRules.h"
#include "Buses/PgI2CBusResultsBase.h"

/** Decoded frames; the table of the bus follows their coming and going. */
class CPgI2CBusResults
    : public NRules::CBusResults<CPgI2CBusResultsBase, NNames::I2CBusResults::I2CBusFrame>
{
};
