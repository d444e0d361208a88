// SPDX-License-Identifier: MIT
#pragma once

#include "Root/PgZELBase.h"

#include <memory>

/**
 * The root of the instrument's tree: everything that concerns the tree as a whole, above all the
 * order in which saving, recalling and presetting involve the acquisition.
 */
class CPgZEL : public CPgZELBase
{
public:
    CPgZEL();

    /** Reads and checks the file, stops the acquisition, applies what was read, brings the
        instrument into the recalled mode. Scope and meter then run on if they ran. A recall that is
        refused stops nothing. */
    KW_ACCEPTANCE Recall(QString fileName) override;
    bool RecallFromFile(const QString& fileName, SaveRecallPattern pattern) override;
    /** Stops the acquisition, runs "Preset" or "PresetFactory", brings the instrument into the
        default mode, where scope and meter run on if they ran. */
    KW_ACCEPTANCE RunPresetSequence(bool factory) override;
    /** Recomputes what every measuring function derives from its settings. */
    void UpdateAllMeasSettings() override;

    /** For a copy: everything that is saved of another tree. */
    KW_ACCEPTANCE TakeOver(const CPgZEL& other);

    t_Couplings Rules() const override;
    std::optional<KW_ACCEPTANCE> OnFileFunction(const CDbFunction* function) override;

private:
    KW_ACCEPTANCE RecallPattern(const QString& fileName, SaveRecallPattern pattern);
    KW_ACCEPTANCE SaveInFolder(const QString& name, SaveRecallPattern pattern);
    KW_ACCEPTANCE RecallFromFolder(const QString& name, SaveRecallPattern pattern);
    void FollowRemoteState();
    /** eKW_ACC_NOT_AVAILABLE while a recording runs, whose settings are fixed. */
    KW_ACCEPTANCE AutosetLogger();
    KW_ACCEPTANCE Preset();
    KW_ACCEPTANCE PresetFactory();
    /** What the user asks of the machines that a sequence lets run on, as KW_ZEL_RUNSTOP_STATE. */
    struct t_Asked
    {
        INT32 scope;
        INT32 meter;
    };
    /** Answers what was asked before. */
    t_Asked StopAcquisition();
    /** Leaves no step for undo. A recording has ended: going on would be another one. */
    void Ask(const t_Asked& asked);
    void SwitchMode();
};

/** The present root, or null: never builds a tree. For helpers that read a setting. */
std::shared_ptr<CPgZEL> KW_PeekZELRoot();
