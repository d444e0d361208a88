// SPDX-License-Identifier: MIT
#pragma once

#include "Trigger/PgPatternTriggerSettingsBase.h"

/** A combination of states. */
class CPgPatternTriggerSettings : public CPgPatternTriggerSettingsBase
{
public:
    KW_ACCEPTANCE OnFunction(const CDbFunction* function) override;
};
