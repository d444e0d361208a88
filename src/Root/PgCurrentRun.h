// SPDX-License-Identifier: MIT
#pragma once

#include "Root/PgCurrentRunBase.h"

enum KW_ZEL_RUNSTOP_STATE : INT32;

/** The run of the state machine that the active mode uses: what is asked of it, and figures that
    begin anew with every run. */
class CPgCurrentRun : public CPgCurrentRunBase
{
public:
    t_Couplings Rules() const override;

private:
    void FollowStateMachine();
    /** What the user asks of the state machine of the active mode. */
    KW_ZEL_RUNSTOP_STATE Asked() const;
    void Begin();
};
