// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/BusRules.h"
#include "Buses/PgI2CBusResultsBase.h"

/** Decoded frames; the table of the bus follows their coming and going. */
class CPgI2CBusResults : public NRules::CBusResults<CPgI2CBusResultsBase>
{
};
