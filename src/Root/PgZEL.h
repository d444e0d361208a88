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

    /** The root above a node; null while the node is not part of the instrument's tree. */
    static CPgZEL* Of(const CDbObject& node) { return dynamic_cast<CPgZEL*>(node.GetDbRoot()); }

    /** Reads and checks the file, stops the acquisition, applies what was read, brings the
        instrument into the recalled mode. A recall that is refused stops nothing. */
    KW_ACCEPTANCE Recall(QString fileName) override;
    bool RecallFromFile(const QString& fileName, SaveRecallPattern pattern) override;
    /** Stops the acquisition, runs "Preset" or "PresetFactory", brings the instrument into the
        default mode. */
    KW_ACCEPTANCE RunPresetSequence(bool factory) override;
    /** Recomputes what every measuring function derives from its settings. */
    void UpdateAllMeasSettings() override;

    KW_ACCEPTANCE OnFunction(const CDbFunction* function) override;
    std::optional<KW_ACCEPTANCE> OnFileFunction(const CDbFunction* function) override;
    KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override;

private:
    KW_ACCEPTANCE RecallPattern(const QString& fileName, SaveRecallPattern pattern);
    KW_ACCEPTANCE SaveInFolder(const QString& name, SaveRecallPattern pattern);
    KW_ACCEPTANCE RecallFromFolder(const QString& name, SaveRecallPattern pattern);
    KW_ACCEPTANCE AutosetLogger();
    void StopAcquisition();
    void SwitchMode();
};

/** The present root, or null: never builds a tree. For helpers that read a setting. */
std::shared_ptr<CPgZEL> KW_PeekZELRoot();
