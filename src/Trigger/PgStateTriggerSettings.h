// SPDX-License-Identifier: MIT
#pragma once

#include "Trigger/PgStateTriggerSettingsBase.h"

/** A combination of states at the edges of a clock, which is one of the inputs that are on. */
class CPgStateTriggerSettings : public CPgStateTriggerSettingsBase
{
public:
    t_Couplings Rules() const override;

private:
    void OfferClocks();
    void ClearStates();
};
