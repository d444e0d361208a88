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
    void UpdateState();
    KW_ACCEPTANCE Start();
    KW_ACCEPTANCE Pause();
    KW_ACCEPTANCE Stop();
    void ClearCounts();
    /** The mask of the selected channel is gone, its results with it. */
    void ClearMask();
    bool IsUnderWay() const;
};
