// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/BusRules.h"
#include "Buses/PgUARTBusResultsBase.h"

/** Decoded frames; the table of the bus follows their coming and going. */
class CPgUARTBusResults : public NRules::CBusResults<CPgUARTBusResultsBase>
{
};
