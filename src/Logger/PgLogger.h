// SPDX-License-Identifier: MIT
#pragma once

#include "Logger/PgLoggerBase.h"

/**
 * The logger. It records while its state machine runs, and begins each time with nothing. While it
 * records, what the recording is made of can not be changed. Start and stop say what is wanted; the
 * acquisition carries it out, after the start delay. ShowAll answers
 * eKW_ACC_NOTHING_TO_ACT_ON without a recording.
 */
class CPgLogger : public CPgLoggerBase
{
public:
    t_Couplings Rules() const override;

private:
    /** Read-only while a recording runs, so that they stay visible. Also after an end that the
        acquisition delivers. */
    void LockSettings();
    /** Puts the enlarged stretch between the cursor lines when it is coupled to them, and keeps its
        scale finer than that of the diagram. */
    void UpdateZoom();
    /** What is known of a recording; its samples are the acquisition's. */
    void Clear();
    void FollowMachine();
    /** The finest scale that shows the whole recording, from its begin. */
    KW_ACCEPTANCE ShowAll();
};
