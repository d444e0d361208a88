// SPDX-License-Identifier: MIT
#pragma once

#include "Trigger/PgCurrentTriggerThresholdLevelsBase.h"

enum KW_ZEL_CHANNEL : INT32;

/** Levels at which the comparators stand for the present trigger. */
class CPgCurrentTriggerThresholdLevels : public CPgCurrentTriggerThresholdLevelsBase
{
public:
    t_Couplings Rules() const override;

private:
    void UpdateLevels();
    void UpdateHysteresis(KW_ZEL_CHANNEL source);
};
