// SPDX-License-Identifier: MIT
#pragma once

#include "Trigger/PgSerialPatternTriggerSettingsBase.h"

/** A sequence of bits that a clock takes over: clock and data are different inputs that are on. */
class CPgSerialPatternTriggerSettings : public CPgSerialPatternTriggerSettingsBase
{
public:
    KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override;
    KW_ACCEPTANCE OnFunction(const CDbFunction* function) override;
    void UpdateGroup() override;
    void OnTreeCreated() override;
};
