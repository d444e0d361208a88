// SPDX-License-Identifier: MIT
#pragma once

#include "Meter/PgCounterBase.h"

/** The two counters. Levels stay inside the range of the input that they are compared with, which
    is known here. */
class CPgCounter : public CPgCounterBase
{
public:
    KW_ACCEPTANCE OnFunction(const CDbFunction* function) override;
    void UpdateGroup() override;
    void OnTreeCreated() override;
};
