// SPDX-License-Identifier: MIT
#pragma once

#include "Logger/PgLoggerBase.h"

/**
 * The logger. While it records, what the recording is made of can not be changed. Start and stop
 * say what is wanted; the acquisition carries it out, after the start delay. ShowAll answers
 * eKW_ACC_NOTHING_TO_ACT_ON without a recording.
 */
class CPgLogger : public CPgLoggerBase
{
public:
    t_Couplings Rules() const override;

private:
    void LockSettings();
    /** Puts the enlarged stretch between the cursor lines when it is coupled to them, and keeps its
        scale finer than that of the diagram. */
    void UpdateZoom();
    void Clear();
    void Start();
    void Stop();
    KW_ACCEPTANCE ShowAll();
};
