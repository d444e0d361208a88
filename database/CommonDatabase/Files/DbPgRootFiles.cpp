// SPDX-License-Identifier: MIT
#include "CommonDatabase/Nodes/DbPgRoot.h"
#include "DbSettings.h"
#include "ErrorReport.h"
#include "KWSettingsFile.h"
#include "LockManager.h"
#include "WholeFile.h"

#include <QXmlStreamWriter>

namespace
{
constexpr char kRootSource[] = "CommonDatabase/Src/DbPgRoot";

bool IsCsv(const QString& fileName)
{
    return fileName.endsWith(QLatin1String(".csv"), Qt::CaseInsensitive);
}

void WriteDocument(CDbSettingsWriter& writer, const CDbPgRoot& root, INT32 pattern)
{
    writer.StartElement(KW_SETTINGS_DOCUMENT);
    writer.Attribute(KW_SETTINGS_KIND, root.NodeName());
    writer.Attribute(KW_SETTINGS_VERSION,
                     QStringLiteral("%1.%2").arg(kSettingsMajorVersion).arg(kSettingsMinorVersion));
    root.Serialize(writer, pattern);
    writer.EndElement();
}

/** What stands beside the settings is what a newer version may know. */
void SkipOthers(CDbRecall& recall, const CDbPgRoot& root, const CDbSettingsDocument& document)
{
    const CDbSettingsElement settings = document.Top().FirstChild();
    for (auto other = settings.IsNull() ? settings : settings.Next(); !other.IsNull();
         other = other.Next())
    {
        if (other.Kind() != KW_SETTINGS_DIGEST)
        {
            recall.Skip(root, QStringLiteral("Unexpected element: ") + other.Kind().toString());
        }
    }
}

/** Whoever may read the folder, unless a secret is among what was written. */
eREADERS ReadersOf(const CDbSettingsWriter& writer)
{
    return writer.HoldsSecret() ? eREADERS::Owner : eREADERS::Any;
}
} // namespace

QByteArray CDbPgRoot::Serialized(bool csv, INT32 pattern, eREADERS& readers) const
{
    const CLockGuard lock(eACCESS_READ);
    QByteArray text;
    if (csv)
    {
        QList<QString> fields;
        CDbCsvSettingsWriter writer(fields);
        WriteDocument(writer, *this, pattern);
        readers = ReadersOf(writer);
        text = CDbCsvSettingsWriter::ToText(fields);
        KW_AddDigest(text, csv);
        return text;
    }
    QXmlStreamWriter xml(&text);
    xml.setAutoFormatting(true);
    xml.setAutoFormattingIndent(1);
    xml.writeStartDocument();
    CDbXmlSettingsWriter writer(xml);
    WriteDocument(writer, *this, pattern);
    readers = ReadersOf(writer);
    xml.writeEndDocument();
    KW_AddDigest(text, csv);
    return text;
}

KW_ACCEPTANCE CDbPgRoot::SaveToFile(const QString& fileName, SaveRecallPattern pattern) const
{
    eREADERS readers = eREADERS::Owner;
    const QByteArray text = Serialized(IsCsv(fileName), pattern, readers);
    QString error;
    if (text.size() > NDbBounds::kMaxFileSize)
    {
        error = QStringLiteral("the settings take %1 bytes, and files of more than %2 can not be "
                               "recalled")
                    .arg(text.size())
                    .arg(NDbBounds::kMaxFileSize);
    }
    if (!error.isEmpty() || !KW_WriteWholeFile(fileName, text, error, readers))
    {
        KW_REPORT_ERROR(
            QStringLiteral("Can not write \"%1\": %2. An older file of this name is kept.")
                .arg(fileName, error),
            kRootSource);
        return eKW_ACC_FILE_NOT_WRITABLE;
    }
    return eKW_ACC_OK;
}

KW_ACCEPTANCE CDbPgRoot::ReadFile(const QString& fileName, CDbSettingsDocument& document) const
{
    QByteArray text;
    QString error;
    if (!KW_ReadWholeFile(fileName, NDbBounds::kMaxFileSize, text, error))
    {
        KW_REPORT_ERROR(
            QStringLiteral("Can not read \"%1\": %2. Nothing was changed.").arg(fileName, error),
            kRootSource);
        return eKW_ACC_FILE_NOT_READABLE;
    }
    const QString kind = GetNodeName();
    if (!(IsCsv(fileName) ? document.ReadCsvFile(text, kind) : document.ReadXmlFile(text, kind)))
    {
        const QString remedy =
            document.IsDigestWrong()
                ? QStringLiteral(" If it was changed on purpose: zelctl seal \"%1\"").arg(fileName)
                : QString();
        KW_REPORT_ERROR(QStringLiteral("Can not use \"%1\": %2. Nothing was changed.%3")
                            .arg(fileName, document.GetError(), remedy),
                        kRootSource);
        return eKW_ACC_FILE_NOT_UNDERSTOOD;
    }
    return eKW_ACC_OK;
}

KW_ACCEPTANCE CDbPgRoot::ApplyDocument(const CDbSettingsDocument& document,
                                       SaveRecallPattern pattern, const std::function<void()>& last)
{
    const CLockGuard lock;
    if (!MayWrite())
    {
        return eKW_ACC_NO_WRITE_ACCESS;
    }
    CDbTransaction transaction(*this, QStringLiteral("Recall"));
    bool clean = false;
    {
        // One scope: nothing that depends on the settings runs before all of them are there.
        const CDbRootScope scope(this, eWRITEKIND::Recall);
        CDbRecall recall = CDbRecall::Apply(*this, document.Top().FirstChild(), pattern);
        SkipOthers(recall, *this, document);
        const CDbPresentRecall present(recall);
        recall.SettleTwins(*this);
        DropMeasuredBelow();
        m_dependencies.CalculateEverything();
        clean = recall.IsClean();
    }
    if (last)
    {
        last();
    }
    transaction.Commit();
    return clean ? eKW_ACC_OK : eKW_ACC_WARNING;
}

KW_ACCEPTANCE CDbPgRoot::ApplyFile(const QString& fileName, SaveRecallPattern pattern)
{
    CDbSettingsDocument document;
    const KW_ACCEPTANCE code = ReadFile(fileName, document);
    return code > eKW_ACC_WARNING ? code : ApplyDocument(document, pattern);
}

KW_ACCEPTANCE CDbPgRoot::ApplyDefaults(SaveRecallPattern pattern, const QString& text)
{
    const CLockGuard lock;
    if (!MayWrite())
    {
        return eKW_ACC_NO_WRITE_ACCESS;
    }
    CDbTransaction transaction(*this, text);
    {
        const CDbRootScope scope(this, eWRITEKIND::Default);
        WriteDefaults(pattern);
        DropMeasuredBelow();
        m_dependencies.CalculateEverything();
    }
    transaction.Commit();
    return eKW_ACC_OK;
}

KW_ACCEPTANCE CDbPgRoot::Save(QString fileName)
{
    return SaveToFile(fileName, eSAVERECALL_SETTINGS);
}

KW_ACCEPTANCE CDbPgRoot::Recall(QString fileName)
{
    return ApplyFile(fileName, eSAVERECALL_SETTINGS);
}

bool CDbPgRoot::RecallFromFile(const QString& fileName, SaveRecallPattern pattern)
{
    return ApplyFile(fileName, pattern) <= eKW_ACC_WARNING;
}

KW_ACCEPTANCE KW_SealSettingsFile(const QString& fileName)
{
    QByteArray text;
    QString error;
    KW_ACCEPTANCE code = eKW_ACC_FILE_NOT_READABLE;
    if (KW_ReadWholeFile(fileName, NDbBounds::kMaxFileSize, text, error))
    {
        const bool csv = IsCsv(fileName);
        const QByteArray sealed = KW_WithDigest(text, csv);
        CDbSettingsDocument document;
        const bool isSound =
            csv ? document.ReadCsvFile(sealed, QString()) : document.ReadXmlFile(sealed, QString());
        error = document.GetError();
        code = !isSound                                     ? eKW_ACC_FILE_NOT_UNDERSTOOD
               : KW_WriteWholeFile(fileName, sealed, error) ? eKW_ACC_OK
                                                            : eKW_ACC_FILE_NOT_WRITABLE;
    }
    if (code > eKW_ACC_WARNING)
    {
        KW_REPORT_ERROR(
            QStringLiteral("Can not seal \"%1\": %2. It is as it was.").arg(fileName, error),
            kRootSource);
    }
    return code;
}
