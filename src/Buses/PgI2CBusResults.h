// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/PgI2CBusFrame.h"
#include "Buses/PgI2CBusResultsBase.h"

/** Decoded frames; the table of the bus follows their coming and going, their labels the label
    list. */
class CPgI2CBusResults
    : public NRules::CLabelledResults<CPgI2CBusResultsBase, CPgI2CBusFrame, NRules::kI2cLabels,
                                      NNames::I2CBusResults::I2CBusFrame>
{
};
