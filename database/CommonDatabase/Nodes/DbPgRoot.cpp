// SPDX-License-Identifier: MIT
#include "DbPgRoot.h"

#include "KWBrackets.h"
#include "KWErrorReport.h"
#include "LockManager.h"

#include <exception>

namespace
{
/** Origins of the write brackets that a thread has open, the innermost as the lowest bit, set for
    remote control. Neither memory nor a destructor: the tree is used while the process ends too. */
struct t_Origins
{
    UINT32 depth;
    UINT64 areRemote;
};

thread_local t_Origins t_origins;

/** Unique over all roots, so that a property's mark never fits a step of another tree. */
UINT32 s_lastStepId = 0;

void Enter(ACCESS_TYPE access)
{
    CLockManager::instance().Lock(eCS_TREE, access, "bracket", 0);
}

void Leave(ACCESS_TYPE access)
{
    CLockManager::instance().Unlock(eCS_TREE, access, "bracket", 0);
}

/** Gives the lock of a write bracket back, come what may. */
struct CBracketEnd
{
    CBracketEnd() = default;
    ~CBracketEnd() { Leave(eACCESS_WRITE); }
    CBracketEnd(const CBracketEnd&) = delete;
    CBracketEnd& operator=(const CBracketEnd&) = delete;
};
} // namespace

CDbPgRoot::CDbPgRoot() : m_dependencies(*this)
{
    SetTopLevel(true);
}

CDbPgRoot::~CDbPgRoot()
{
    // Records keep nodes: they must go while the tree still stands.
    m_history.Clear();
}

void CDbPgRoot::OnTreeCreated()
{
    CZELPropertyGroup::OnTreeCreated();
    m_treeCreated = true;
}

void CDbPgRoot::OpenStep()
{
    m_step = &m_history.Begin();
    m_stepId = ++s_lastStepId;
}

void CDbPgRoot::BeginOutermostScope(eWRITEKIND kind)
{
    m_exceptions = std::uncaught_exceptions();
    if (m_step == nullptr && IsClientWrite(kind) && m_historyEnabled)
    {
        OpenStep();
    }
}

void CDbPgRoot::EndOutermostScope()
{
    if (std::uncaught_exceptions() > m_exceptions)
    {
        LeaveOutermostScope(true);
        return;
    }
    try
    {
        RunDependants();
    }
    catch (...)
    {
        LeaveOutermostScope(true);
        throw;
    }
    LeaveOutermostScope(false);
}

void CDbPgRoot::RunDependants()
{
    // Still inside: what the dependants write belongs to this step.
    if (m_isStale)
    {
        m_dependencies.CalculateEverything();
        m_isStale = false;
    }
    m_dependencies.RunMarked();
}

void CDbPgRoot::LeaveOutermostScope(bool failed)
{
    if (failed)
    {
        m_dependencies.Forget();
        m_rollBack = true;
        m_isStale = m_isStale || (m_step == nullptr && m_treeCreated);
    }
    m_scopes = 0;
    if (m_transactions == 0)
    {
        CloseStep();
    }
}

void CDbPgRoot::FinishStep(bool rollBack)
{
    CDbUndoStep& step = *std::exchange(m_step, nullptr);
    if (rollBack)
    {
        step.RollBack();
        m_history.Drop();
        return;
    }
    try
    {
        step.Finish();
    }
    catch (...)
    {
        step.RollBack();
        m_history.Drop();
        throw;
    }
    m_history.Take();
}

void CDbPgRoot::Changed(CDbPropBase& property)
{
    property.GetParent()->IncChangeCounter();
    MarkDependants(property);
    CRowTrace::NoteChange(property);
}

void CDbPgRoot::NameStep(const QString& text)
{
    if (m_step != nullptr)
    {
        m_step->Name(text);
    }
}

void CDbPgRoot::EnableHistoryObjects()
{
    const CLockGuard lock;
    m_historyEnabled = true;
}

void CDbPgRoot::DisableHistoryObjects()
{
    const CLockGuard lock;
    m_historyEnabled = false;
    m_step = nullptr;
    m_history.Clear();
}

KW_ACCEPTANCE CDbPgRoot::Replay(t_NextStep next, t_Move move, t_Move back, int steps)
{
    const CLockGuard lock;
    if (m_scopes > 0 || m_transactions > 0)
    {
        return eKW_ACC_IN_TRANSACTION;
    }
    if (!MayWrite())
    {
        return eKW_ACC_NO_WRITE_ACCESS;
    }
    if (steps < 1 || (m_history.*next)(static_cast<std::size_t>(steps) - 1) == nullptr)
    {
        return eKW_ACC_NOTHING_TO_DO;
    }
    int done = 0;
    try
    {
        for (; done < steps; ++done)
        {
            (m_history.*move)();
        }
    }
    catch (...)
    {
        for (; done > 0; --done)
        {
            (m_history.*back)();
        }
        throw;
    }
    return eKW_ACC_OK;
}

KW_ACCEPTANCE CDbPgRoot::Undo(int steps)
{
    return Replay(&CDbHistory::NextUndo, &CDbHistory::Undo, &CDbHistory::Redo, steps);
}

KW_ACCEPTANCE CDbPgRoot::Redo(int steps)
{
    return Replay(&CDbHistory::NextRedo, &CDbHistory::Redo, &CDbHistory::Undo, steps);
}

bool CDbPgRoot::CanUndo() const
{
    const CLockGuard lock(eACCESS_READ);
    return m_history.NextUndo() != nullptr;
}

bool CDbPgRoot::CanRedo() const
{
    const CLockGuard lock(eACCESS_READ);
    return m_history.NextRedo() != nullptr;
}

QString CDbPgRoot::GetUndoText() const
{
    const CLockGuard lock(eACCESS_READ);
    const CDbUndoStep* const step = m_history.NextUndo();
    return step != nullptr ? step->GetText() : QStringLiteral("");
}

QString CDbPgRoot::GetRedoText() const
{
    const CLockGuard lock(eACCESS_READ);
    const CDbUndoStep* const step = m_history.NextRedo();
    return step != nullptr ? step->GetText() : QStringLiteral("");
}

KW_History CDbPgRoot::GetHistory() const
{
    const CLockGuard lock(eACCESS_READ);
    const auto textsOf = [&](t_NextStep next)
    {
        QStringList texts;
        std::size_t ahead = 0;
        while (const CDbUndoStep* const step = (m_history.*next)(ahead++))
        {
            texts.append(step->GetText());
        }
        return texts;
    };
    return {textsOf(&CDbHistory::NextUndo), textsOf(&CDbHistory::NextRedo)};
}

KW_History KW_GetHistory(const IKWFunctionRootBase& tree)
{
    const auto root = std::dynamic_pointer_cast<CDbPgRoot>(tree.GetDbObject());
    return root ? root->GetHistory() : KW_History();
}

KW_ACCEPTANCE KW_UndoSteps(const IKWFunctionRootBase& tree, int steps)
{
    const auto root = std::dynamic_pointer_cast<CDbPgRoot>(tree.GetDbObject());
    return root ? root->Undo(steps) : static_cast<KW_ACCEPTANCE>(eKW_ACC_DETACHED);
}

KW_ACCEPTANCE KW_RedoSteps(const IKWFunctionRootBase& tree, int steps)
{
    const auto root = std::dynamic_pointer_cast<CDbPgRoot>(tree.GetDbObject());
    return root ? root->Redo(steps) : static_cast<KW_ACCEPTANCE>(eKW_ACC_DETACHED);
}

void CDbPgRoot::StartTransaction(const QString& text)
{
    Enter(eACCESS_WRITE);
    try
    {
        if (m_transactions == 0 && m_step == nullptr && m_historyEnabled)
        {
            OpenStep();
        }
        NameStep(text);
    }
    catch (...)
    {
        Leave(eACCESS_WRITE);
        throw;
    }
    ++m_transactions;
}

/** Of this thread: that of another one is over when the lock is there. */
bool CDbPgRoot::IsInTransaction() const
{
    const CLockGuard lock(eACCESS_READ);
    return m_transactions > 0;
}

KW_ACCEPTANCE CDbPgRoot::EndTransaction(bool keep)
{
    if (!IsInTransaction())
    {
        return eKW_ACC_NOTHING_TO_DO;
    }
    const CBracketEnd leave;
    m_rollBack = m_rollBack || !keep;
    KW_ACCEPTANCE code = eKW_ACC_OK;
    if (--m_transactions == 0 && m_scopes == 0)
    {
        if (m_rollBack)
        {
            code = m_step == nullptr ? eKW_ACC_NOTHING_TO_DO
                   : keep            ? eKW_ACC_OPERATION_FAILED
                                     : eKW_ACC_OK;
        }
        CloseStep();
    }
    return code;
}

void CDbPgRoot::StartReadAccess()
{
    Enter(eACCESS_READ);
}

void CDbPgRoot::EndReadAccess()
{
    Leave(eACCESS_READ);
}

void KW_StartOrigin(KW_CLIENT_ORIGIN origin)
{
    t_origins.areRemote = t_origins.areRemote << 1U | (origin == eCLIENT_REMOTE ? 1U : 0U);
}

void KW_EndOrigin()
{
    t_origins.areRemote >>= 1U;
}

void CDbPgRoot::StartWriteAccess(KW_CLIENT_ORIGIN origin)
{
    Enter(eACCESS_WRITE);
    ++t_origins.depth;
    KW_StartOrigin(origin);
}

void CDbPgRoot::EndWriteAccess()
{
    if (t_origins.depth == 0)
    {
        return;
    }
    --t_origins.depth;
    KW_EndOrigin();
    Leave(eACCESS_WRITE);
}

void CDbPgRoot::SetControlMode(KW_CONTROL_MODE mode)
{
    const CLockGuard lock;
    m_controlMode = mode;
}

KW_CONTROL_MODE CDbPgRoot::GetControlMode() const
{
    const CLockGuard lock(eACCESS_READ);
    return m_controlMode;
}

bool CDbPgRoot::MayWrite() const
{
    const bool remote = (t_origins.areRemote & 1U) != 0;
    return m_controlMode != eCONTROL_LOCAL_LOCKOUT || remote;
}

void CDbPgRoot::SetSettingsFolder(const QString& folder)
{
    const CLockGuard lock;
    m_settingsFolder = folder;
}

QString CDbPgRoot::GetSettingsFolder() const
{
    const CLockGuard lock(eACCESS_READ);
    return m_settingsFolder;
}

KW_ACCEPTANCE CDbPgRoot::RunPresetSequence(bool factory)
{
    return ApplyDefaults(factory ? eSAVERECALL_ALL : eSAVERECALL_SETTINGS,
                         QStringLiteral("Preset"));
}

void CDbPgRoot::UpdateAllMeasSettings()
{
    constexpr int kLine = 162;
    _KW_ProcessErrorString(QStringLiteral("Attention: This function should never be called!!"),
                           kLine, "CommonDatabase/Src/DbPgRoot", Q_FUNC_INFO,
                           e_KW_MESSAGE_TYPE_ERROR);
}
