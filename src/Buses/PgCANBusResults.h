// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/BusResultRules.h"
#include "Buses/PgCANBusResultsBase.h"

/** Decoded frames; the table of the bus follows their coming and going. */
class CPgCANBusResults
    : public NRules::CBusResults<CPgCANBusResultsBase, NNames::CANBusResults::CANBusFrame>
{
};
