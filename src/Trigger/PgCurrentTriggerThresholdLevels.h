// SPDX-License-Identifier: MIT
#pragma once

#include "Trigger/PgCurrentTriggerThresholdLevelsBase.h"

enum KW_ZEL_CHANNEL : INT32;

/** Levels at which the comparators stand for the present trigger. */
class CPgCurrentTriggerThresholdLevels : public CPgCurrentTriggerThresholdLevelsBase
{
public:
    void UpdateGroup() override;
    void OnTreeCreated() override;

private:
    void UpdateHysteresis(KW_ZEL_CHANNEL source);
};
