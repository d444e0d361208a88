// SPDX-License-Identifier: MIT
#pragma once

#include "Trigger/PgTriggerBase.h"

/** The trigger: its source is one of the inputs that are on. */
class CPgTrigger : public CPgTriggerBase
{
public:
    KW_ACCEPTANCE OnFunction(const CDbFunction* function) override;
    void UpdateGroup() override;
    void OnTreeCreated() override;
};
