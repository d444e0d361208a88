// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/PgLINBusFrame.h"
#include "Buses/PgLINBusResultsBase.h"

/** Decoded frames; the table of the bus follows their coming and going, their labels the label
    list. */
class CPgLINBusResults
    : public NRules::CLabelledResults<CPgLINBusResultsBase, CPgLINBusFrame, NRules::kLinLabels,
                                      NNames::LINBusResults::LINBusFrame>
{
};
