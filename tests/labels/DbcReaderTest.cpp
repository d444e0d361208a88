// SPDX-License-Identifier: MIT
#include "FileText.h"
#include "labels/LabelListText.h"
#include "labels/ReadLabels.h"

namespace
{

const QByteArray kHead = "VERSION \"\" NS_ : BS_: BU_: A B\n";
const QByteArray kMessage = "BO_ 1 M: 8 A\n SG_ S : 0|8@1+ (1,0) [0|0] \"\" B\n";

struct t_Case
{
    const char* what;
    QByteArray text; ///< behind kHead, from line 2 on
    const char* reports;
};

class DbcCases : public testing::TestWithParam<t_Case>
{
};

std::string Reports(const QByteArray& text, bool skipsBadMessages = false)
{
    return ReadLabels(text, kDbc, {skipsBadMessages}).reports.join('\n').toStdString();
}

class DbcWarnings : public DbcCases
{
};

TEST_P(DbcWarnings, FileFromTheRoadIsRefused)
{
    const auto read = ReadLabels(kHead + GetParam().text, kDbc);
    EXPECT_EQ(read.code, eKW_ACC_WARNING);
    EXPECT_EQ(read.reports.join('\n').toStdString(), GetParam().reports);
}

const t_Case kWarnings[] = {
    {"ExtendedWithoutFlag", "BO_ 2048 M: 8 A\n",
     "2:5: warning: identifier 2048 has more than 11 bits; it is taken for an extended one, whose "
     "number is 2147485696"},
    {"MarkWithoutNumber",
     "BO_ 1 M: 8 A\n SG_ P M : 0|8@1+ (1,0) [0|0] \"\" B\n SG_ S m : 8|8@1+ (1,0) [0|0] \"\" B\n",
     "4:6: warning: signal \"S\": the mark of a multiplexed signal has no number; 0 is taken"},
    {"NoMultiplexor", "BO_ 1 M: 8 A\n SG_ S m1 : 0|8@1+ (1,0) [0|0] \"\" B\n",
     "3:2: warning: signal \"S\" is multiplexed, but the message has no multiplexor; it is taken "
     "as "
     "always there"},
    {"TwoMultiplexors",
     "BO_ 1 M: 8 A\n SG_ P M : 0|8@1+ (1,0) [0|0] \"\" B\n SG_ Q M : 8|8@1+ (1,0) [0|0] \"\" B\n"
     " SG_ S m1 : 16|8@1+ (1,0) [0|0] \"\" B\n",
     "5:2: warning: signal \"S\" is multiplexed, and the message has several multiplexors; \"P\" "
     "is "
     "taken"},
    {"NoSender", "BO_ 1 M: 8\n SG_ S : 0|8@1+ (1,0) [0|0] \"\" B\n",
     "3:2: warning: message \"M\": the sender is missing; it is taken for nobody"},
    {"NoReceivers", "BO_ 1 M: 8 A\n SG_ S : 0|8@1+ (1,0) [0|0] \"\"\n",
     "4:1: warning: signal \"S\": the receivers are missing; nobody is taken"},
    {"EmptyReceiver", "BO_ 1 M: 8 A\n SG_ S : 0|8@1+ (1,0) [0|0] \"\" A,,B\n",
     "3:34: warning: a name is missing before the \",\""},
    {"Overlap", kMessage + " SG_ T : 7|8@1+ (1,0) [0|0] \"\" B\n",
     "4:2: warning: signal \"T\": shares bits with another signal"},
    {"SignalTwice", kMessage + " SG_ S : 8|8@1+ (1,0) [0|0] \"\" B\n",
     "4:2: warning: signal \"S\": another signal of the message has this name"},
    {"IdentifierTwice", "BO_ 1 M: 8 A\nBO_ 1 N: 8 A\n",
     "3:1: warning: message \"N\" has the identifier of \"M\", which comes first"},
    {"MessageTwice", "BO_ 1 M: 8 A\nBO_ 2 M: 8 A\n",
     "3:1: warning: another message has the name \"M\""},
    {"NodeTwice", "BU_: C A\n", "2:8: warning: node \"A\" is there already"},
    {"NoIdentifier", "BO_ 1 M: 8 A\n SG_ Oil-1 : 0|8@1+ (1,0) [0|0] \"\" B\n",
     "3:2: warning: signal \"Oil-1\" is no identifier; it is written as \"Oil_1\", with its name "
     "in "
     "an attribute"},
    {"BlankInName",
     "BO_ 1 M: 8 A\n SG_ Oil level : 0|8@1+ (1,0) [0|0] \"\" B\nVAL_ 1 Oil level 0 \"x\";\n",
     "3:2: warning: signal \"Oil level\" is no identifier; it is written as \"Oil_level\", with "
     "its "
     "name in an attribute"},
    {"LongName", "BO_ 1 A23456789012345678901234567890123: 8 A\n",
     "2:1: warning: names of more than 32 characters: 1; they are written short, with their names "
     "in an attribute"},
    {"LineEnds", "BO_ 1 M: 8 A\r\nBO_ 2 N: 8 A\r\n",
     "2:13: warning: lines end with carriage return and line feed; they are written with a line "
     "feed"},
    {"UnknownMessage", "CM_ BO_ 7 \"x\";\n",
     "2:9: warning: there is no message 7; what \"CM_\" says of it is left out"},
    {"UnknownSignal", kMessage + "VAL_ 1 T 0 \"x\";\n",
     "4:8: warning: message \"M\" has no signal \"T\"; what \"VAL_\" says of it is left out"},
    {"UnknownNode", "CM_ BU_ C \"x\";\n",
     "2:9: warning: there is no node \"C\"; what \"CM_\" says of it is left out"},
    {"UnknownStatement", "FOO_ 1 \"BO_\" ;\n",
     "2:1: warning: statement \"FOO_\" is unknown; it is kept as it stands"},
    {"NoSemicolon", kMessage + "VAL_ 1 S 0 \"x\"\nBO_ 2 N: 8 A\n",
     "5:1: warning: the \";\" of \"VAL_\" is missing"},
    {"StraySemicolon", kMessage + ";\n", "4:1: warning: a \";\" that ends nothing is left out"},
    {"LabelWithoutRoom", kMessage + "VAL_ 1 S 256 \"x\" -1 \"y\" 255 \"z\";\n",
     "3:2: warning: signal \"S\": labels of values that it can not have are kept, and never shown: "
     "2"},
    {"LabelTwice", kMessage + "VAL_ 1 S 1 \"x\" 1 \"y\";\n",
     "3:2: warning: signal \"S\": values with two labels, the last of which counts: 1"},
    {"AttributeWithoutDefinition", "BA_ \"X\" 1;\n",
     "2:5: warning: attribute \"X\" has no definition"},
    {"DefaultWithoutDefinition", "BA_DEF_DEF_ \"X\" 1;\n",
     "2:1: warning: attribute \"X\" has a default but no definition; it is left out"},
    {"ItsOwnMultiplexor", kMessage + "SG_MUL_VAL_ 1 S S 0-1;\n",
     "4:1: warning: signal \"S\" can not select itself; the statement is left out"},
};

class DbcErrors : public DbcCases
{
};

TEST_P(DbcErrors, PlaceIsAnother)
{
    const auto read = ReadLabels(kHead + GetParam().text, kDbc);
    EXPECT_EQ(read.code, eKW_ACC_FILE_NOT_UNDERSTOOD);
    EXPECT_EQ(read.reports.join('\n').toStdString(), GetParam().reports);
    EXPECT_TRUE(read.list.messages.empty());
}

const t_Case kErrors[] = {
    {"NoNumber", "BO_ M: 8 A\n", "2:5: error: the number of a message expected, found \"M\""},
    {"LargeNumber", "BO_ 4294967296 M: 8 A\n",
     "2:5: error: \"4294967296\" is out of range: the number of a message"},
    {"ThirtyBits", "BO_ 536870912 M: 8 A\n",
     "2:5: error: identifier 536870912 has more than 29 bits"},
    {"NoName", "BO_ 1 : 8 A\n",
     "2:7: error: the name of a message and a \":\" expected, found \":\""},
    {"NoLength", "BO_ 1 M: A\n", "2:10: error: the length of a message expected, found \"A\""},
    {"LongPayload", "BO_ 1 M: 65 A\n",
     "2:1: error: message \"M\": 65 bytes, the longest payload has 64"},
    {"SignalAlone", " SG_ S : 0|8@1+ (1,0) [0|0] \"\" B\n",
     "2:2: error: a signal without a message before it"},
    {"OutsideOfPayload", "BO_ 1 M: 1 A\n SG_ S : 1|8@1+ (1,0) [0|0] \"\" B\n",
     "3:2: error: signal \"S\": does not lie in the payload: start bit 1, 8 bits, 8 in all"},
    {"ByteOrder", "BO_ 1 M: 8 A\n SG_ S : 0|8@2+ (1,0) [0|0] \"\" B\n",
     "3:14: error: byte order 2: it is 0 for big-endian or 1 for little-endian signals"},
    {"NoSign", "BO_ 1 M: 8 A\n SG_ S : 0|8@1 (1,0) [0|0] \"\" B\n",
     "3:16: error: \"+\" or \"-\" behind the byte order expected, found \"(\""},
    {"FactorNan", "BO_ 1 M: 8 A\n SG_ S : 0|8@1+ (nan,0) [0|0] \"\" B\n",
     "3:18: error: \"nan\" is no finite number"},
    {"OffsetInf", "BO_ 1 M: 8 A\n SG_ S : 0|8@1+ (1,-1.#INF) [0|0] \"\" B\n",
     "3:20: error: \"-1.#INF\" is no finite number"},
    {"Factor400", "BO_ 1 M: 8 A\n SG_ S : 0|8@1+ (1e400,0) [0|0] \"\" B\n",
     "3:18: error: \"1e400\" is out of range of numbers"},
    {"StartBitTooLarge", "BO_ 1 M: 8 A\n SG_ S : 4294967296|8@1+ (1,0) [0|0] \"\" B\n",
     "3:10: error: \"4294967296\" is out of range: a start bit"},
    {"UnitInTwoLines",
     "BO_ 1 M: 8 A\n SG_ S : 0|8@1+ (1,0) [0|0] \"k B\n SG_ T : 8|8@1+ (1,0) "
     "[0|0] \"\" B\n",
     "3:29: error: a unit has no end in its line"},
    {"EndInSignal", "BO_ 1 M: 8 A\n SG_ S : 0|8@1+ (1,",
     "3:20: error: a number expected, found the end of the file"},
    {"TextWithoutEnd", kMessage + "CM_ BO_ 1 \"x;\n",
     "4:11: error: a text has no end\n"
     "4:11: error: a text has no end"},
    {"BehindSignal", kMessage.chopped(1) + " (\n",
     "3:34: error: \"(\" does not belong to the message"},
    {"LostSync", "what is this", "2:1: error: \"what\" is no statement of CAN databases"},
    {"FloatOfEightBits", kMessage + "SIG_VALTYPE_ 1 S : 1;\n",
     "3:2: error: signal \"S\": 8 bits; a float has 32"},
    {"UnknownType", kMessage + "SIG_VALTYPE_ 1 S : 3;\n",
     "4:20: error: 3 is no type: 0 is a whole number, 1 a float, 2 a double"},
    {"LabelOfHalf", kMessage + "VAL_ 1 S 0.5 \"x\";\n",
     "4:10: error: \"0.5\" labels no raw value: it has to be a whole number of 64 bits"},
    {"RangeBackwards", kMessage + " SG_ P M : 8|8@1+ (1,0) [0|0] \"\" B\nSG_MUL_VAL_ 1 S P 2-1;\n",
     "5:19: error: values of a multiplexor expected, such as 0-3"},
    {"AttributeWithoutValue", "BA_ \"X\" ;\n",
     "2:9: error: a number or a text in quotes expected, found \";\""},
};

std::string NameOf(const testing::TestParamInfo<t_Case>& test)
{
    return test.param.what;
}

INSTANTIATE_TEST_SUITE_P(Dbc, DbcWarnings, testing::ValuesIn(kWarnings), NameOf);
INSTANTIATE_TEST_SUITE_P(Dbc, DbcErrors, testing::ValuesIn(kErrors), NameOf);

TEST(DbcReader, OtherFileIsTakenForDatabase)
{
    EXPECT_EQ(Reports(""),
              "1:1: error: no CAN database: it does not begin with a statement of one");
    EXPECT_EQ(Reports("<xml/>"),
              "1:1: error: no CAN database: it does not begin with a statement of one");
    EXPECT_EQ(Reports("\xff\xfeV"), "1:1: error: encoded as UTF-16; CAN databases are Windows-1252 "
                                    "or UTF-8");
    EXPECT_EQ(Reports("BO_ 1 M: 8 A"), "1:1: warning: statements are missing: VERSION, NS_, BS_, "
                                       "BU_");
}

TEST(DbcReader, SkippedMessageLeavesTraces)
{
    const auto read = ReadLabels(
        kHead +
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

TEST(DbcReader, MillionSignalsTakeMemory)
{
    QByteArray text = kHead + "BO_ 1 M: 8 A\n";
    for (int i = 0; i < 1000000; ++i)
    {
        text += " SG_ S:0|8@1+(1,0)[0|0]\"\"B\n";
    }
    EXPECT_EQ(Reports(text), "16387:2: error: message \"M\": more than 16384 signals");
}

// A search to the end of the line for each would take hours.
TEST(DbcReader, MillionSignalsWithoutColonTakeTime)
{
    const auto read = ReadLabels(kHead + kMessage + QByteArray("SG_ x ").repeated(1000000), kDbc);
    EXPECT_EQ(read.reports.size(), 101);
}

/** A database of 200 messages that has a statement of every kind that repeats. */
QByteArray RealSized()
{
    QByteArray text = kHead;
    QByteArray further = "BA_DEF_ BO_ \"GenMsgCycleTime\" INT 0 65535;\n";
    for (int i = 0; i < 200; ++i)
    {
        const QByteArray number = QByteArray::number(i + 1);
        text += "BO_ " + number + " Message" + number +
                ": 8 A\n SG_ Page M : 0|4@1+ (1,0) [0|15] "
                "\"\" B\n SG_ Speed m1 : 15|12@0- (0.25,-10) [-512|511] \"km/h\" A,B\n\n";
        further += "CM_ SG_ " + number +
                   " Speed \"How fast;\nit is \\\"now\\\"\";\n"
                   "BA_ \"GenMsgCycleTime\" BO_ " +
                   number +
                   " 20;\n"
                   "VAL_ " +
                   number +
                   " Page 0 \"none\" 1 \"one\" ;\n"
                   "SG_MUL_VAL_ " +
                   number + " Speed Page 1-1, 3-4;\n";
    }
    return text + further;
}

TEST(DbcReader, TruncatedFileIsHalfRead)
{
    const QByteArray text = RealSized();
    ASSERT_EQ(Reports(text), "");
    for (int length = 0; length < text.size(); length += 97)
    {
        SCOPED_TRACE(length);
        const auto read = ReadLabels(text.left(length), kDbc);
        const auto errors = read.reports.filter(QStringLiteral("error: "));
        EXPECT_EQ(read.code > eKW_ACC_WARNING, !errors.isEmpty());
        EXPECT_LE(errors.size(), 2);
        const auto skipped = ReadLabels(text.left(length), kDbc, {true});
        EXPECT_TRUE(skipped.code <= eKW_ACC_WARNING || skipped.list.messages.empty());
    }
}

TEST(DbcReader, TextIsTakenForWord)
{
    const QByteArray text =
        kHead +
        "BO_ 3221225472 None: 0 A\n SG_ S : 0|8@1+ (1,0) [0|0] \";\" A\n SG_ T : "
        "0|8@1+ (1,0) [0|0] \"BO_\" A\n" +
        kMessage + "CM_ \"x\\\"\\\\\"; BA_DEF_ \"X\" ENUM \";\",\"BA_\";\n";
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
    const auto windows = ReadLabels(kHead + "CM_ \"\x80 \xfc \x81\";", kDbc);
    EXPECT_EQ(windows.list.comment, "\u20ac \u00fc \u0081");
    EXPECT_FALSE(windows.list.database.isUtf8);
    EXPECT_TRUE(WriteLabels(windows.list, kDbc).contains("\"\x80 \xfc \x81\""));
    const auto utf8 = ReadLabels("\xef\xbb\xbf" + kHead + "CM_ \"\u20ac\";", kDbc);
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
        kHead +
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

TEST(DbcReader, FormatOrTimeIsNotUnderstood)
{
    const auto read = ReadLabels(ContentsOf(QStringLiteral(KWI_DATABASES "/fd.dbc")), kDbc);
    ASSERT_EQ(read.list.messages.size(), 4U);
    const auto details = [&](int i) -> const KW_LabelMessageDetails&
    { return read.list.messages[static_cast<std::size_t>(i)].details; };
    EXPECT_TRUE(details(0).isFd && details(1).isFd && details(2).isFd && !details(3).isFd);
    EXPECT_TRUE(details(0).hasBitRateSwitch && !details(2).hasBitRateSwitch);
    EXPECT_EQ(details(0).cycleTime, 0.05);
    EXPECT_EQ(details(2).cycleTime, 29 / 1000.0);
    EXPECT_FALSE(details(3).cycleTime);
    // The length alone says so, too; and 100 ms are the default elsewhere.
    EXPECT_TRUE(ReadLabels("BO_ 1 M: 9 A", kDbc).list.messages.at(0).details.isFd);
    const auto usual =
        ReadLabels(ContentsOf(QStringLiteral(KWI_DATABASES "/attributes.dbc")), kDbc);
    EXPECT_EQ(usual.list.messages.at(0).details.cycleTime, 0.1);
    EXPECT_FALSE(usual.list.messages.at(1).details.cycleTime);
}

TEST(DbcReader, SignalIsThereAtAnotherTime)
{
    const auto read = ReadLabels(ContentsOf(QStringLiteral(KWI_DATABASES "/nested.dbc")), kDbc);
    const auto& details = read.list.messages.at(0).details.signalDetails;
    EXPECT_TRUE(details.at("0008Detail").isMultiplexor);
    EXPECT_EQ(details.at("0008Detail").multiplexor, "Kind");
    EXPECT_EQ(details.at("0016Upper").multiplexor, "Detail");
    const auto& hours = details.at("0008Hours").selectedBy;
    ASSERT_EQ(hours.size(), 2U);
    EXPECT_EQ(hours[0].first, 2U);
    EXPECT_EQ(hours[0].last, 4U);
    EXPECT_EQ(hours[1].first, 9U);
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
