// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/BusResultRules.h"
#include "Buses/PgSENTBusResultsBase.h"

/** Decoded frames; the table of the bus follows their coming and going. */
class CPgSENTBusResults
    : public NRules::CBusResults<CPgSENTBusResultsBase, NNames::SENTBusResults::SENTBusFrame>
{
};
