// SPDX-License-Identifier: MIT
#pragma once

#include "Trigger/PgTriggerHoldOffBase.h"

/** Pause after a trigger event: the limits of a random one are in order. */
class CPgTriggerHoldOff : public CPgTriggerHoldOffBase
{
public:
    KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override;
};
