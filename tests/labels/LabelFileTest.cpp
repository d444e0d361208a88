// SPDX-License-Identifier: MIT
#include "labels/ReadLabels.h"

TEST(LabelFile, FormatDependsOnCaseOfItsName)
{
    EXPECT_EQ(KW_GetLabelFileFormat(QStringLiteral("a.dbc.DBC")), eKW_LABEL_FILE_FORMAT_DBC);
    EXPECT_EQ(KW_GetLabelFileFormat(QStringLiteral("a.Xml")), eKW_LABEL_FILE_FORMAT_XML);
    EXPECT_EQ(KW_GetLabelFileFormat(QStringLiteral(".csv")), eKW_LABEL_FILE_FORMAT_CSV);
    EXPECT_EQ(KW_GetLabelFileFormat(QStringLiteral("a.csv.txt")), eKW_LABEL_FILE_FORMAT_UNKNOWN);
}

TEST(LabelFile, RefusalTouchesList)
{
    KW_LabelList list;
    list.name = "kept";
    std::vector<KW_LabelReport> reports;
    EXPECT_EQ(KW_ReadLabelFile(QStringLiteral("list.txt"), list, reports),
              eKW_ACC_FILE_NOT_UNDERSTOOD);
    EXPECT_EQ(KW_ReadLabelFile(QStringLiteral("/missing/list.dbc"), list, reports),
              eKW_ACC_FILE_NOT_READABLE);
    EXPECT_EQ(reports.size(), 2U);
    EXPECT_EQ(list.name, "kept");
}

namespace
{
/** Two messages of a program, which did not say in which order its signals are. */
KW_LabelList ListOfProgram(UINT32 bitLength)
{
    KW_LabelList list;
    KW_LabelEntry entry;
    entry.message.setParameters("Tank", "11", 5, 1);
    for (const UINT32 start : {4U, 0U})
    {
        const CLabelListSignal signal(
            "Level" + std::to_string(start), start, bitLength, eKW_ENDIANNESS_LITTLE_ENDIAN,
            eKW_SIGNAL_TRANSLATION_VALUE_TYPE_UNSIGNED_INT, 1, 0, 0, 15, "");
        entry.message.addSignal({signal.getSignalKey(), signal});
    }
    entry.details.signalsInOrder = {"0004Level4", "gone", "0004Level4"};
    entry.details.signalDetails["gone"].comment = "of no signal";
    list.messages = {entry};
    return list;
}
} // namespace

TEST(LabelFile, ListOfProgramIsWrittenHalfOrAsNobodyReadsIt)
{
    for (const KW_LABEL_FILE_FORMAT format : {kDbc, kXml, kCsv})
    {
        const auto read = ReadLabels(WriteLabels(ListOfProgram(4), format), format);
        ASSERT_EQ(read.code, eKW_ACC_OK) << format << read.reports.join(u'\n').toStdString();
        ASSERT_EQ(KW_GetSignals(read.list.messages[0]).size(), 2U) << format;
        EXPECT_EQ(KW_GetSignals(read.list.messages[0])[0].signal->getName(), "Level4") << format;

        QByteArray text = "kept";
        std::vector<KW_LabelReport> reports;
        EXPECT_EQ(KW_WriteLabelText(ListOfProgram(5), format, text, reports),
                  eKW_ACC_FILE_NOT_UNDERSTOOD);
        EXPECT_EQ(text, "kept");
        EXPECT_EQ(Lines(reports),
                  QStringList(QStringLiteral(
                      "error: message \"Tank\" can not be written: signal \"Level4\": does not lie "
                      "in the payload: start bit 4, 5 bits, 8 in all")));
    }
}
