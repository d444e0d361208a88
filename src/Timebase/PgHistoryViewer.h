// SPDX-License-Identifier: MIT
#pragma once

#include "Timebase/PgHistoryViewerBase.h"

/**
 * The history viewer. Acquisitions are counted back from the newest, 0. The shown one stays within
 * what is in memory, the player's range within what the history depth can hold. Looking at the
 * history stops the scope; leaving it stops the player and shows the newest acquisition again.
 */
class CPgHistoryViewer : public CPgHistoryViewerBase
{
public:
    KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override;
    KW_ACCEPTANCE OnFunction(const CDbFunction* function) override;
    void OnPropertyDbSet(const CDbPropBase* property) override;
    void UpdateGroup() override;
    void OnTreeCreated() override;

private:
    void LimitSelection();
    void OnRunStop();
    void OnEnabled();
    void OnPlaying();
    /** eKW_ACC_WARNING when there is no such acquisition: the nearest one is shown. */
    KW_ACCEPTANCE Show(INT32 trace);
    void OnTraceChanged();
    void Clear();
};
