// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/BusResultRules.h"
#include "Buses/PgUARTBusResultsBase.h"

/** Decoded frames; the table of the bus follows their coming and going. */
class CPgUARTBusResults
    : public NRules::CBusResults<CPgUARTBusResultsBase, NNames::UARTBusResults::UARTBusDataWord,
                                 NNames::UARTBusResults::UARTBusFrame>
{
};
