// SPDX-License-Identifier: MIT
#pragma once

#include "BusRules.h"
#include "PgCANBusResultsBase.h"

/** Decoded frames; the table of the bus follows their coming and going. */
class CPgCANBusResults : public NRules::CBusResults<CPgCANBusResultsBase>
{
};
