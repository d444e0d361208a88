// SPDX-License-Identifier: MIT
#include "labels/LabelListText.h"
#include "labels/ReadLabels.h"

#include <QDir>
#include <QFile>

namespace
{

QByteArray Contents(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

/** All that XML holds, of values that are as awkward as a list can have them. */
KW_LabelList Everything()
{
    KW_LabelList list =
        ReadLabels(Contents(QStringLiteral(KWI_LABEL_EXAMPLES "/engine-can.xml")), kXml).list;
    list.name = "a \"list\" & <more>; 'x', \\";
    list.comment = "two\nlines, \r\n a tabulator\t and \xF0\x9F\x9A\x97\xC2\x85";
    KW_LabelEntry entry;
    entry.message.setParameters("", "29", 0x1FFFFFFF, 64);
    entry.details.shortName = "Short;";
    entry.details.isFd = true;
    entry.details.cycleTime = 1.0 / 3.0;
    entry.details.senders = {"A;B", "C\\", " D "};
    entry.details.attributes = {{"", {"", true}}, {"Number", {"1e3", false}}};
    KW_LabelSignalDetails details;
    details.multiplexor = "x = y";
    details.selectedBy = {{0, 0}, {3, 18446744073709551615ULL}};
    details.receivers = {"R\n"};
    details.comment = "=1+1";
    details.furtherLabels = {{-500, "below"}, {4294967296, "above"}, {256, "\\;=\"\n"}};
    details.attributes = {{"A", {"v", true}}};
    CLabelListSignal signal("Ω", 7, 8, eKW_ENDIANNESS_BIG_ENDIAN,
                            eKW_SIGNAL_TRANSLATION_VALUE_TYPE_SIGNED_INT, 0.1, -1e-300, 5e-324,
                            1.7976931348623157e308, "µ\"");
    signal.addSignalEnumValue({255, "minus one"});
    signal.addSignalEnumValue({127, ""});
    KW_AddSignal(entry, signal, details);
    KW_AddSignal(entry, signal, {});
    KW_AddSignal(entry,
                 CLabelListSignal("x = y", 448, 64, eKW_ENDIANNESS_LITTLE_ENDIAN,
                                  eKW_SIGNAL_TRANSLATION_VALUE_TYPE_UNSIGNED_INT, 1, 0, 0, 0, ""));
    list.messages.push_back(entry);
    list.messages.push_back(entry);
    return list;
}
} // namespace

TEST(LabelExamples, ReportOrOtherBytes)
{
    const QDir dir(QStringLiteral(KWI_LABEL_EXAMPLES));
    const QStringList names = dir.entryList({QStringLiteral("*.xml")}, QDir::Files, QDir::Name);
    ASSERT_EQ(names.size(), 6);
    for (const QString& name : names)
    {
        SCOPED_TRACE(name.toStdString());
        const QByteArray xml = Contents(dir.filePath(name));
        const QByteArray csv = Contents(dir.filePath(name.chopped(3) + QStringLiteral("csv")));
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
    const KW_LabelList list = Everything();
    QStringList reports;
    const QByteArray text = WriteLabels(list, kXml, &reports);
    EXPECT_EQ(reports, QStringList());
    EXPECT_EQ(text, Contents(QStringLiteral(KWI_LABEL_FILES "/everything.xml")));
    const t_ReadLabels read = ReadLabels(text, kXml);
    EXPECT_EQ(TextOfLabelList(read.list), TextOfLabelList(list));
    EXPECT_EQ(WriteLabels(read.list, kXml), text);
}

TEST(LabelXml, LosesSomethingOfDatabase)
{
    const QDir dir(QStringLiteral(KWI_DATABASES));
    const QStringList names = dir.entryList({QStringLiteral("*.dbc")}, QDir::Files);
    ASSERT_GE(names.size(), 10);
    for (const QString& name : names)
    {
        SCOPED_TRACE(name.toStdString());
        KW_LabelList list =
            ReadLabels(Contents(dir.filePath(name)), eKW_LABEL_FILE_FORMAT_DBC).list;
        list.database.otherStatements.clear();
        EXPECT_FALSE(list.messages.empty());
        const t_ReadLabels read = ReadLabels(WriteLabels(list, kXml), kXml);
        EXPECT_EQ(TextOfLabelList(read.list), TextOfLabelList(list));
        EXPECT_EQ(WriteLabels(read.list, eKW_LABEL_FILE_FORMAT_DBC),
                  WriteLabels(list, eKW_LABEL_FILE_FORMAT_DBC));
    }
}

TEST(LabelCsv, LosesWhatItDoesNotName)
{
    KW_LabelList list = Everything();
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

namespace
{
/** Of the size that a car has: 300 messages of eight signals, with labels. */
KW_LabelList LargeList()
{
    KW_LabelList list;
    for (UINT32 i = 0; i < 300; ++i)
    {
        KW_LabelEntry& entry = list.messages.emplace_back();
        const std::string number = std::to_string(i);
        entry.message.setParameters("Message" + number, "11", i, 8);
        entry.details.comment = "What it is for " + number;
        for (UINT32 bit = 0; bit < 64; bit += 8)
        {
            CLabelListSignal signal("Signal" + std::to_string(bit) + "of" + number, bit, 8,
                                    eKW_ENDIANNESS_LITTLE_ENDIAN,
                                    eKW_SIGNAL_TRANSLATION_VALUE_TYPE_ENUM, 0.01 * i + 1, -0.5, 0,
                                    i,
                                    "\xC2\xB0"
                                    "C");
            signal.addSignalEnumValue({1, "On or so"});
            signal.addSignalEnumValue({0, "Off"});
            KW_AddSignal(entry, signal);
        }
    }
    return list;
}

/** What is left out of the reading of 1,000,000 signals in one message. */
QStringList ReadMillion(const QByteArray& head, const QByteArray& signal, const QByteArray& end,
                        KW_LABEL_FILE_FORMAT format)
{
    return ReadLabels(head + signal.repeated(1000000) + end, format).reports;
}
} // namespace

TEST(LabelFile, CutOffFileIsHalfTaken)
{
    const KW_LabelList list = LargeList();
    for (const KW_LABEL_FILE_FORMAT format : {kXml, kCsv})
    {
        const QByteArray whole = WriteLabels(list, format);
        const std::string all = TextOfLabelList(list);
        ASSERT_GT(whole.size(), 200000);
        EXPECT_TRUE(TextOfLabelList(ReadLabels(whole, format).list) == all);
        // Every place in the first messages, then some all over the file.
        for (int size = 0; size < static_cast<int>(whole.size()) - 1;
             size += size < 1500 ? 1 : 19997)
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
    const QStringList expected = {"16387:1: error: more than 16384 signals in a message"};
    EXPECT_EQ(ReadMillion("<LabelList Version=\"1.0\" Protocol=\"CAN\">\n"
                          "<Message Identifier=\"1\" Length=\"8\">\n",
                          "<Signal StartBit=\"0\" BitLength=\"8\"/>\n", "</Message></LabelList>",
                          kXml),
              expected);
    EXPECT_EQ(ReadMillion("LabelList 1.0,CAN\nMessage,Identifier,Length,Signal,StartBit,BitLength\n"
                          ",1,8\n",
                          ",,,,0,8\n", "", kCsv),
              QStringList({"16388:1: error: more than 16384 signals in a message"}));
}
