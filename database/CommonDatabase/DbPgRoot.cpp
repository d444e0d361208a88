// SPDX-License-Identifier: MIT
#include "DbPgRoot.h"

#include "KWErrorReport.h"
#include "LockManager.h"

#include <vector>

namespace
{
/** Origins of the write brackets that this thread has open, innermost last. */
thread_local std::vector<KW_CLIENT_ORIGIN> t_origins;

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

void CDbPgRoot::BeginScope(eWRITEKIND kind)
{
    if (m_scopes++ == 0 && m_step == nullptr && IsClientWrite(kind) && m_historyEnabled)
    {
        m_step = std::make_unique<CDbUndoStep>(QString());
        m_stepId = ++s_lastStepId;
    }
}

void CDbPgRoot::EndScope()
{
    if (m_scopes == 1)
    {
        // Still inside: what the dependants write belongs to this step.
        m_dependencies.RunMarked();
    }
    if (--m_scopes == 0 && m_transactions == 0)
    {
        CloseStep();
    }
}

void CDbPgRoot::CloseStep()
{
    auto step = std::exchange(m_step, nullptr);
    const bool rollBack = std::exchange(m_rollBack, false);
    if (!step || !step->Finish())
    {
        return;
    }
    if (rollBack)
    {
        step->Undo();
    }
    else
    {
        m_history.Add(std::move(step));
    }
}

void CDbPgRoot::Record(CDbPropBase& property)
{
    if (m_step && property.GetRecordedStep() != m_stepId)
    {
        property.SetRecordedStep(m_stepId);
        m_step->Add(property.MakeNewHistValueEntry());
    }
}

void CDbPgRoot::AddRecord(std::unique_ptr<CDbHistRecord> record)
{
    if (m_step)
    {
        m_step->Add(std::move(record));
    }
}

void CDbPgRoot::Changed(CDbPropBase& property)
{
    property.GetParent()->IncChangeCounter();
    if (property.HasDependants())
    {
        m_dependencies.MarkChanged(property);
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
    m_step.reset();
    m_history.Clear();
}

KW_ACCEPTANCE CDbPgRoot::Replay(bool (CDbHistory::*direction)())
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
    return (m_history.*direction)() ? eKW_ACC_OK : eKW_ACC_NOTHING_TO_DO;
}

KW_ACCEPTANCE CDbPgRoot::Undo()
{
    return Replay(&CDbHistory::Undo);
}

KW_ACCEPTANCE CDbPgRoot::Redo()
{
    return Replay(&CDbHistory::Redo);
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

void CDbPgRoot::StartTransaction(const QString& text)
{
    Enter(eACCESS_WRITE);
    if (m_transactions++ == 0 && m_step == nullptr && m_historyEnabled)
    {
        m_step = std::make_unique<CDbUndoStep>(text);
        m_stepId = ++s_lastStepId;
    }
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
    Leave(eACCESS_WRITE);
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

void CDbPgRoot::StartWriteAccess(KW_CLIENT_ORIGIN origin)
{
    Enter(eACCESS_WRITE);
    t_origins.push_back(origin);
}

void CDbPgRoot::EndWriteAccess()
{
    if (t_origins.empty())
    {
        return;
    }
    t_origins.pop_back();
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
    const bool remote = !t_origins.empty() && t_origins.back() == eCLIENT_REMOTE;
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
