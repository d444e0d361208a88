// SPDX-License-Identifier: MIT
#pragma once

#include "IKWFunctionBase.h"

/** What the root's handle offers beside its groups: files, undo, brackets, access. It is complete
    and grows by free functions: the root's accessors stand behind its virtual functions. */
class KW_EXPORT IKWFunctionRootBase : public IKWFunctionBase
{
public:
    ~IKWFunctionRootBase() override;

    /** Writes the user's settings: CSV when the name ends in ".csv", XML otherwise. The old file
        stands until the new one is whole: eKW_ACC_FILE_NOT_WRITABLE, also for what is no regular
        file and for settings that would be too large to be recalled. */
    virtual KW_ACCEPTANCE Save(const QString& fileName) = 0;
    /** Reads and checks the whole file, then applies it as one step for undo. Code 1 when nodes or
        values had to be skipped (each is reported); eKW_ACC_FILE_NOT_READABLE or
        eKW_ACC_FILE_NOT_UNDERSTOOD, also for a file that was changed since it was saved
        (KWSettingsFile.h), leave the tree and the acquisition as they were. Settings that the file
        does not name keep their values, and so does what no file of the user's settings holds; of
        two settings that say the same, the one that it names alone decides. Memory that runs out
        while a CSV file is recalled leaves the tree as it was (std::bad_alloc); Qt's XML reader
        ends the process then. */
    virtual KW_ACCEPTANCE Recall(const QString& fileName) = 0;
    /** Sets the defaults: of the user's settings, or with `factory` of everything that is saved. */
    virtual KW_ACCEPTANCE RunPresetSequence(bool factory) = 0;
    /** Folder of the actions Save, Recall, StartupRecall and ShutdownSave. */
    ///@{
    virtual void SetSettingsFolder(const QString& folder) = 0;
    virtual QString GetSettingsFolder() const = 0;
    ///@}
    /** Recomputes every group that carries out measurements. */
    virtual void UpdateAllMeasSettings() = 0;

    /** One step back or forward: eKW_ACC_NOTHING_TO_DO, or eKW_ACC_IN_TRANSACTION inside a
        bracket. */
    ///@{
    virtual KW_ACCEPTANCE Undo() = 0;
    virtual KW_ACCEPTANCE Redo() = 0;
    ///@}
    /** Whether there is a step to undo or redo, and its text; empty when there is none. */
    ///@{
    virtual bool CanUndo() const = 0;
    virtual bool CanRedo() const = 0;
    virtual QString GetUndoText() const = 0;
    virtual QString GetRedoText() const = 0;
    ///@}
    /** Switching off forgets all steps: what changed unrecorded could not be undone rightly. */
    virtual void EnableHistory(bool on) = 0;

    /** Brackets nest, belong to the calling thread, and keep other threads' writes out until the
        last is closed: use the guards of KWBrackets.h. A transaction is one step for undo; with
        `keep` false, here or in one inside, it is rolled back (which needs history to be on). An
        end without its start does nothing: eKW_ACC_NOTHING_TO_DO. */
    ///@{
    virtual void StartTransaction(const QString& text) = 0;
    virtual KW_ACCEPTANCE EndTransaction(bool keep) = 0;
    virtual void StartReadAccess() = 0;
    virtual void EndReadAccess() = 0;
    ///@}
    /** The same; writes of this thread count as coming from `origin` until the bracket ends. */
    ///@{
    virtual void StartWriteAccess(KW_CLIENT_ORIGIN origin) = 0;
    virtual void EndWriteAccess() = 0;
    ///@}

    /** Who may write: local lockout refuses every local write with eKW_ACC_NO_WRITE_ACCESS. */
    ///@{
    virtual void SetControlMode(KW_CONTROL_MODE mode) = 0;
    virtual KW_CONTROL_MODE GetControlMode() const = 0;
    ///@}
};
