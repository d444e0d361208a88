// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/PgCANBusFrame.h"
#include "Buses/PgCANBusResultsBase.h"

/** Decoded frames; the table of the bus follows their coming and going, their labels the label
    list. */
class CPgCANBusResults
    : public NRules::CLabelledResults<CPgCANBusResultsBase, CPgCANBusFrame, NRules::kCanLabels,
                                      NNames::CANBusResults::CANBusFrame>
{
};
