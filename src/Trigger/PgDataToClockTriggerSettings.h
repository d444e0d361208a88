// SPDX-License-Identifier: MIT
#pragma once

#include "Trigger/PgDataToClockTriggerSettingsBase.h"

/** Data that a clock takes over: clock and data are different inputs that are on. */
class CPgDataToClockTriggerSettings : public CPgDataToClockTriggerSettingsBase
{
public:
    t_Couplings Rules() const override;

private:
    void OfferSources();
    void OfferData();
};
