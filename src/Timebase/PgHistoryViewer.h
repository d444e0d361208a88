// SPDX-License-Identifier: MIT
#pragma once

#include "Timebase/PgHistoryViewerBase.h"

enum KW_ZEL_RUNSTOP_STATE : INT32;

/**
 * The history viewer. Acquisitions are counted back from the newest, 0. The shown one stays within
 * what is in memory, the player's range within what the history depth can hold. Looking at the
 * history stops the scope; leaving it stops the player and shows the newest acquisition again.
 */
class CPgHistoryViewer : public CPgHistoryViewerBase
{
public:
    t_Couplings Rules() const override;

private:
    void LimitToHistory();
    void LimitSelection();
    CDbPropEnum<KW_ZEL_RUNSTOP_STATE>& RunStop() const;
    void OnRunStop();
    void OnEnabled();
    void OnPlaying();
    void OrderRange(const CDbPropBase* written);
    void PlayOrPause();
    KW_ACCEPTANCE ShowFirst();
    KW_ACCEPTANCE ShowPrevious();
    KW_ACCEPTANCE ShowNext();
    KW_ACCEPTANCE ShowLast();
    /** eKW_ACC_WARNING when there is no such acquisition: the nearest one is shown. */
    KW_ACCEPTANCE Show(INT32 trace);
    void OnTraceChanged();
    void Clear();
};
