// SPDX-License-Identifier: MIT
#pragma once

#include "Trigger/PgTriggerBase.h"

/** The trigger: its source is one of the inputs that are on. */
class CPgTrigger : public CPgTriggerBase
{
public:
    t_Couplings Rules() const override;

private:
    void OfferInputs();
    void ResetSettings();
};
