// SPDX-License-Identifier: MIT
#pragma once

#include "Logger/PgLoggerBase.h"

/**
 * The logger. While it records, what the recording is made of can not be changed. Start and stop
 * say what is wanted; the acquisition carries it out, after the start delay.
 */
class CPgLogger : public CPgLoggerBase
{
public:
    KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override;
    void OnPropertyDbSet(const CDbPropBase* property) override;
    /** ShowAll: eKW_ACC_NOTHING_TO_ACT_ON without a recording. */
    KW_ACCEPTANCE OnFunction(const CDbFunction* function) override;
    void UpdateGroup() override;
    void OnTreeCreated() override;

    bool IsRecording() const;
    /** Puts the enlarged stretch between the cursor lines when it is coupled to them, and keeps its
        scale finer than that of the diagram. */
    void UpdateZoom();

private:
    void LockSettings();
    void Clear();
    KW_ACCEPTANCE ShowAll();
};
