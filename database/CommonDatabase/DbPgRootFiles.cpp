// SPDX-License-Identifier: MIT
#include "DbPgRoot.h"
#include "DbSettings.h"
#include "ErrorReport.h"
#include "LockManager.h"
#include "WholeFile.h"

#include <QFile>
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

/** Reads at most what a settings file may hold; an empty text with `error` set on failure. */
QByteArray ReadSettings(const QString& fileName, QString& error)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
    {
        error = file.errorString();
        return {};
    }
    // A device or pipe has no size: what is read is what counts.
    QByteArray text = file.read(CDbSettingsDocument::kMaxFileSize + 1);
    if (text.size() > CDbSettingsDocument::kMaxFileSize)
    {
        error = QStringLiteral("the file is larger than %1 bytes, no settings file is")
                    .arg(CDbSettingsDocument::kMaxFileSize);
        return {};
    }
    if (file.error() != QFileDevice::NoError)
    {
        error = file.errorString();
    }
    return text;
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
        return CDbCsvSettingsWriter::ToText(fields);
    }
    QXmlStreamWriter xml(&text);
    xml.setAutoFormatting(true);
    xml.setAutoFormattingIndent(1);
    xml.writeStartDocument();
    CDbXmlSettingsWriter writer(xml);
    WriteDocument(writer, *this, pattern);
    readers = ReadersOf(writer);
    xml.writeEndDocument();
    return text;
}

KW_ACCEPTANCE CDbPgRoot::SaveToFile(const QString& fileName, SaveRecallPattern pattern) const
{
    eREADERS readers = eREADERS::Owner;
    const QByteArray text = Serialized(IsCsv(fileName), pattern, readers);
    QString error;
    if (!KW_WriteWholeFile(fileName, text, error, readers))
    {
        KW_REPORT_ERROR(
            QStringLiteral("Can not write \"%1\": %2. An older file of this name is kept.")
                .arg(fileName, error),
            kRootSource);
        return eKW_ACC_FILE_NOT_WRITABLE;
    }
    return eKW_ACC_OK;
}

KW_ACCEPTANCE CDbPgRoot::ApplyFile(const QString& fileName, SaveRecallPattern pattern,
                                   const std::function<void()>& last)
{
    QString error;
    const QByteArray text = ReadSettings(fileName, error);
    if (!error.isEmpty())
    {
        KW_REPORT_ERROR(
            QStringLiteral("Can not read \"%1\": %2. Nothing was changed.").arg(fileName, error),
            kRootSource);
        return eKW_ACC_FILE_NOT_READABLE;
    }
    CDbSettingsDocument document;
    const QString kind = GetNodeName();
    if (!(IsCsv(fileName) ? document.ReadCsvFile(text, kind) : document.ReadXmlFile(text, kind)))
    {
        KW_REPORT_ERROR(QStringLiteral("Can not use \"%1\": %2. Nothing was changed.")
                            .arg(fileName, document.GetError()),
                        kRootSource);
        return eKW_ACC_FILE_NOT_UNDERSTOOD;
    }
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
        clean = CDbRecall::Apply(*this, document.Top().FirstChild(), pattern).IsClean();
        m_dependencies.CalculateEverything();
    }
    if (last)
    {
        last();
    }
    transaction.Commit();
    return clean ? eKW_ACC_OK : eKW_ACC_WARNING;
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
