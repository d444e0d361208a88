// SPDX-License-Identifier: MIT
#pragma once

#include "Trigger/PgPatternTriggerSettingsBase.h"

/** A combination of states. */
class CPgPatternTriggerSettings : public CPgPatternTriggerSettingsBase
{
public:
    t_Couplings Rules() const override;

private:
    void ClearStates();
};
