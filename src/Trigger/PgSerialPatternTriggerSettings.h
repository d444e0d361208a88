// SPDX-License-Identifier: MIT
#pragma once

#include "Trigger/PgSerialPatternTriggerSettingsBase.h"

/** A sequence of bits that a clock takes over: clock and data are different inputs that are on. */
class CPgSerialPatternTriggerSettings : public CPgSerialPatternTriggerSettingsBase
{
public:
    t_Couplings Rules() const override;

private:
    void OfferSources();
    void ClearBits();
};
