// SPDX-License-Identifier: MIT
#pragma once

#include "LabelList/LabelListFile.h"

#include <QStringList>
#include <gtest/gtest.h>
#include <ostream>

inline constexpr auto kDbc = eKW_LABEL_FILE_FORMAT_DBC;
inline constexpr auto kXml = eKW_LABEL_FILE_FORMAT_XML;
inline constexpr auto kCsv = eKW_LABEL_FILE_FORMAT_CSV;

inline const QByteArray kDbcHead = "VERSION \"\" NS_ : BS_: BU_: A B\n";
inline const QByteArray kDbcMessage = "BO_ 1 M: 8 A\n SG_ S : 0|8@1+ (1,0) [0|0] \"\" B\n";

/** Failures show texts, not the numbers of their characters. */
inline void PrintTo(const QString& text, std::ostream* out)
{
    *out << '"' << text.toStdString() << '"';
}

/** Reports as lines, without a file's name: "3:7: warning: text". */
inline QStringList Lines(const std::vector<KW_LabelReport>& reports)
{
    QStringList lines;
    for (const KW_LabelReport& report : reports)
    {
        const QString kind = report.type == e_KW_MESSAGE_TYPE_ERROR ? QStringLiteral("error: ")
                                                                    : QStringLiteral("warning: ");
        QString line = KW_FormatLabelReport(QString(), report).mid(1);
        const auto place = line.indexOf(QLatin1String(": "));
        line.insert(report.line > 0 ? place + 2 : 1, kind);
        lines.append(line.trimmed());
    }
    return lines;
}

/** A label list from a text, with what was said of it. */
struct t_ReadLabels
{
    KW_LabelList list;
    KW_ACCEPTANCE code = eKW_ACC_OK;
    QStringList reports;
};

inline t_ReadLabels ReadLabels(const QByteArray& text, KW_LABEL_FILE_FORMAT format,
                               const KW_LabelReadOptions& options = {})
{
    t_ReadLabels read;
    std::vector<KW_LabelReport> reports;
    read.code = KW_ReadLabelText(text, format, read.list, reports, options);
    read.reports = Lines(reports);
    return read;
}

/** A list as the text of a file; what its format does not hold goes to `reports`. */
inline QByteArray WriteLabels(const KW_LabelList& list, KW_LABEL_FILE_FORMAT format,
                              QStringList* reports = nullptr)
{
    QByteArray text;
    std::vector<KW_LabelReport> all;
    KW_WriteLabelText(list, format, text, all);
    if (reports != nullptr)
    {
        *reports = Lines(all);
    }
    return text;
}

/** All that a list holds but the other statements of a CAN database: lists are equal when their
   texts are. */
inline std::string TextOfLabelList(const KW_LabelList& list)
{
    const QByteArray text = WriteLabels(list, kXml);
    EXPECT_FALSE(text.isEmpty());
    return text.toStdString();
}
