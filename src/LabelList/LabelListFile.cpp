// SPDX-License-Identifier: MIT
#include "LabelList/LabelListFile.h"

#include "LabelList/LabelBounds.h"
#include "LabelList/LabelChecks.h"
#include "LabelList/LabelFiles.h"
#include "LabelList/LabelReports.h"
#include "WholeFile.h"

namespace
{
using t_Read = bool (*)(const QByteArray&, KW_LabelList&, CLabelReports&,
                        const KW_LabelReadOptions&);
using t_Write = QByteArray (*)(const KW_LabelList&, CLabelReports&);

struct t_FileFormat
{
    QLatin1String suffix;
    t_Read read;
    t_Write write;
};

// By their numbers.
const t_FileFormat kFileFormats[] = {
    {QLatin1String(".dbc"), NLabelFiles::ReadDbc, NLabelFiles::WriteDbc},
    {QLatin1String(".xml"), NLabelFiles::ReadXml, NLabelFiles::WriteXml},
    {QLatin1String(".csv"), NLabelFiles::ReadCsv, NLabelFiles::WriteCsv},
};

bool IsKnown(KW_LABEL_FILE_FORMAT format)
{
    return format >= 0 && format < eKW_LABEL_FILE_FORMAT_UNKNOWN;
}

/** Takes the reports over, and with them the code of what was done. */
KW_ACCEPTANCE Answer(KW_ACCEPTANCE refusal, CLabelReports& collected,
                     std::vector<KW_LabelReport>& reports)
{
    const KW_ACCEPTANCE taken = collected.IsEmpty() ? eKW_ACC_OK : eKW_ACC_WARNING;
    collected.MoveTo(reports);
    return refusal > eKW_ACC_WARNING ? refusal : taken;
}

/** Whether readers would take the messages: a list may come from elsewhere than a file. */
bool IsReadable(const KW_LabelList& list, CLabelReports& collected)
{
    for (const KW_LabelEntry& entry : list.messages)
    {
        for (const QString& error : NLabelChecks::ErrorsOf(list.protocol, entry))
        {
            collected.Error({}, QStringLiteral("message %1 can not be written: ")
                                        .arg(QuotedName(entry.message.getName())) +
                                    error);
        }
    }
    return collected.ErrorCount() == 0;
}

KW_ACCEPTANCE Refuse(KW_ACCEPTANCE code, const QString& text, std::vector<KW_LabelReport>& reports)
{
    reports.push_back({e_KW_MESSAGE_TYPE_ERROR, 0, 0, text});
    return code;
}

KW_ACCEPTANCE RefuseFormat(std::vector<KW_LabelReport>& reports)
{
    return Refuse(eKW_ACC_FILE_NOT_UNDERSTOOD,
                  QStringLiteral("no format of label lists: the name has to end in .dbc, .xml or "
                                 ".csv"),
                  reports);
}
} // namespace

KW_LABEL_FILE_FORMAT KW_GetLabelFileFormat(const QString& fileName)
{
    INT32 format = 0;
    while (format < eKW_LABEL_FILE_FORMAT_UNKNOWN &&
           !fileName.endsWith(kFileFormats[format].suffix, Qt::CaseInsensitive))
    {
        ++format;
    }
    return static_cast<KW_LABEL_FILE_FORMAT>(format);
}

KW_ACCEPTANCE KW_ReadLabelText(const QByteArray& text, KW_LABEL_FILE_FORMAT format,
                               KW_LabelList& list, std::vector<KW_LabelReport>& reports,
                               const KW_LabelReadOptions& options)
{
    if (!IsKnown(format))
    {
        return RefuseFormat(reports);
    }
    if (text.size() > NLabelBounds::kMaxFileSize)
    {
        return Refuse(eKW_ACC_FILE_NOT_READABLE, QStringLiteral("longer than 64 MiB"), reports);
    }
    KW_LabelList read;
    CLabelReports collected;
    const bool isRead = kFileFormats[format].read(text, read, collected, options);
    if (isRead)
    {
        list = std::move(read);
    }
    return Answer(isRead ? eKW_ACC_OK : eKW_ACC_FILE_NOT_UNDERSTOOD, collected, reports);
}

KW_ACCEPTANCE KW_ReadLabelFile(const QString& fileName, KW_LabelList& list,
                               std::vector<KW_LabelReport>& reports,
                               const KW_LabelReadOptions& options)
{
    const KW_LABEL_FILE_FORMAT format = KW_GetLabelFileFormat(fileName);
    if (!IsKnown(format))
    {
        return RefuseFormat(reports);
    }
    QByteArray text;
    QString error;
    if (!KW_ReadWholeFile(fileName, NLabelBounds::kMaxFileSize, text, error))
    {
        return Refuse(eKW_ACC_FILE_NOT_READABLE, error, reports);
    }
    return KW_ReadLabelText(text, format, list, reports, options);
}

KW_ACCEPTANCE KW_WriteLabelText(const KW_LabelList& list, KW_LABEL_FILE_FORMAT format,
                                QByteArray& text, std::vector<KW_LabelReport>& reports)
{
    if (!IsKnown(format))
    {
        return RefuseFormat(reports);
    }
    if (format == eKW_LABEL_FILE_FORMAT_DBC && list.protocol != eKW_ZEL_SERIALBUS_PROTOCOL_CAN)
    {
        return Refuse(eKW_ACC_WRONG_KIND,
                      QStringLiteral("a CAN database holds lists of CAN only; XML and CSV hold "
                                     "those of every bus"),
                      reports);
    }
    CLabelReports collected;
    if (!IsReadable(list, collected))
    {
        return Answer(eKW_ACC_FILE_NOT_UNDERSTOOD, collected, reports);
    }
    text = kFileFormats[format].write(list, collected);
    return Answer(eKW_ACC_OK, collected, reports);
}

KW_ACCEPTANCE KW_WriteLabelFile(const QString& fileName, const KW_LabelList& list,
                                std::vector<KW_LabelReport>& reports)
{
    QByteArray text;
    const KW_ACCEPTANCE code =
        KW_WriteLabelText(list, KW_GetLabelFileFormat(fileName), text, reports);
    QString error;
    if (code <= eKW_ACC_WARNING && !KW_WriteWholeFile(fileName, text, error))
    {
        return Refuse(eKW_ACC_FILE_NOT_WRITABLE, error, reports);
    }
    return code;
}
