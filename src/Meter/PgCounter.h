// SPDX-License-Identifier: MIT
#pragma once

#include "Meter/PgCounterBase.h"

/** The two counters. Levels stay inside the range of the input that they are compared with, which
    is known here. */
class CPgCounter : public CPgCounterBase
{
public:
    t_Couplings Rules() const override;

private:
    void ResetStatistics();
    void FollowInputs();
};
