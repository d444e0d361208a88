// SPDX-License-Identifier: MIT
#pragma once

#include "BusRules.h"
#include "PgLINBusResultsBase.h"

/** Decoded frames; the table of the bus follows their coming and going. */
class CPgLINBusResults : public NRules::CBusResults<CPgLINBusResultsBase>
{
};
