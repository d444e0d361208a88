// SPDX-License-Identifier: MIT
#pragma once

#include "Trigger/PgSlewRateTriggerSettingsBase.h"

/** The slew-rate trigger: slew rates are the distance of the source's levels by the time limits. */
class CPgSlewRateTriggerSettings : public CPgSlewRateTriggerSettingsBase
{
public:
    t_Couplings Rules() const override;

private:
    void UpdateSlewRates();
};
