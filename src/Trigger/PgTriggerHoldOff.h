// SPDX-License-Identifier: MIT
#pragma once

#include "Trigger/PgTriggerHoldOffBase.h"

/** Pause after a trigger event: the limits of a random one are in order. */
class CPgTriggerHoldOff : public CPgTriggerHoldOffBase
{
public:
    t_Couplings Rules() const override;

private:
    void OrderLimits(const CDbPropBase* written);
};
