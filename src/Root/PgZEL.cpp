// SPDX-License-Identifier: MIT
#include "Root/PgZEL.h"

#include "CheckedAccess.h"
#include "CommonDatabase/Couplings/DbRules.h"
#include "CommonDatabase/Files/DbSettings.h"
#include "KWEnumerationsAcquisition.h"
#include "KWEnumerationsOnOff.h"
#include "LockManager.h"
#include "Logger/PgLogger.h"
#include "Root/PgControl.h"
#include "Root/PgSMLogger.h"
#include "Root/PgSMMeter.h"
#include "Root/PgSMMode.h"
#include "Root/PgSMScope.h"

#include <QDir>
#include <QStandardPaths>
#include <QTemporaryDir>

using namespace NNames;

namespace
{
const QString kSettingsFile = QStringLiteral("Settings.xml");
const QString kRestorationFile = QStringLiteral("SystemRestoration.xml");
} // namespace

CPgZEL::CPgZEL()
{
    SetNodeName(QStringLiteral("ZEL"));
    SetSettingsFolder(QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation));
}

t_Couplings CPgZEL::Rules() const
{
    static constexpr auto rows =
        Table<Names>(On(Names::RemoteState) >> Do<&CPgZEL::FollowRemoteState>,
                     On(Names::AutosetLogger) >> Do<&CPgZEL::AutosetLogger>,
                     On(Names::Preset) >> Do<&CPgZEL::Preset>,
                     On(Names::PresetFactory) >> Do<&CPgZEL::PresetFactory>);
    return rows;
}

KW_ACCEPTANCE CPgZEL::Preset()
{
    return ApplyDefaults(eSAVERECALL_SETTINGS, QStringLiteral("Preset"));
}

KW_ACCEPTANCE CPgZEL::PresetFactory()
{
    return ApplyDefaults(eSAVERECALL_ALL, QStringLiteral("PresetFactory"));
}

std::optional<KW_ACCEPTANCE> CPgZEL::OnFileFunction(const CDbFunction* function)
{
    if (function == m_pSave)
    {
        return SaveInFolder(kSettingsFile, eSAVERECALL_SETTINGS);
    }
    if (function == m_pRecall)
    {
        return RecallFromFolder(kSettingsFile, eSAVERECALL_SETTINGS);
    }
    if (function == m_pStartupRecall)
    {
        return RecallFromFolder(kRestorationFile, eSAVERECALL_ALL);
    }
    if (function == m_pShutdownSave)
    {
        return SaveInFolder(kRestorationFile, eSAVERECALL_ALL);
    }
    return CPgZELBase::OnFileFunction(function);
}

void CPgZEL::FollowRemoteState()
{
    if (GetControlMode() != eCONTROL_LOCAL_LOCKOUT)
    {
        SetControlMode(m_pRemoteState->Get() == eKW_ONOFF_ON ? eCONTROL_REMOTE : eCONTROL_LOCAL);
    }
}

// An action may be run inside a bracket, whose lock the acquisition may need before it can stop:
// here the file alone is applied, and whoever asks for the whole sequence calls Recall.
KW_ACCEPTANCE CPgZEL::RecallFromFolder(const QString& name, SaveRecallPattern pattern)
{
    return ApplyFile(QDir(GetSettingsFolder()).filePath(name), pattern);
}

KW_ACCEPTANCE CPgZEL::SaveInFolder(const QString& name, SaveRecallPattern pattern)
{
    const QDir folder(GetSettingsFolder());
    folder.mkpath(QStringLiteral("."));
    return SaveToFile(folder.filePath(name), pattern);
}

/** The logger begins afresh with what suits any signal: defaults, results and zoom included. */
KW_ACCEPTANCE CPgZEL::AutosetLogger()
{
    if (m_pLogger->GetPrRecording()->Get() == eKW_ONOFF_ON)
    {
        return eKW_ACC_NOT_AVAILABLE;
    }
    m_pLogger->WriteDefaults(eSAVERECALL_SETTINGS);
    m_pLogger->VisitChildrenFirst([](CDbPropertyGroup& group) { group.UpdateGroup(); });
    return eKW_ACC_OK;
}

KW_ACCEPTANCE CPgZEL::TakeOver(const CPgZEL& other)
{
    // In a folder that nobody else reads: it holds secrets.
    const QTemporaryDir folder;
    const QString file = folder.filePath(kRestorationFile);
    const KW_ACCEPTANCE code = other.SaveToFile(file, eSAVERECALL_ALL);
    return KW_IsAccepted(code) ? RecallPattern(file, eSAVERECALL_ALL) : code;
}

KW_ACCEPTANCE CPgZEL::Recall(QString fileName)
{
    return RecallPattern(fileName, eSAVERECALL_SETTINGS);
}

bool CPgZEL::RecallFromFile(const QString& fileName, SaveRecallPattern pattern)
{
    return RecallPattern(fileName, pattern) <= eKW_ACC_WARNING;
}

KW_ACCEPTANCE CPgZEL::RecallPattern(const QString& fileName, SaveRecallPattern pattern)
{
    CDbSettingsDocument document;
    if (const KW_ACCEPTANCE code = ReadFile(fileName, document); code > eKW_ACC_WARNING)
    {
        return code;
    }
    if (!MayWrite())
    {
        return eKW_ACC_NO_WRITE_ACCESS;
    }
    const t_Asked asked = StopAcquisition();
    const CLockGuard lock;
    Ask(asked);
    return ApplyDocument(document, pattern, [this] { SwitchMode(); });
}

KW_ACCEPTANCE CPgZEL::RunPresetSequence(bool factory)
{
    if (!MayWrite())
    {
        return eKW_ACC_NO_WRITE_ACCESS;
    }
    const t_Asked asked = StopAcquisition();
    const CLockGuard lock;
    Ask(asked);
    CDbTransaction transaction(*this, QString());
    const KW_ACCEPTANCE code = factory ? KW_CHECKED(m_pPresetFactory->ExternalApply())
                                       : KW_CHECKED(m_pPreset->ExternalApply());
    if (code <= eKW_ACC_WARNING)
    {
        SwitchMode();
    }
    transaction.Commit();
    return code;
}

CPgZEL::t_Asked CPgZEL::StopAcquisition()
{
    const t_Asked asked{m_pControl->GetPgSMScope()->GetPrRunStop()->GetUserValueAsInt(),
                        m_pControl->GetPgSMMeter()->GetPrRunStop()->GetUserValueAsInt()};
    Ask({});
    KW_CHECKED(m_pControl->GetPgSMMode()->GetPrStop()->ExternalSetEventAndWaitForCompletion(
        eKW_OP_EVENT_START, eKW_OP_RESULT_SUCCESS));
    return asked;
}

// The way through a stop is none of the user's steps: undo leads from what was recalled to a scope
// that runs as it did.
void CPgZEL::Ask(const t_Asked& asked)
{
    const CLockGuard lock;
    const CDbRootScope scope(this, eWRITEKIND::Internal);
    KW_CHECKED(m_pControl->GetPgSMLogger()->GetPrRunStop()->DbSet(eKW_ZEL_RUNSTOP_STATE_STOP));
    KW_CHECKED(m_pControl->GetPgSMScope()->GetPrRunStop()->DbSetAsInt(asked.scope));
    KW_CHECKED(m_pControl->GetPgSMMeter()->GetPrRunStop()->DbSetAsInt(asked.meter));
}

void CPgZEL::SwitchMode()
{
    KW_CHECKED(m_pControl->GetPgSMMode()->GetPrSwitchMode()->Set());
}

void CPgZEL::UpdateAllMeasSettings()
{
    const CLockGuard lock;
    const CDbRootScope scope(this, eWRITEKIND::Internal);
    GetDependencies().CalculateEverything();
}
