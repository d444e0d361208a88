// SPDX-License-Identifier: MIT
#pragma once

#include "Rules/LevelRules.h"
#include "Trigger/PgExternalTriggerLevelBase.h"

/** Level of the external trigger, within what the attenuated input takes. */
class CPgExternalTriggerLevel : public NRules::CSelectedLevel<CPgExternalTriggerLevelBase>
{
public:
    t_Couplings Rules() const override;

private:
    void LimitLevel();
};
