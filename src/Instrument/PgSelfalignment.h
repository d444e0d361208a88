// SPDX-License-Identifier: MIT
#pragma once

#include "Instrument/PgSelfalignmentBase.h"

/** Self-alignment: a new one begins without results of its steps, an aborted one keeps the former
    data. */
class CPgSelfalignment : public CPgSelfalignmentBase
{
public:
    t_Couplings Rules() const override;

private:
    void Begin();
    void ForgetSteps();
    void AbortRunning();
};
