// SPDX-License-Identifier: MIT
#pragma once

#include "Trigger/PgCurrentTriggerThresholdLevelsBase.h"

/** Levels at which the comparators stand for the present trigger. */
class CPgCurrentTriggerThresholdLevels : public CPgCurrentTriggerThresholdLevelsBase
{
public:
    void UpdateGroup() override;
    void OnTreeCreated() override;

private:
    void UpdateHysteresis(KW_ZEL_CHANNEL source);
};
