// SPDX-License-Identifier: MIT
#pragma once

#include "Timebase/PgSampleCounterBase.h"

/** How far the acquisition has come; a client can begin the counts anew. */
class CPgSampleCounter : public CPgSampleCounterBase
{
public:
    t_Couplings Rules() const override;

private:
    void ResetCounters();
};
