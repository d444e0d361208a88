// SPDX-License-Identifier: MIT
#pragma once

#include "Root/PgSMScopeBase.h"
#include "Root/RunStopMachine.h"

enum KW_ZEL_TRIGGER_REPETITION_MODE : INT32;

/**
 * State machine of the oscilloscope. A run without an end needs the repetition mode continuous; in
 * the others every run is a single one, which ends when none of its acquisitions is left. How many
 * it makes is what the trigger says: 1, or the number of its N-single.
 */
class CPgSMScope : public CRunStopMachine<CPgSMScopeBase>
{
public:
    t_Couplings Rules() const override;

private:
    KW_ZEL_TRIGGER_REPETITION_MODE Repetition() const;
    /** A run that the repetition mode ends is a single one, until the mode is continuous again. */
    void EndByRepetition();
    /** A single run begins with all its acquisitions left, any other state has none left. */
    void CountDown();
    void EndSingle();
    /** More than one acquisition is an N-single of the trigger, until it is one again. */
    void SelectNSingle();
    /** A single run that is under way makes no more than that. */
    void FollowRepetition();
};
