// SPDX-License-Identifier: MIT
#pragma once

#include "Root/PgSMScopeBase.h"
#include "Root/RunStopMachine.h"

/** State machine of the oscilloscope: a single run begins with all its acquisitions left, any other
    state has none left. */
class CPgSMScope : public CRunStopMachine<CPgSMScopeBase>
{
public:
    t_Couplings Rules() const override;

private:
    void CountDown();
};
