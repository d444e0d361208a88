// SPDX-License-Identifier: MIT
#pragma once

#include "DbPropertyGroup.h"
#include "Dependencies.h"
#include "KWHistory.h"
#include "ZELPropertyGroup.h"

#include <functional>
#include <utility>

class CDbSettingsDocument;
enum class eREADERS;

/**
 * Root of a tree: transactions, undo and redo, history switch, brackets, control mode, dependency
 * engine, save and recall.
 *
 * Writes nest: a client's write runs rules, which write more. The outermost one is the scope that
 * runs the dependants and, when a client opened it and history is on, makes one undo step of
 * everything written inside. Writes outside a client's scope leave no step.
 */
class CDbPgRoot : public CZELPropertyGroup
{
public:
    CDbPgRoot();
    ~CDbPgRoot() override;

    CDbPgRoot* AsDbRoot() override { return this; }
    CDependencies& GetDependencies() { return m_dependencies; }
    void SetAutoUpdateDependencies(bool on) { m_dependencies.SetAutoUpdate(on); }

    // Scopes: called by the pipeline under the lock. An exception that leaves one leaves the
    // outermost, too, which asks for all of them: what was recorded is rolled back, there or in
    // the transaction around it. Without history nothing was; the next write then recomputes
    // everything.
    void BeginScope(eWRITEKIND kind)
    {
        if (m_scopes == 0)
        {
            BeginOutermostScope(kind);
        }
        ++m_scopes;
    }
    void EndScope()
    {
        if (m_scopes > 1)
        {
            --m_scopes;
        }
        else
        {
            EndOutermostScope();
        }
    }
    /** Records the state of a property that is about to change, once per step. */
    void Record(CDbPropBase& property)
    {
        if (m_step != nullptr && property.GetRecordedStep() != m_stepId)
        {
            property.MakeNewHistValueEntry(*m_step);
            property.SetRecordedStep(m_stepId);
        }
    }
    /** The step that is being recorded; null for none. */
    CDbUndoStep* GetStep() const { return m_step; }
    /** Unique number of the step that is being recorded. */
    UINT32 GetStepId() const { return m_stepId; }
    /** Counts a change and marks what depends on it. */
    void Changed(CDbPropBase& property);
    void MarkDependants(const CDbPropBase& property)
    {
        if (HasCause(property.GetFollowed(), eCAUSE::Changed))
        {
            m_dependencies.MarkChanged(property);
        }
    }
    /** Names the step that is being recorded, if there is one and it has no name yet. */
    void NameStep(const QString& text);

    // History.
    void EnableHistoryObjects();
    /** Forgets all steps: what then changes unrecorded could not be undone rightly. */
    void DisableHistoryObjects();
    bool HistoryObjectsEnabled() const { return m_historyEnabled; }
    /** All of the steps, or none where there are fewer. */
    ///@{
    KW_ACCEPTANCE Undo(int steps = 1);
    KW_ACCEPTANCE Redo(int steps = 1);
    ///@}
    bool CanUndo() const;
    bool CanRedo() const;
    QString GetUndoText() const;
    QString GetRedoText() const;
    KW_History GetHistory() const;

    // Brackets: keep the lock until they end, nest, belong to the calling thread.
    void StartTransaction(const QString& text);
    /** With `keep` false, here or in a bracket inside, the outermost end rolls everything back:
        eKW_ACC_OPERATION_FAILED when it had `keep`, eKW_ACC_NOTHING_TO_DO with history off. */
    KW_ACCEPTANCE EndTransaction(bool keep);
    void StartReadAccess();
    void EndReadAccess();
    void StartWriteAccess(KW_CLIENT_ORIGIN origin);
    void EndWriteAccess();
    void SetControlMode(KW_CONTROL_MODE mode);
    KW_CONTROL_MODE GetControlMode() const;
    /** Whether the calling thread's writes are taken in the present control mode. */
    bool MayWrite() const;

    // Files.
    virtual KW_ACCEPTANCE Save(QString fileName);
    virtual KW_ACCEPTANCE Recall(QString fileName);
    /** True when the file was applied, even if parts had to be skipped. */
    virtual bool RecallFromFile(const QString& fileName, SaveRecallPattern pattern);
    /** Writes everything of `pattern`; CSV when the name ends in ".csv", XML otherwise. What would
        be too large to be recalled is not written: eKW_ACC_FILE_NOT_WRITABLE. */
    KW_ACCEPTANCE SaveToFile(const QString& fileName, SaveRecallPattern pattern) const;
    /** Reads and checks the whole file, and reports why it can not be applied: it is missing or no
        regular file (eKW_ACC_FILE_NOT_READABLE), or no sound file of these settings
        (eKW_ACC_FILE_NOT_UNDERSTOOD). Takes no lock. */
    KW_ACCEPTANCE ReadFile(const QString& fileName, CDbSettingsDocument& document) const;
    /** Applies what was read. `last` runs when it has been applied, and belongs to the same step
        for undo. */
    KW_ACCEPTANCE ApplyDocument(const CDbSettingsDocument& document, SaveRecallPattern pattern,
                                const std::function<void()>& last = {});
    /** Both in turn. */
    KW_ACCEPTANCE ApplyFile(const QString& fileName, SaveRecallPattern pattern);
    /** Sets the defaults of `pattern` and recomputes, as one step for undo. */
    KW_ACCEPTANCE ApplyDefaults(SaveRecallPattern pattern, const QString& text);
    /** To be overridden by a root whose clients call it. */
    virtual KW_ACCEPTANCE RunPresetSequence(bool factory);
    virtual void UpdateAllMeasSettings();

    /** Where the files of the root's own actions live. */
    void SetSettingsFolder(const QString& folder);
    QString GetSettingsFolder() const;

    void OnTreeCreated() override;
    bool IsTreeCreated() const { return m_treeCreated; }

private:
    using t_NextStep = const CDbUndoStep* (CDbHistory::*)(std::size_t ahead) const;
    using t_Move = bool (CDbHistory::*)();

    void OpenStep();
    void BeginOutermostScope(eWRITEKIND kind);
    void EndOutermostScope();
    void LeaveOutermostScope(bool failed);
    void RunDependants();
    void CloseStep()
    {
        const bool rollBack = std::exchange(m_rollBack, false);
        if (m_step != nullptr)
        {
            FinishStep(rollBack);
        }
    }
    void FinishStep(bool rollBack);
    /** `next` finds what the step by `move` is about; `back` is the step the other way. */
    KW_ACCEPTANCE Replay(t_NextStep next, t_Move move, t_Move back, int steps);
    /** The tree as a file's text, and who may read that file. */
    QByteArray Serialized(bool csv, INT32 pattern, eREADERS& readers) const;

    CDependencies m_dependencies;
    CDbHistory m_history;
    /** Of the history; null while nothing is recorded. What follows is guarded by the tree's lock.
     */
    CDbUndoStep* m_step = nullptr;
    UINT32 m_stepId = 0;
    INT32 m_scopes = 0;   ///< writes inside one another that are under way
    int m_exceptions = 0; ///< that were under way when the outermost scope began
    bool IsInTransaction() const;

    INT32 m_transactions = 0; ///< brackets that are open, inside one another
    QString m_settingsFolder;
    KW_CONTROL_MODE m_controlMode = eCONTROL_LOCAL;
    bool m_historyEnabled = false;
    bool m_treeCreated = false; ///< its rows are registered; items that come enter by themselves
    bool m_rollBack = false;    ///< how the present step ends
    bool m_isStale = false;     ///< a write failed halfway that was not recorded
};

/** A transaction of a root; rolled back unless Commit was called. */
class CDbTransaction
{
public:
    CDbTransaction(CDbPgRoot& root, const QString& text) : m_root(&root)
    {
        m_root->StartTransaction(text);
    }
    ~CDbTransaction()
    {
        if (m_root != nullptr)
        {
            m_root->EndTransaction(false);
        }
    }
    KW_ACCEPTANCE Commit() { return std::exchange(m_root, nullptr)->EndTransaction(true); }
    CDbTransaction(const CDbTransaction&) = delete;
    CDbTransaction& operator=(const CDbTransaction&) = delete;

private:
    CDbPgRoot* m_root;
};

/** One scope of a root, which may be missing: then only the change is counted. */
class CDbRootScope
{
public:
    CDbRootScope(CDbPgRoot* root, eWRITEKIND kind) : m_root(root)
    {
        if (m_root != nullptr)
        {
            m_root->BeginScope(kind);
        }
    }
    /** Dependants run here, and what they run out of is the writer's to know. */
    ~CDbRootScope() noexcept(false)
    {
        if (m_root != nullptr)
        {
            m_root->EndScope();
        }
    }
    CDbRootScope(const CDbRootScope&) = delete;
    CDbRootScope& operator=(const CDbRootScope&) = delete;

    void Record(CDbPropBase& property) const
    {
        if (m_root != nullptr)
        {
            m_root->Record(property);
        }
    }
    void Changed(CDbPropBase& property) const
    {
        if (m_root != nullptr)
        {
            m_root->Changed(property);
        }
        else if (property.GetParent() != nullptr)
        {
            property.GetParent()->IncChangeCounter();
        }
    }

private:
    CDbPgRoot* m_root;
};
