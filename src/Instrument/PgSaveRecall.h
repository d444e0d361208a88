// SPDX-License-Identifier: MIT
#pragma once

#include "Instrument/PgSaveRecallBase.h"

class CDbSettingsDocument;
class CPgSaveRecallSlot;

/** Slots and files of settings. A slot is a file in the instrument's settings folder; a relative
    name of a settings file is meant there too. Undo takes the state of a slot back, not its file.
    Without a file name there is nothing to save or recall: eKW_ACC_BAD_NAME. */
class CPgSaveRecall : public CPgSaveRecallBase
{
public:
    std::optional<KW_ACCEPTANCE> OnFileFunction(const CDbFunction* function) override;

private:
    CPgSaveRecallSlot* SelectedSlot() const;
    QString SlotFile() const;
    /** eKW_ACC_READ_ONLY for a protected slot, also of ClearSlot. */
    KW_ACCEPTANCE SaveToSlot();
    /** eKW_ACC_NOT_FOUND for an empty slot. */
    KW_ACCEPTANCE RecallFromSlot();
    KW_ACCEPTANCE ClearSlot();
    KW_ACCEPTANCE SaveTo(const QString& fileName) const;
    KW_ACCEPTANCE RecallFrom(const QString& fileName);
    KW_ACCEPTANCE RecallBelowScreen(const CDbSettingsDocument& document);
};
