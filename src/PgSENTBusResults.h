// SPDX-License-Identifier: MIT
#pragma once

#include "BusRules.h"
#include "PgSENTBusResultsBase.h"

/** Decoded frames; the table of the bus follows their coming and going. */
class CPgSENTBusResults : public NRules::CBusResults<CPgSENTBusResultsBase>
{
};
