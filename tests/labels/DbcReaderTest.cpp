// SPDX-License-Identifier: MIT
#include "FileText.h"
#include "labels/ReadLabels.h"

namespace
{

std::string Reports(const QByteArray& text)
{
    return ReadLabels(text, kDbc).reports.join('\n').toStdString();
}

TEST(DbcReader, OtherFileIsTakenForDatabase)
{
    for (const char* const text : {"", "<xml/>"})
    {
        EXPECT_EQ(Reports(text),
                  "1:1: error: no CAN database: it does not begin with a statement of one");
    }
    EXPECT_EQ(Reports("\xff\xfeV"), "1:1: error: encoded as UTF-16; CAN databases are Windows-1252 "
                                    "or UTF-8");
    EXPECT_EQ(Reports("BO_ 1 M: 8 A"), "1:1: warning: statements are missing: VERSION, NS_, BS_, "
                                       "BU_");
}

TEST(DbcReader, SkippedMessageLeavesTraces)
{
    const auto read = ReadLabels(
        kDbcHead +
            "BO_ 1 Bad: 8 A\n SG_ S : 0|8@1+ (oops,0) [0|0] \"\" B\n SG_ T : 8|8@1+ (1,0) [0|0] "
            "\"\" B\nBO_ 2 Good: 8 A\n SG_ S : 0|8@1+ (1,0) [0|0] \"\" B\nBO_ 3 Late: 1 A\n SG_ "
            "S : 0|9@1+ (1,0) [0|0] \"\" B\nBO_TX_BU_ 1 : A,B;\nCM_ SG_ 1 T \"x\";\nCM_ SG_ 2 S "
            "\"kept\";\nVAL_ 1 S 0 \"x\";\nSIG_GROUP_ 1 G 1 : S T;\nSIG_GROUP_ 3 H 1 : S;\n",
        kDbc, {true});
    EXPECT_EQ(read.code, eKW_ACC_WARNING);
    EXPECT_EQ(
        read.reports.join('\n').toStdString(),
        "3:18: error: \"oops\" is no finite number\n"
        "8:2: error: signal \"S\": does not lie in the payload: start bit 0, 9 bits, 8 in all");
    ASSERT_EQ(read.list.messages.size(), 1U);
    EXPECT_EQ(read.list.messages[0].message.getName(), "Good");
    EXPECT_EQ(read.list.messages[0].details.signalDetails.at("0000S").comment, "kept");
    EXPECT_TRUE(read.list.database.otherStatements.empty());
}

// A search to the end of the line for each would take hours.
TEST(DbcReader, MillionSignalsWithoutColonTakeTime)
{
    const auto read =
        ReadLabels(kDbcHead + kDbcMessage + QByteArray("SG_ x ").repeated(1000000), kDbc);
    EXPECT_EQ(read.reports.size(), 101);
}

TEST(DbcReader, TextIsTakenForWord)
{
    const QByteArray text =
        kDbcHead +
        "BO_ 3221225472 None: 0 A\n SG_ S : 0|8@1+ (1,0) [0|0] \";\" A\n SG_ T : "
        "0|8@1+ (1,0) [0|0] \"BO_\" A\n" +
        kDbcMessage + "CM_ \"x\\\"\\\\\"; BA_DEF_ \"X\" ENUM \";\",\"BA_\";\n";
    const auto read = ReadLabels(text, kDbc);
    EXPECT_EQ(read.reports.join('\n').toStdString(), "");
    EXPECT_EQ(read.list.comment, "x\"\\");
    const auto again = ReadLabels(WriteLabels(read.list, kDbc), kDbc);
    EXPECT_EQ(TextOfLabelList(again.list), TextOfLabelList(read.list));
    EXPECT_EQ(again.list.database.attributeDefinitions.at(0).type, "ENUM \";\",\"BA_\"");
    EXPECT_EQ(again.list.database.otherStatements, read.list.database.otherStatements);
    EXPECT_EQ(read.list.messages.size(), 1U);
}

TEST(DbcReader, EncodingIsMistaken)
{
    const auto windows = ReadLabels(kDbcHead + "CM_ \"\x80 \xfc \x81\";", kDbc);
    EXPECT_EQ(windows.list.comment, "\u20ac \u00fc \u0081");
    EXPECT_FALSE(windows.list.database.isUtf8);
    EXPECT_TRUE(WriteLabels(windows.list, kDbc).contains("\"\x80 \xfc \x81\""));
    const auto utf8 = ReadLabels("\xef\xbb\xbf" + kDbcHead + "CM_ \"\u20ac\";", kDbc);
    EXPECT_EQ(utf8.list.comment, "\u20ac");
    EXPECT_TRUE(utf8.list.database.isUtf8);
    // What Windows-1252 lacks, and what would be taken for UTF-8 in it, is written as UTF-8.
    for (const char* comment : {"\u03a9", "\u00c3\u00a9"})
    {
        KW_LabelList list;
        list.comment = comment;
        QStringList reports;
        EXPECT_TRUE(WriteLabels(list, kDbc, &reports).contains(comment));
        EXPECT_EQ(reports.size(), 1);
    }
}

TEST(DbcReader, LabelIsFiledUnderItsValue)
{
    const auto read = ReadLabels(
        kDbcHead +
            "BO_ 1 M: 8 A\n SG_ S : 0|8@1- (1,0) [0|0] \"\" B\n SG_ L : 8|40@1- (1,0) [0|0] \"\" "
            "B\nVAL_ 1 S -1 \"x\" 1 \"y\" 128 \"z\";\nVAL_ 1 L -1 \"x\";\n",
        kDbc);
    const auto& message = read.list.messages.at(0).message;
    const auto& labels = message.getSignals().at("0000S").getSignalEnumValues();
    EXPECT_EQ(labels, (CLabelListSignal::t_EnumTable{{255, "x"}, {1, "y"}}));
    const auto& details = read.list.messages[0].details.signalDetails;
    EXPECT_EQ(details.at("0000S").furtherLabels, (std::map<INT64, std::string>{{128, "z"}}));
    EXPECT_EQ(details.at("0008L").furtherLabels,
              (std::map<INT64, std::string>{{0xffffffffffLL, "x"}}));
}

// What a peer reads, too, stands in peer.py.
TEST(DbcReader, FormatOrTimeIsNotUnderstood)
{
    const auto read = ReadLabels(ContentsOf(QStringLiteral(KWI_DATABASES "/fd.dbc")), kDbc);
    const auto& messages = read.list.messages;
    EXPECT_TRUE(messages.at(0).details.hasBitRateSwitch);
    EXPECT_FALSE(messages.at(2).details.hasBitRateSwitch);
    EXPECT_FALSE(messages.at(3).details.cycleTime);
    // The length alone says so, too; and 100 ms are the default elsewhere.
    EXPECT_TRUE(ReadLabels("BO_ 1 M: 9 A", kDbc).list.messages.at(0).details.isFd);
    const auto usual =
        ReadLabels(ContentsOf(QStringLiteral(KWI_DATABASES "/attributes.dbc")), kDbc);
    EXPECT_EQ(usual.list.messages.at(0).details.cycleTime, 0.1);
    EXPECT_FALSE(usual.list.messages.at(1).details.cycleTime);
}

TEST(DbcReader, LongNameIsNotUsed)
{
    const auto read = ReadLabels(ContentsOf(QStringLiteral(KWI_DATABASES "/longnames.dbc")), kDbc);
    const auto& [message, details] = read.list.messages.at(0);
    EXPECT_EQ(message.getName(), "BatteryManagementCellVoltages_FirstModule");
    EXPECT_EQ(details.shortName, "BatteryManagementCellVoltages_01");
    EXPECT_EQ(details.senders.at(0), "TheControlUnitWithAVeryLongNameIndeed");
    EXPECT_EQ(details.signalDetails.at("0040Renamed").multiplexor,
              "SelectorOfEverythingElseInThisMessage");
    EXPECT_TRUE(details.attributes.empty());
}
} // namespace
