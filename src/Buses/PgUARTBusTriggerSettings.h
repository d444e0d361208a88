// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/BusRules.h"
#include "Buses/PgUARTBusTriggerSettingsBase.h"

/** UART trigger: it watches a line of the bus, and its pattern has as many words as the pattern
    length says. */
class CPgUARTBusTriggerSettings : public NRules::CBusTrigger<CPgUARTBusTriggerSettingsBase>
{
public:
    t_Couplings Rules() const override;
    NRules::t_PatternSize DataSize() const override;

private:
    void LimitPatternLength();
    void OfferLines();
    /** Data bits of a word of the bus. */
    INT32 WordLength() const;
};
