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
        instrument into the recalled mode. A recall that is refused stops nothing. */
    KW_ACCEPTANCE Recall(QString fileName) override;
    bool RecallFromFile(const QString& fileName, SaveRecallPattern pattern) override;
    /** Stops the acquisition, runs "Preset" or "PresetFactory", brings the instrument into the
        default mode. */
    KW_ACCEPTANCE RunPresetSequence(bool factory) override;
    /** Recomputes what every measuring function derives from its settings. */
    void UpdateAllMeasSettings() override;

    t_Couplings Rules() const override;
    std::optional<KW_ACCEPTANCE> OnFileFunction(const CDbFunction* function) override;

private:
    KW_ACCEPTANCE RecallPattern(const QString& fileName, SaveRecallPattern pattern);
    KW_ACCEPTANCE SaveInFolder(const QString& name, SaveRecallPattern pattern);
    KW_ACCEPTANCE RecallFromFolder(const QString& name, SaveRecallPattern pattern);
    void FollowRemoteState();
    void AutosetLogger();
    KW_ACCEPTANCE Preset();
    KW_ACCEPTANCE PresetFactory();
    void StopAcquisition();
    void SwitchMode();
};

/** The present root, or null: never builds a tree. For helpers that read a setting. */
std::shared_ptr<CPgZEL> KW_PeekZELRoot();
