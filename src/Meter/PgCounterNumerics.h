// SPDX-License-Identifier: MIT
#pragma once

#include "Meter/PgCounterNumericsBase.h"

/** Reading of a counter, and its distance from the reference. */
class CPgCounterNumerics : public CPgCounterNumericsBase
{
public:
    KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override;
    void OnPropertyDbSet(const CDbPropBase* property) override;
    /** SetReference: eKW_ACC_NOTHING_TO_ACT_ON without a valid reading. */
    KW_ACCEPTANCE OnFunction(const CDbFunction* function) override;
    void UpdateGroup() override;

    void DropReading();
};
