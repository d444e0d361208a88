// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/PgSENTBusFrame.h"
#include "Buses/PgSENTBusResultsBase.h"

/** Decoded frames; the table of the bus follows their coming and going, their labels the label
    list. */
class CPgSENTBusResults
    : public NRules::CLabelledResults<CPgSENTBusResultsBase, CPgSENTBusFrame, NRules::kSentLabels,
                                      NNames::SENTBusResults::SENTBusFrame>
{
};
