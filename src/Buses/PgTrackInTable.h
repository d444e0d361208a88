// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/PgTrackInTableBase.h"

class CDbPgArrayBase;

/** The marked frame: reference, index and time are one selection among the frames that the table
    lists. The selection follows its frame while others come and go. */
class CPgTrackInTable : public CPgTrackInTableBase
{
public:
    t_Couplings Rules() const override;

private:
    /** What the table lists: decoded frames of the present protocol; words of a UART that knows no
        frames. */
    CDbPgArrayBase* Frames() const;
    INT32 Count() const;
    /** Index of the frame that the reference names; -1 when it is none of the listed ones. */
    INT32 MarkedIndex() const;
    /** Marks a frame; -1 for none. */
    void Mark(INT32 index);
    /** Marks the first frame from `index` on in steps of `step` that the step keys stop at. */
    KW_ACCEPTANCE MarkFrom(INT32 index, INT32 step);
    /** Frames came or went: index and time are those of the frame that is marked, wherever it is
        now. */
    void FollowFrames();
    /** A client wrote the index. */
    void MarkIndex();
    /** A client wrote the reference: one that is not listed leaves the selection as it was. */
    void MarkFrame();
    KW_ACCEPTANCE MarkFirst();
    KW_ACCEPTANCE MarkPrevious();
    KW_ACCEPTANCE MarkNext();
    KW_ACCEPTANCE MarkLast();
    KW_ACCEPTANCE MarkAtTrigger();
    bool StopsAt(INT32 index) const;
    /** Moves the time diagram to the marked frame, when it is to follow. */
    KW_ACCEPTANCE ShowMarked();
};
