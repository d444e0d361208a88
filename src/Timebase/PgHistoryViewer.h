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
    /** To the depth that is set, which is the range of the player, too. */
    void LimitToHistory();
    /** To what is in memory: acquisitions are counted from 0 down. */
    void LimitSelection();
    /** What is asked of the scope: the viewer commands it, as both can not have the memory. */
    CDbPropEnum<KW_ZEL_RUNSTOP_STATE>& RunStop() const;
    void OnRunStop();
    void OnEnabled();
    /** Begins at the first acquisition of the range where the shown one is outside of it or its
        last. */
    void OnPlaying();
    void OrderRange(const CDbPropBase* written);
    /** OnPlaying is the step after it. */
    void PlayOrPause();
    KW_ACCEPTANCE ShowFirst();
    KW_ACCEPTANCE ShowPrevious();
    KW_ACCEPTANCE ShowNext();
    KW_ACCEPTANCE ShowLast();
    /** eKW_ACC_WARNING when there is no such acquisition: the nearest one is shown. */
    KW_ACCEPTANCE Show(INT32 trace);
    /** The time of an earlier acquisition is invalid until it is delivered; that of the newest is
        0. */
    void OnTraceChanged();
    /** The acquisitions in memory, and the wish for one of them. */
    void Clear();
};
