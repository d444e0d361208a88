// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/BusResultRules.h"
#include "Buses/PgLINBusResultsBase.h"

/** Decoded frames; the table of the bus follows their coming and going. */
class CPgLINBusResults
    : public NRules::CBusResults<CPgLINBusResultsBase, NNames::LINBusResults::LINBusFrame>
{
};
