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
    KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override;
    KW_ACCEPTANCE OnFunction(const CDbFunction* function) override;
    void UpdateGroup() override;

    /** The mask of the selected channel is gone, its results with it. */
    void ClearMask();

private:
    KW_ACCEPTANCE Start();
    KW_ACCEPTANCE Pause();
    KW_ACCEPTANCE Stop();
    KW_ACCEPTANCE ClearCounts();
    bool IsUnderWay() const;
};
