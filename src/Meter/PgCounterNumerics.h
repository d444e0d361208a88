// SPDX-License-Identifier: MIT
#pragma once

#include "Meter/PgCounterNumericsBase.h"

/** Reading of a counter, and its distance from the reference. SetReference answers
    eKW_ACC_NOTHING_TO_ACT_ON without a valid reading. */
class CPgCounterNumerics : public CPgCounterNumericsBase
{
public:
    t_Couplings Rules() const override;

    void DropReading();

private:
    KW_ACCEPTANCE ReferenceFromReading();
    void CompareWithReference();
};
