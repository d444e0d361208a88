// SPDX-License-Identifier: MIT
#pragma once

#include "Analysis/PgMaskBase.h"

/**
 * The mask test. Start, pause and stop are the user's; the counts and an end by itself come from
 * the acquisition. Switched off, the test is off; switched on, it waits for its start in the state
 * in which it ended.
 */
class CPgMask : public CPgMaskBase
{
public:
    t_Couplings Rules() const override;

private:
    /** Only ever switches the test off: every other state has its own origin. */
    void UpdateState();
    /** Switches the test on, too; its counts were cleared by the step before. */
    KW_ACCEPTANCE Start();
    /** And on again; eKW_ACC_NOTHING_TO_ACT_ON while no test is under way, as Stop. */
    KW_ACCEPTANCE Pause();
    /** Passed or failed by the counts so far. */
    KW_ACCEPTANCE Stop();
    void ClearCounts();
    /** The mask of the selected channel is gone, its results with it. */
    void ClearMask();
    /** Running or paused. */
    bool IsUnderWay() const;
};
