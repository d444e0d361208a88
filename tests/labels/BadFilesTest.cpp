// SPDX-License-Identifier: MIT
#include "labels/ReadLabels.h"

namespace
{

/** A file behind a head, and all that is said of it; refused when there is an error among that. */
struct t_BadFile
{
    const char* name;
    QByteArray text;
    const char* reports;
};

void PrintTo(const t_BadFile& file, std::ostream* out)
{
    *out << file.name;
}

const t_BadFile kDbcFiles[] = {
    {"ExtendedWithoutFlag", "BO_ 2048 M: 8 A\n",
     "2:5: warning: identifier 2048 has more than 11 bits; it is taken for an extended one, whose "
     "number is 2147485696"},
    {"MarkWithoutNumber",
     "BO_ 1 M: 8 A\n SG_ P M : 0|8@1+ (1,0) [0|0] \"\" B\n SG_ S m : 8|8@1+ (1,0) [0|0] \"\" B\n",
     "4:6: warning: signal \"S\": the mark of a multiplexed signal has no number; 0 is taken"},
    {"NoMultiplexor", "BO_ 1 M: 8 A\n SG_ S m1 : 0|8@1+ (1,0) [0|0] \"\" B\n",
     "3:2: warning: signal \"S\" is multiplexed, but the message has no multiplexor; it is taken "
     "as always there"},
    {"TwoMultiplexors",
     "BO_ 1 M: 8 A\n SG_ P M : 0|8@1+ (1,0) [0|0] \"\" B\n SG_ Q M : 8|8@1+ (1,0) [0|0] \"\" B\n"
     " SG_ S m1 : 16|8@1+ (1,0) [0|0] \"\" B\n",
     "5:2: warning: signal \"S\" is multiplexed, and the message has several multiplexors; \"P\" "
     "is taken"},
    {"NoSender", "BO_ 1 M: 8\n SG_ S : 0|8@1+ (1,0) [0|0] \"\" B\n",
     "3:2: warning: message \"M\": the sender is missing; it is taken for nobody"},
    {"NoReceivers", "BO_ 1 M: 8 A\n SG_ S : 0|8@1+ (1,0) [0|0] \"\"\n",
     "4:1: warning: signal \"S\": the receivers are missing; nobody is taken"},
    {"EmptyReceiver", "BO_ 1 M: 8 A\n SG_ S : 0|8@1+ (1,0) [0|0] \"\" A,,B\n",
     "3:34: warning: a name is missing before the \",\""},
    {"Overlap", kDbcMessage + " SG_ T : 7|8@1+ (1,0) [0|0] \"\" B\n",
     "4:2: warning: signal \"T\": shares bits with another signal"},
    {"SignalTwice", kDbcMessage + " SG_ S : 8|8@1+ (1,0) [0|0] \"\" B\n",
     "4:2: warning: signal \"S\": another signal of the message has this name"},
    {"IdentifierTwice", "BO_ 1 M: 8 A\nBO_ 1 N: 8 A\n",
     "3:1: warning: message \"N\" has the identifier of \"M\", which comes first"},
    {"MessageTwice", "BO_ 1 M: 8 A\nBO_ 2 M: 8 A\n",
     "3:1: warning: another message has the name \"M\""},
    {"NodeTwice", "BU_: C A\n", "2:8: warning: node \"A\" is there already"},
    {"NoIdentifier", "BO_ 1 M: 8 A\n SG_ Oil-1 : 0|8@1+ (1,0) [0|0] \"\" B\n",
     "3:2: warning: signal \"Oil-1\" is no identifier; it is written as \"Oil_1\", with its name "
     "in an attribute"},
    {"BlankInName",
     "BO_ 1 M: 8 A\n SG_ Oil level : 0|8@1+ (1,0) [0|0] \"\" B\nVAL_ 1 Oil level 0 \"x\";\n",
     "3:2: warning: signal \"Oil level\" is no identifier; it is written as \"Oil_level\", with "
     "its name in an attribute"},
    {"LongName", "BO_ 1 A23456789012345678901234567890123: 8 A\n",
     "2:1: warning: names of more than 32 characters: 1; they are written short, with their names "
     "in an attribute"},
    {"LineEnds", "BO_ 1 M: 8 A\r\nBO_ 2 N: 8 A\r\n",
     "2:13: warning: lines end with carriage return and line feed; they are written with a line "
     "feed"},
    {"UnknownMessage", "CM_ BO_ 7 \"x\";\n",
     "2:9: warning: there is no message 7; what \"CM_\" says of it is left out"},
    {"UnknownSignal", kDbcMessage + "VAL_ 1 T 0 \"x\";\n",
     "4:8: warning: message \"M\" has no signal \"T\"; what \"VAL_\" says of it is left out"},
    {"UnknownNode", "CM_ BU_ C \"x\";\n",
     "2:9: warning: there is no node \"C\"; what \"CM_\" says of it is left out"},
    {"UnknownStatement", "FOO_ 1 \"BO_\" ;\n",
     "2:1: warning: statement \"FOO_\" is unknown; it is kept as it stands"},
    {"NoSemicolon", kDbcMessage + "VAL_ 1 S 0 \"x\"\nBO_ 2 N: 8 A\n",
     "5:1: warning: the \";\" of \"VAL_\" is missing"},
    {"StraySemicolon", kDbcMessage + ";\n", "4:1: warning: a \";\" that ends nothing is left out"},
    {"LabelWithoutRoom", kDbcMessage + "VAL_ 1 S 256 \"x\" -1 \"y\" 255 \"z\";\n",
     "3:2: warning: signal \"S\": labels of values that it can not have are kept, and never shown: "
     "2"},
    {"LabelTwice", kDbcMessage + "VAL_ 1 S 1 \"x\" 1 \"y\";\n",
     "3:2: warning: signal \"S\": values with two labels, the last of which counts: 1"},
    {"AttributeWithoutDefinition", "BA_ \"X\" 1;\n",
     "2:5: warning: attribute \"X\" has no definition"},
    {"DefaultWithoutDefinition", "BA_DEF_DEF_ \"X\" 1;\n",
     "2:1: warning: attribute \"X\" has a default but no definition; it is left out"},
    {"ItsOwnMultiplexor", kDbcMessage + "SG_MUL_VAL_ 1 S S 0-1;\n",
     "4:1: warning: signal \"S\" can not select itself; the statement is left out"},
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
     "BO_ 1 M: 8 A\n SG_ S : 0|8@1+ (1,0) [0|0] \"k B\n SG_ T : 8|8@1+ (1,0) [0|0] \"\" B\n",
     "3:29: error: a unit has no end in its line"},
    {"EndInSignal", "BO_ 1 M: 8 A\n SG_ S : 0|8@1+ (1,",
     "3:20: error: a number expected, found the end of the file"},
    {"TextWithoutEnd", kDbcMessage + "CM_ BO_ 1 \"x;\n",
     "4:11: error: a text has no end\n"
     "4:11: error: a text has no end"},
    {"BehindSignal", kDbcMessage.chopped(1) + " (\n",
     "3:34: error: \"(\" does not belong to the message"},
    {"LostSync", "what is this", "2:1: error: \"what\" is no statement of CAN databases"},
    {"FloatOfEightBits", kDbcMessage + "SIG_VALTYPE_ 1 S : 1;\n",
     "3:2: error: signal \"S\": 8 bits; a float has 32"},
    {"UnknownType", kDbcMessage + "SIG_VALTYPE_ 1 S : 3;\n",
     "4:20: error: 3 is no type: 0 is a whole number, 1 a float, 2 a double"},
    {"LabelOfHalf", kDbcMessage + "VAL_ 1 S 0.5 \"x\";\n",
     "4:10: error: \"0.5\" labels no raw value: it has to be a whole number of 64 bits"},
    {"RangeBackwards",
     kDbcMessage + " SG_ P M : 8|8@1+ (1,0) [0|0] \"\" B\nSG_MUL_VAL_ 1 S P 2-1;\n",
     "5:19: error: values of a multiplexor expected, such as 0-3"},
    {"AttributeWithoutValue", "BA_ \"X\" ;\n",
     "2:9: error: a number or a text in quotes expected, found \";\""},
};

const QByteArray kXmlHead = "<LabelList Version=\"1.0\" Protocol=\"CAN\">\n";
const QByteArray kXmlMessage = kXmlHead + "<Message Name=\"M\" Identifier=\"1\" Length=\"2\">";
const QByteArray kXmlEnd = "</Message></LabelList>";
const QByteArray kCsvHead =
    "LabelList "
    "1.0,CAN\nMessage,Identifier,Length,Signal,StartBit,BitLength,Factor,Unit,Labels,Condition\n";
const QByteArray kCsvMessage = kCsvHead + "M,1,8\n";

const t_BadFile kXmlFiles[] = {
    {"OtherXml", "\n<List/>", "2:1: error: no label list: its element is List"},
    {"NoVersion", "<LabelList Protocol=\"CAN\"/>", "1:1: error: Version is missing"},
    {"NoProtocol", "<LabelList Version=\"1\"/>", "1:1: error: Protocol is missing"},
    {"NewerMajor", "<LabelList Version=\"2.0\" Protocol=\"CAN\"/>",
     "1:12: error: Version: 2.0 is newer than what is read here, 1.0"},
    {"NoNumberAsVersion", "<LabelList Version=\"1,0\" Protocol=\"CAN\"/>",
     "1:12: error: Version: \"1,0\" is no version such as 1.0"},
    {"NewerMinor",
     "<LabelList Version=\"1.9\" Protocol=\"CAN\" New=\"x\">\n <New a=\"b\"><c/></New></LabelList>",
     "1:41: warning: attribute New is not known here and left out\n"
     "2:2: warning: element New is not known here and left out"},
    {"OtherProtocol", "<LabelList Version=\"1.0\" Protocol=\"Bus\"/>",
     "1:26: error: Protocol: \"Bus\" is none of SPI, I2C, UART, CAN, LIN, SENT"},
    {"DocumentType", "<!DOCTYPE a [<!ENTITY b \"c\">]>\n" + kXmlHead + "</LabelList>",
     "1:30: error: document types and entities are not taken"},
    {"OtherEncoding", "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>" + kXmlHead + "</LabelList>",
     "1:43: error: in another encoding than UTF-8"},
    {"ControlCharacter", kXmlHead + "é\x01",
     "2:3: error: no text in UTF-8: damaged, in another encoding, or with a control character"},
    {"HalfACharacter", kXmlHead + "<\xC3\"",
     "2:2: error: no text in UTF-8: damaged, in another encoding, or with a control character"},
    {"TooDeep", kXmlHead + QByteArray("<a>").repeated(16),
     "2:1: warning: element a is not known here and left out\n"
     "2:46: error: elements within more than 16 others"},
    {"TooManyAttributes", kXmlHead + "<a" + QByteArray(" b=\"\"").repeated(65) + "/>",
     "error: an element has more than 64 attributes"},
    {"FieldsOfMessage",
     kXmlHead +
         "<Message Name=\"é\" \n CycleTime=\"0\" Identifier=\"x\" Length=\"-1\"/></LabelList>",
     "3:16: error: Identifier: \"x\" is no identifier such as 256 or 0x100\n"
     "3:31: error: Length: \"-1\" is no whole number from 0 to 4294967295\n"
     "3:2: error: CycleTime: \"0\" is no time above 0 s"},
    {"NothingOfMessage", kXmlHead + "<Message/></LabelList>",
     "2:1: error: Identifier is missing\n"
     "2:1: error: Length is missing"},
    {"FieldsOfSignal",
     kXmlMessage +
         "\n<Signal BitLength=\"8\" Endianness=\"MIDDLE\" ValueType=\"INT\"\n"
         "Factor=\"0,5\" Offset=\"1e400\" Minimum=\"\" Maximum=\"1x\"/>" +
         kXmlEnd,
     "3:1: error: StartBit is missing\n"
     "3:23: error: Endianness: \"MIDDLE\" is none of BIG_ENDIAN, LITTLE_ENDIAN\n"
     "3:43: error: ValueType: \"INT\" is none of UNSIGNED_INT, ENUM, SIGNED_INT, FLOAT, DOUBLE\n"
     "4:1: error: Factor: \"0,5\" is no number: decimals stand behind a point\n"
     "4:14: error: Offset: \"1e400\" is no number\n"
     "4:29: error: Minimum: \"\" is no number\n"
     "4:40: error: Maximum: \"1x\" is no number"},
    {"OutsideOfPayload",
     kXmlMessage +
         "\n<Signal Name=\"s\" StartBit=\"15\" BitLength=\"2\"/>\n"
         "<Signal Name=\"t\" StartBit=\"0\" BitLength=\"8\" Factor=\"nan\"/>" +
         kXmlEnd,
     "3:1: error: signal \"s\": does not lie in the payload: start bit 15, 2 bits, 16 in all\n"
     "4:1: error: signal \"t\": factor, offset, minimum and maximum have to be finite numbers"},
    {"Selection",
     kXmlMessage +
         "\n<Signal Name=\"s\" StartBit=\"0\" BitLength=\"4\" SelectedBy=\"1\"/>\n"
         "<Signal Name=\"t\" StartBit=\"4\" BitLength=\"4\" Multiplexor=\"s\" SelectedBy=\"3-1\" "
         "IsMultiplexor=\"maybe\"/>" +
         kXmlEnd,
     "3:45: error: SelectedBy: \"1\" says nothing without a Multiplexor\n"
     "4:78: error: IsMultiplexor: \"maybe\" is neither true nor false\n"
     "4:61: error: SelectedBy: \"3-1\" is no list of raw values such as 0-3, 7"},
    {"ElementsOfSignal",
     kXmlMessage +
         "<Sender/>\n<Signal Name=\"s\" StartBit=\"0\" BitLength=\"4\"><Label "
         "Value=\"x\"/><Label/><Label Value=\"1\"/><Label Value=\"1\" Text=\"a\"/></Signal>" +
         kXmlEnd,
     "2:45: error: Name is missing\n"
     "3:45: error: Value: \"x\" is no whole number\n"
     "3:63: error: Value is missing\n"
     "3:89: warning: a label of 1 stands here already; the first counts"},
    {"AttributesOfMessage",
     kXmlMessage + "\n<Attribute Name=\"a\"/><Attribute Name=\"b\" Value=\"1\" Text=\"1\"/>text" +
         kXmlEnd,
     "3:1: error: an attribute has either a Value or a Text\n"
     "3:22: error: an attribute has either a Value or a Text\n"
     "3:62: warning: text outside of attributes is left out"},
    {"Database",
     kXmlHead + "<Database Encoding=\"UTF-16\">\n<Node/>\n<AttributeDefinition Name=\"a\" "
                "DefaultValue=\"1\" DefaultText=\"2\"/></Database></LabelList>",
     "2:1: error: Encoding: \"UTF-16\" is neither UTF-8 nor Windows-1252\n"
     "3:1: error: Name is missing\n"
     "4:1: error: a default is either a DefaultValue or a DefaultText"},
};

const t_BadFile kCsvFiles[] = {
    {"Surrogate", "LabelList \xED\xA0\x80",
     "1:11: error: no text in UTF-8: damaged, in another encoding, or with a control character"},
    {"NoCharacter", "LabelList 1.0\n\xEF\xBF\xBF",
     "2:1: error: no text in UTF-8: damaged, in another encoding, or with a control character"},
    {"Nothing", "", "1:1: error: no label list: its first line begins with \"LabelList 1.0\""},
    {"OtherCsv", "Message,Length\n",
     "1:1: error: no label list: its first line begins with \"LabelList 1.0\""},
    {"NewerMajorInCsv", "LabelList 2.0;CAN\n",
     "1:1: error: Version: 2.0 is newer than what is read here, 1.0"},
    {"OtherProtocolInCsv", "LabelList 1.0;\"Bus\"\n",
     "1:15: error: Protocol: \"Bus\" is none of SPI, I2C, UART, CAN, LIN, SENT"},
    {"NoColumns", "LabelList 1.0,CAN\n", "error: a line with the names of the columns is missing"},
    {"MissingColumn", "LabelList 1.0,CAN,n,c,more\nMessage,Signal,Length,StartBit\n",
     "1:23: warning: \"more\" stands in no column and is left out\n"
     "2:1: error: column BitLength is missing"},
    {"ColumnTwice", "LabelList 1.0,CAN\nMessage,Signal,Signal\n",
     "2:16: error: column Signal stands here twice"},
    {"UnknownColumn",
     "LabelList 1.1,CAN\nMessage,Identifier,Length,Signal,StartBit,BitLength,Colour,\n"
     "M,1,8,,,,red,blue\n",
     "2:53: warning: column Colour is not known here and left out\n"
     "3:14: warning: \"blue\" stands in no column and is left out"},
    {"OpenQuotes", kCsvHead + "M,\"1\n", "3:3: error: a quotation mark that nothing closes"},
    {"BehindQuotes", kCsvHead + "\"é\"x,\n", "3:5: error: text behind the closing quotation mark"},
    {"ManyColumns", kCsvHead + QByteArray(",").repeated(256) + '\n',
     "3:257: error: more than 256 columns"},
    {"SignalFirst", kCsvHead + "M,1,,s,0,8\n",
     "3:3: warning: Identifier says nothing of a signal and is left out\n"
     "3:1: error: a signal stands above the first message"},
    {"SortedLines", kCsvMessage + "N,,,s,0,8\n",
     "4:1: error: a signal of \"N\" stands below message \"M\""},
    {"FieldsInCsv", kCsvHead + "M,1,8,,,,2\n,,,s,0,8,\"0,5\",V\n,,,t,0,,1\n",
     "3:10: warning: Factor says nothing of a message and is left out\n"
     "4:10: error: Factor: \"0,5\" is no number: decimals stand behind a point\n"
     "5:1: error: BitLength is missing"},
    {"LabelsInCsv", kCsvMessage + ",,,s,0,8,,,0=a;b;0=c,m\n",
     "4:22: error: Condition: \"m\" is no condition such as Mode = 0-3, 7\n"
     "4:12: error: Labels: \"b\" is no label such as 0=Off\n"
     "4:12: warning: Labels: 0 has a label already; the first counts"},
    {"CutOff", kCsvMessage + "N,2,8,,",
     "4:1: error: the file ends within a line, which has 5 of 10 cells: it was cut off"},
    {"IdentifierTwice", kCsvMessage + "N,0x1,8\n",
     "4:1: warning: message \"N\" has the identifier of \"M\", which comes first"},
};

class BadLabelFile
    : public testing::TestWithParam<std::tuple<KW_LABEL_FILE_FORMAT, QByteArray, t_BadFile>>
{
public:
    static std::string Name(const testing::TestParamInfo<ParamType>& test)
    {
        return std::get<t_BadFile>(test.param).name;
    }
};
} // namespace

TEST_P(BadLabelFile, IsTakenOrSaysElsewhereWhatIsWrong)
{
    const auto& [format, head, file] = GetParam();
    const t_ReadLabels read = ReadLabels(head + file.text, format);
    EXPECT_EQ(read.reports.join('\n').toStdString(), file.reports);
    const bool isRefused = !read.reports.filter(QStringLiteral("error: ")).isEmpty();
    EXPECT_EQ(read.code, isRefused ? eKW_ACC_FILE_NOT_UNDERSTOOD : eKW_ACC_WARNING);
    EXPECT_TRUE(!isRefused || read.list.messages.empty());
}

INSTANTIATE_TEST_SUITE_P(Dbc, BadLabelFile,
                         testing::Combine(testing::Values(kDbc), testing::Values(kDbcHead),
                                          testing::ValuesIn(kDbcFiles)),
                         BadLabelFile::Name);
INSTANTIATE_TEST_SUITE_P(Xml, BadLabelFile,
                         testing::Combine(testing::Values(kXml), testing::Values(""),
                                          testing::ValuesIn(kXmlFiles)),
                         BadLabelFile::Name);
INSTANTIATE_TEST_SUITE_P(Csv, BadLabelFile,
                         testing::Combine(testing::Values(kCsv), testing::Values(""),
                                          testing::ValuesIn(kCsvFiles)),
                         BadLabelFile::Name);
