// SPDX-License-Identifier: MIT
#include "Instrument/PgSaveRecall.h"

#include "CheckedAccess.h"
#include "CommonDatabase/Files/DbSettings.h"
#include "CommonDatabase/Nodes/DbPgRoot.h"
#include "Instrument/PgDiagrams.h"
#include "Instrument/PgaSaveRecallSlot.h"
#include "KWEnumerationsOnOff.h"
#include "LockManager.h"
#include "Names/ZEL.h"
#include "Rules/FileRules.h"

#include <QDateTime>
#include <QDir>
#include <QFile>

std::optional<KW_ACCEPTANCE> CPgSaveRecall::OnFileFunction(const CDbFunction* function)
{
    if (function == m_pSaveToSlot)
    {
        return SaveToSlot();
    }
    if (function == m_pRecallFromSlot)
    {
        return RecallFromSlot();
    }
    if (function == m_pClearSlot)
    {
        return ClearSlot();
    }
    if (function == m_pSaveToFile)
    {
        return SaveTo(NRules::PathOf(*m_pFile));
    }
    if (function == m_pRecallFromFile)
    {
        return RecallFrom(NRules::PathOf(*m_pFile));
    }
    return CPgSaveRecallBase::OnFileFunction(function);
}

CPgSaveRecallSlot* CPgSaveRecall::SelectedSlot() const
{
    return m_pSaveRecallSlot->ItemDirect(m_pSelectedSlot->GetAsInt());
}

QString CPgSaveRecall::SlotFile() const
{
    const CDbPgRoot* const root = GetDbRoot();
    return QDir(root->GetSettingsFolder())
        .filePath(m_pSelectedSlot->GetText() + QLatin1String(".xml"));
}

KW_ACCEPTANCE CPgSaveRecall::SaveToSlot()
{
    const CPgSaveRecallSlot* const slot = SelectedSlot();
    if (slot->GetPrProtected()->Get() == eKW_ONOFF_ON)
    {
        return eKW_ACC_READ_ONLY;
    }
    const KW_ACCEPTANCE code = SaveTo(SlotFile());
    if (code <= eKW_ACC_WARNING)
    {
        const CLockGuard lock;
        const CDbRootScope scope(GetDbRoot(), eWRITEKIND::Client);
        KW_CHECKED(slot->GetPrUsed()->DbSet(eKW_ONOFF_ON));
        KW_CHECKED(slot->GetPrSavedAt()->DbSet(QDateTime::currentSecsSinceEpoch()));
    }
    return code;
}

KW_ACCEPTANCE CPgSaveRecall::RecallFromSlot()
{
    const bool isUsed = SelectedSlot()->GetPrUsed()->Get() == eKW_ONOFF_ON;
    return isUsed ? RecallFrom(SlotFile()) : static_cast<KW_ACCEPTANCE>(eKW_ACC_NOT_FOUND);
}

KW_ACCEPTANCE CPgSaveRecall::ClearSlot()
{
    const CPgSaveRecallSlot* const slot = SelectedSlot();
    if (slot->GetPrProtected()->Get() == eKW_ONOFF_ON)
    {
        return eKW_ACC_READ_ONLY;
    }
    if (QFile::exists(SlotFile()) && !QFile::remove(SlotFile()))
    {
        return eKW_ACC_FILE_NOT_WRITABLE;
    }
    const CLockGuard lock;
    const CDbRootScope scope(GetDbRoot(), eWRITEKIND::Client);
    KW_CHECKED(slot->GetPrUsed()->DbSet(eKW_ONOFF_OFF));
    KW_CHECKED(slot->GetPrSavedAt()->DbSet(0));
    KW_CHECKED(slot->GetPrName()->DbSet(QStringLiteral("")));
    return eKW_ACC_OK;
}

KW_ACCEPTANCE CPgSaveRecall::SaveTo(const QString& fileName) const
{
    if (fileName.isEmpty())
    {
        return eKW_ACC_BAD_NAME;
    }
    NRules::MakeFolderOf(fileName);
    return GetDbRoot()->SaveToFile(fileName, eSAVERECALL_SETTINGS);
}

// Only the file is applied: the action may be run inside a bracket, whose lock the acquisition may
// need before it can stop.
KW_ACCEPTANCE CPgSaveRecall::RecallFrom(const QString& fileName)
{
    if (fileName.isEmpty())
    {
        return eKW_ACC_BAD_NAME;
    }
    CDbPgRoot* const root = GetDbRoot();
    CDbSettingsDocument document;
    if (const KW_ACCEPTANCE code = root->ReadFile(fileName, document); code > eKW_ACC_WARNING)
    {
        return code;
    }
    return m_pRecallScreen->Get() == eKW_ONOFF_ON
               ? root->ApplyDocument(document, eSAVERECALL_SETTINGS)
               : RecallBelowScreen(document);
}

/** All but the diagrams, which become again what they were. */
KW_ACCEPTANCE CPgSaveRecall::RecallBelowScreen(const CDbSettingsDocument& document)
{
    const CLockGuard lock;
    CDbPgRoot* const root = GetDbRoot();
    QList<QString> screen;
    root->At(NNames::ZEL::Diagrams)->SerializeCSV(screen, eSAVERECALL_SETTINGS);
    return root->ApplyDocument(document, eSAVERECALL_SETTINGS,
                               [root, &screen]
                               {
                                   QListIterator<QString> fields(screen);
                                   root->At(NNames::ZEL::Diagrams)->DeSerializeCSV(fields);
                                   root->UpdateAllMeasSettings();
                               });
}
