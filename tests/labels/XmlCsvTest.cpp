// SPDX-License-Identifier: MIT
#include "FileText.h"
#include "labels/ReadLabels.h"

#include <QDir>

namespace
{

/** All that XML holds, of values that are as awkward as a list can have them. */
const QString kEverything = QStringLiteral(KWI_LABEL_FILES "/everything.xml");
} // namespace

TEST(LabelExamples, ReportOrOtherBytes)
{
    const QDir dir(QStringLiteral(KWI_LABEL_EXAMPLES));
    const QStringList names = dir.entryList({QStringLiteral("*.xml")}, QDir::Files, QDir::Name);
    ASSERT_EQ(names.size(), 6);
    for (const QString& name : names)
    {
        SCOPED_TRACE(name.toStdString());
        const QByteArray xml = ContentsOf(dir.filePath(name));
        const QByteArray csv = ContentsOf(dir.filePath(name.chopped(3) + QStringLiteral("csv")));
        const t_ReadLabels fromXml = ReadLabels(xml, kXml);
        const t_ReadLabels fromCsv = ReadLabels(csv, kCsv);
        EXPECT_EQ(fromXml.reports + fromCsv.reports, QStringList());
        EXPECT_EQ(WriteLabels(fromXml.list, kXml), xml);
        EXPECT_EQ(WriteLabels(fromXml.list, kCsv), csv);
        EXPECT_EQ(WriteLabels(fromCsv.list, kCsv), csv);
    }
}

TEST(LabelXml, LosesSomething)
{
    const QByteArray text = ContentsOf(kEverything);
    const t_ReadLabels read = ReadLabels(text, kXml);
    QStringList reports;
    EXPECT_EQ(WriteLabels(read.list, kXml, &reports), text);
    EXPECT_EQ(reports, QStringList());
    const auto& ofBits = read.list.messages.back().message.getSignals().at("0007Ω");
    EXPECT_EQ(ofBits.getSignalEnumValues().at(255), "minus one");
}

TEST(LabelXml, LosesSomethingOfDatabase)
{
    const QDir dir(QStringLiteral(KWI_DATABASES));
    const QStringList names = dir.entryList({QStringLiteral("*.dbc")}, QDir::Files);
    ASSERT_GE(names.size(), 10);
    for (const QString& name : names)
    {
        SCOPED_TRACE(name.toStdString());
        KW_LabelList list = ReadLabels(ContentsOf(dir.filePath(name)), kDbc).list;
        list.database.otherStatements.clear();
        EXPECT_FALSE(list.messages.empty());
        const t_ReadLabels read = ReadLabels(WriteLabels(list, kXml), kXml);
        EXPECT_EQ(WriteLabels(read.list, kDbc), WriteLabels(list, kDbc));
    }
}

TEST(LabelCsv, LosesWhatItDoesNotName)
{
    KW_LabelList list = ReadLabels(ContentsOf(kEverything), kXml).list;
    list.database.otherStatements = {"EV_ a"};
    list.messages.back().details.senders = {"", "A"};
    list.messages.front().details.comment = std::string("\x01\0\xFF", 3);
    QStringList reports;
    const QByteArray text = WriteLabels(list, kCsv, &reports);
    const QStringList expected = {
        "warning: CSV does not hold attributes (10), nodes (3), value tables (1), definitions of "
        "attributes (4), other statements (1), versions of databases (1), empty names of nodes (1)",
        "warning: 3 characters that no file can hold, such as control characters, are written as "
        "U+FFFD"};
    EXPECT_EQ(reports, expected);
    list.database = {};
    list.messages.front().details.comment = "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD";
    list.messages.back().details.senders = {"A"};
    for (KW_LabelEntry& entry : list.messages)
    {
        entry.details.attributes.clear();
        for (auto& details : entry.details.signalDetails)
        {
            details.second.attributes.clear();
        }
    }
    const t_ReadLabels read = ReadLabels(text, kCsv);
    EXPECT_EQ(TextOfLabelList(read.list), TextOfLabelList(list));
    EXPECT_EQ(WriteLabels(read.list, kCsv), text);
}

TEST(LabelCsv, SpreadsheetOfAnotherCountryIsNotUnderstood)
{
    const t_ReadLabels read =
        ReadLabels("\xEF\xBB\xBFLabelList 1.0;lin;Wiper;;;;;\r\n"
                   "BitLength ;Signal;StartBit;Message;Length;Identifier;Labels;Fd\r\n"
                   ";;;;;;;\r\n"
                   ";;;Status;2;33;;NO\r\n"
                   "3;Mode;0;;;;\"0=Off; 1=On, \"\"slow\"\";\";\r\n"
                   "1;\"Blocked\";8;Status;;;;\r\n"
                   ";;;Empty;0;0x22;;\r\n",
                   kCsv);
    EXPECT_EQ(read.reports, QStringList());
    EXPECT_EQ(WriteLabels(read.list, kCsv).split('\n').mid(2).join('\n').toStdString(),
              "Status,0x21,6,2,,,,,,,,,,,,,,,,,,,,\n"
              "Status,,,,,,,,Mode,0,3,LITTLE_ENDIAN,ENUM,1,0,0,0,,\"0=Off;1=On, \"\"slow\"\"\","
              ",,,,\n"
              "Status,,,,,,,,Blocked,8,1,LITTLE_ENDIAN,UNSIGNED_INT,1,0,0,0,,,,,,,\n"
              "Empty,0x22,6,0,,,,,,,,,,,,,,,,,,,,\n");
}

TEST(LabelFile, BadMessageTakesOthersWithIt)
{
    KW_LabelReadOptions options;
    options.skipsBadMessages = true;
    const t_ReadLabels csv =
        ReadLabels("LabelList 1.0,CAN\n"
                   "Message,Identifier,Length,Signal,StartBit,BitLength\n"
                   "A,1,8\n,,,s,0,8\nB,2,8\n,,,s,0,65\n,,,t,0,x\nC,3,8\n,,,s,0,8\n",
                   kCsv, options);
    EXPECT_EQ(csv.reports,
              QStringList({"7:8: error: BitLength: \"x\" is no whole number from 0 to 4294967295",
                           "5:1: error: message \"B\" is left out"}));
    const t_ReadLabels xml =
        ReadLabels("<LabelList Version=\"1.0\" Protocol=\"CAN\">\n"
                   "<Message Name=\"A\" Identifier=\"1\" Length=\"1\"/>"
                   "<Message Name=\"B\" Identifier=\"2048\" Length=\"1\"/>"
                   "<Message Name=\"C\" Identifier=\"3\" Length=\"1\"/></LabelList>",
                   kXml, options);
    EXPECT_EQ(xml.reports,
              QStringList({"2:46: error: message \"B\": identifier 2048 has more than 11 bits",
                           "2:46: error: message \"B\" is left out"}));
    for (const t_ReadLabels& read : {csv, xml})
    {
        EXPECT_EQ(read.code, eKW_ACC_WARNING);
        ASSERT_EQ(read.list.messages.size(), 2U);
        EXPECT_EQ(read.list.messages.back().message.getName(), "C");
    }
}

TEST(LabelFile, CutOffFileIsHalfTaken)
{
    for (const KW_LABEL_FILE_FORMAT format : {kXml, kCsv})
    {
        const QString name = QStringLiteral(KWI_LABEL_EXAMPLES "/wiper-lin.") +
                             QLatin1String(format == kXml ? "xml" : "csv");
        const QByteArray whole = ContentsOf(name);
        ASSERT_GT(whole.size(), 1000);
        for (int size = 0; size < static_cast<int>(whole.size()) - 1; ++size)
        {
            const QByteArray cut = whole.left(size);
            const t_ReadLabels read = ReadLabels(cut, format);
            if (KW_IsAccepted(read.code)) // of CSV, between two lines and within the last cell
            {
                EXPECT_EQ(format, kCsv);
                const auto begin = cut.lastIndexOf('\n') + 1;
                EXPECT_TRUE(begin == size || cut.mid(begin).count(',') == 23)
                    << cut.mid(begin).toStdString();
            }
            else
            {
                EXPECT_EQ(read.reports.filter(QStringLiteral("error: ")).size(), 1) << size;
                EXPECT_TRUE(read.list.messages.empty());
            }
        }
    }
}

TEST(LabelFile, MillionSignalsTakeMemoryOfThem)
{
    const struct
    {
        KW_LABEL_FILE_FORMAT format;
        QByteArray head;
        QByteArray signal;
        const char* report;
    } rows[] = {
        {kDbc, kDbcHead + "BO_ 1 M: 8 A\n", " SG_ S:0|8@1+(1,0)[0|0]\"\"B\n",
         "16387:2: error: message \"M\": more than 16384 signals"},
        {kXml,
         "<LabelList Version=\"1.0\" Protocol=\"CAN\">\n<Message Identifier=\"1\" Length=\"8\">\n",
         "<Signal StartBit=\"0\" BitLength=\"8\"/>\n",
         "16387:1: error: more than 16384 signals in a message"},
        {kCsv, "LabelList 1.0,CAN\nMessage,Identifier,Length,Signal,StartBit,BitLength\n,1,8\n",
         ",,,,0,8\n", "16388:1: error: more than 16384 signals in a message"}};
    for (const auto& [format, head, signal, report] : rows)
    {
        EXPECT_EQ(ReadLabels(head + signal.repeated(1000000), format).reports,
                  QStringList(QLatin1String(report)));
    }
}
