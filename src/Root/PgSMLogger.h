// SPDX-License-Identifier: MIT
#pragma once

#include "Root/PgSMLoggerBase.h"
#include "Root/RunStopMachine.h"

/** State machine of the logger: it runs while a recording does, whichever of both was started,
    stopped or delivered. */
class CPgSMLogger : public CRunStopMachine<CPgSMLoggerBase>
{
public:
    t_Couplings Rules() const override;

private:
    /** The acquisition may end a recording by itself. */
    void FollowRecording();
};
