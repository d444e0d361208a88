// SPDX-License-Identifier: MIT
#pragma once

#include "Analysis/PgMaskBase.h"

enum KW_ZEL_MASK_TESTSTATE : INT32;

/**
 * The mask test. Start, pause and stop are the user's; the counts and an end by itself come from
 * the acquisition. Switched off, the test is off; switched on, it waits for its start in the state
 * in which it ended. A test that is under way pauses while the scope stands. An ended one has
 * passed or failed by its counts and the violations that are allowed; without an acquisition it has
 * done neither, and is off.
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
    /** And on again; eKW_ACC_NOTHING_TO_ACT_ON while no test is under way, as Stop, or the scope
        stands. */
    KW_ACCEPTANCE Pause();
    KW_ACCEPTANCE Stop();
    void ClearCounts();
    /** Of a test that has ended, by itself too: who counts says that, not how. */
    void JudgeEnded();
    KW_ZEL_MASK_TESTSTATE Verdict() const;
    bool IsScopeRunning() const;
    void WaitForScope();
    /** A new run takes up the test that paused. */
    void GoOn();
    /** The mask of the selected channel is gone, its results with it. */
    void ClearMask();
    /** Neither locking masks to the screen nor letting go of it moves one. */
    void KeepPlaces();
    /** Running or paused. */
    bool IsUnderWay() const;
};
