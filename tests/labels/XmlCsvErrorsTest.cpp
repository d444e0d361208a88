// SPDX-License-Identifier: MIT
#include "labels/ReadLabels.h"

#include <ostream>

namespace
{

const QByteArray kXmlHead = "<LabelList Version=\"1.0\" Protocol=\"CAN\">\n";
const QByteArray kXmlMessage = kXmlHead + "<Message Name=\"M\" Identifier=\"1\" Length=\"2\">";
const QByteArray kXmlEnd = "</Message></LabelList>";
const QByteArray kCsvHead =
    "LabelList 1.0,CAN\nMessage,Identifier,Length,Signal,StartBit,BitLength,Factor,Unit,"
    "Labels,Condition\n";
const QByteArray kCsvMessage = kCsvHead + "M,1,8\n";

/** A file and what is said of it; refused when there is an error. */
struct t_BadFile
{
    const char* name;
    KW_LABEL_FILE_FORMAT format;
    QByteArray text;
    QStringList reports;
};

void PrintTo(const t_BadFile& file, std::ostream* out)
{
    *out << file.name;
}

const QString kNotText = QStringLiteral("no text in UTF-8: damaged, in another encoding, or with a "
                                        "control character");

const t_BadFile kBadFiles[] = {
    {"OtherXml", kXml, "\n<List/>", {"2:1: error: no label list: its element is List"}},
    {"NoVersion", kXml, "<LabelList Protocol=\"CAN\"/>", {"1:1: error: Version is missing"}},
    {"NoProtocol", kXml, "<LabelList Version=\"1\"/>", {"1:1: error: Protocol is missing"}},
    {"NewerMajor",
     kXml,
     "<LabelList Version=\"2.0\" Protocol=\"CAN\"/>",
     {"1:12: error: Version: 2.0 is newer than what is read here, 1.0"}},
    {"NoNumberAsVersion",
     kXml,
     "<LabelList Version=\"1,0\" Protocol=\"CAN\"/>",
     {"1:12: error: Version: \"1,0\" is no version such as 1.0"}},
    {"NewerMinor",
     kXml,
     "<LabelList Version=\"1.9\" Protocol=\"CAN\" New=\"x\">\n <New a=\"b\"><c/></New></LabelList>",
     {"1:41: warning: attribute New is not known here and left out",
      "2:2: warning: element New is not known here and left out"}},
    {"OtherProtocol",
     kXml,
     "<LabelList Version=\"1.0\" Protocol=\"Bus\"/>",
     {"1:26: error: Protocol: \"Bus\" is none of SPI, I2C, UART, CAN, LIN, SENT"}},
    {"DocumentType",
     kXml,
     "<!DOCTYPE a [<!ENTITY b \"c\">]>\n" + kXmlHead + "</LabelList>",
     {"1:30: error: document types and entities are not taken"}},
    {"OtherEncoding",
     kXml,
     "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>" + kXmlHead + "</LabelList>",
     {"1:43: error: in another encoding than UTF-8"}},
    {"ControlCharacter", kXml, kXmlHead + "é\x01", {"2:3: error: " + kNotText}},
    {"HalfACharacter", kXml, kXmlHead + "<\xC3\"", {"2:2: error: " + kNotText}},
    {"Surrogate", kCsv, "LabelList \xED\xA0\x80", {"1:11: error: " + kNotText}},
    {"NoCharacter", kCsv, "LabelList 1.0\n\xEF\xBF\xBF", {"2:1: error: " + kNotText}},
    {"TooDeep",
     kXml,
     kXmlHead + QByteArray("<a>").repeated(16),
     {"2:1: warning: element a is not known here and left out",
      "2:46: error: elements within more than 16 others"}},
    {"TooManyAttributes",
     kXml,
     kXmlHead + "<a" + QByteArray(" b=\"\"").repeated(65) + "/>",
     {"error: an element has more than 64 attributes"}},
    {"FieldsOfMessage",
     kXml,
     kXmlHead +
         "<Message Name=\"é\" \n CycleTime=\"0\" Identifier=\"x\" Length=\"-1\"/></LabelList>",
     {"3:16: error: Identifier: \"x\" is no identifier such as 256 or 0x100",
      "3:31: error: Length: \"-1\" is no whole number from 0 to 4294967295",
      "3:2: error: CycleTime: \"0\" is no time above 0 s"}},
    {"NothingOfMessage",
     kXml,
     kXmlHead + "<Message/></LabelList>",
     {"2:1: error: Identifier is missing", "2:1: error: Length is missing"}},
    {"FieldsOfSignal",
     kXml,
     kXmlMessage +
         "\n<Signal BitLength=\"8\" Endianness=\"MIDDLE\" ValueType=\"INT\"\n"
         "Factor=\"0,5\" Offset=\"1e400\" Minimum=\"\" Maximum=\"1x\"/>" +
         kXmlEnd,
     {"3:1: error: StartBit is missing",
      "3:23: error: Endianness: \"MIDDLE\" is none of BIG_ENDIAN, LITTLE_ENDIAN",
      "3:43: error: ValueType: \"INT\" is none of UNSIGNED_INT, ENUM, SIGNED_INT, FLOAT, DOUBLE",
      "4:1: error: Factor: \"0,5\" is no number: decimals stand behind a point",
      "4:14: error: Offset: \"1e400\" is no number", "4:29: error: Minimum: \"\" is no number",
      "4:40: error: Maximum: \"1x\" is no number"}},
    {"OutsideOfPayload",
     kXml,
     kXmlMessage +
         "\n<Signal Name=\"s\" StartBit=\"15\" BitLength=\"2\"/>\n"
         "<Signal Name=\"t\" StartBit=\"0\" BitLength=\"8\" Factor=\"nan\"/>" +
         kXmlEnd,
     {"3:1: error: signal \"s\": does not lie in the payload: start bit 15, 2 bits, 16 in all",
      "4:1: error: signal \"t\": factor, offset, minimum and maximum have to be finite numbers"}},
    {"Selection",
     kXml,
     kXmlMessage +
         "\n<Signal Name=\"s\" StartBit=\"0\" BitLength=\"4\" SelectedBy=\"1\"/>\n"
         "<Signal Name=\"t\" StartBit=\"4\" BitLength=\"4\" Multiplexor=\"s\" "
         "SelectedBy=\"3-1\" IsMultiplexor=\"maybe\"/>" +
         kXmlEnd,
     {"3:45: error: SelectedBy: \"1\" says nothing without a Multiplexor",
      "4:78: error: IsMultiplexor: \"maybe\" is neither true nor false",
      "4:61: error: SelectedBy: \"3-1\" is no list of raw values such as 0-3, 7"}},
    {"ElementsOfSignal",
     kXml,
     kXmlMessage +
         "<Sender/>\n<Signal Name=\"s\" StartBit=\"0\" BitLength=\"4\"><Label Value=\"x\"/>"
         "<Label/><Label Value=\"1\"/><Label Value=\"1\" Text=\"a\"/></Signal>" +
         kXmlEnd,
     {"2:45: error: Name is missing", "3:45: error: Value: \"x\" is no whole number",
      "3:63: error: Value is missing",
      "3:89: warning: a label of 1 stands here already; the first counts"}},
    {"AttributesOfMessage",
     kXml,
     kXmlMessage + "\n<Attribute Name=\"a\"/><Attribute Name=\"b\" Value=\"1\" Text=\"1\"/>text" +
         kXmlEnd,
     {"3:1: error: an attribute has either a Value or a Text",
      "3:22: error: an attribute has either a Value or a Text",
      "3:62: warning: text outside of attributes is left out"}},
    {"Database",
     kXml,
     kXmlHead + "<Database Encoding=\"UTF-16\">\n<Node/>\n<AttributeDefinition Name=\"a\" "
                "DefaultValue=\"1\" DefaultText=\"2\"/></Database></LabelList>",
     {"2:1: error: Encoding: \"UTF-16\" is neither UTF-8 nor Windows-1252",
      "3:1: error: Name is missing",
      "4:1: error: a default is either a DefaultValue or a DefaultText"}},
    {"Nothing",
     kCsv,
     "",
     {"1:1: error: no label list: its first line begins with \"LabelList 1.0\""}},
    {"OtherCsv",
     kCsv,
     "Message,Length\n",
     {"1:1: error: no label list: its first line begins with \"LabelList 1.0\""}},
    {"NewerMajorInCsv",
     kCsv,
     "LabelList 2.0;CAN\n",
     {"1:1: error: Version: 2.0 is newer than what is read here, 1.0"}},
    {"OtherProtocolInCsv",
     kCsv,
     "LabelList 1.0;\"Bus\"\n",
     {"1:15: error: Protocol: \"Bus\" is none of SPI, I2C, UART, CAN, LIN, SENT"}},
    {"NoColumns",
     kCsv,
     "LabelList 1.0,CAN\n",
     {"error: a line with the names of the columns is missing"}},
    {"MissingColumn",
     kCsv,
     "LabelList 1.0,CAN,n,c,more\nMessage,Signal,Length,StartBit\n",
     {"1:23: warning: \"more\" stands in no column and is left out",
      "2:1: error: column BitLength is missing"}},
    {"ColumnTwice",
     kCsv,
     "LabelList 1.0,CAN\nMessage,Signal,Signal\n",
     {"2:16: error: column Signal stands here twice"}},
    {"UnknownColumn",
     kCsv,
     "LabelList 1.1,CAN\nMessage,Identifier,Length,Signal,StartBit,BitLength,Colour,\n"
     "M,1,8,,,,red,blue\n",
     {"2:53: warning: column Colour is not known here and left out",
      "3:14: warning: \"blue\" stands in no column and is left out"}},
    {"OpenQuotes",
     kCsv,
     kCsvHead + "M,\"1\n",
     {"3:3: error: a quotation mark that nothing closes"}},
    {"BehindQuotes",
     kCsv,
     kCsvHead + "\"é\"x,\n",
     {"3:5: error: text behind the closing quotation mark"}},
    {"ManyColumns",
     kCsv,
     kCsvHead + QByteArray(",").repeated(256) + '\n',
     {"3:257: error: more than 256 columns"}},
    {"SignalFirst",
     kCsv,
     kCsvHead + "M,1,,s,0,8\n",
     {"3:3: warning: Identifier says nothing of a signal and is left out",
      "3:1: error: a signal stands above the first message"}},
    {"SortedLines",
     kCsv,
     kCsvMessage + "N,,,s,0,8\n",
     {"4:1: error: a signal of \"N\" stands below message \"M\""}},
    {"FieldsInCsv",
     kCsv,
     kCsvHead + "M,1,8,,,,2\n,,,s,0,8,\"0,5\",V\n,,,t,0,,1\n",
     {"3:10: warning: Factor says nothing of a message and is left out",
      "4:10: error: Factor: \"0,5\" is no number: decimals stand behind a point",
      "5:1: error: BitLength is missing"}},
    {"LabelsInCsv",
     kCsv,
     kCsvMessage + ",,,s,0,8,,,0=a;b;0=c,m\n",
     {"4:22: error: Condition: \"m\" is no condition such as Mode = 0-3, 7",
      "4:12: error: Labels: \"b\" is no label such as 0=Off",
      "4:12: warning: Labels: 0 has a label already; the first counts"}},
    {"CutOff",
     kCsv,
     kCsvMessage + "N,2,8,,",
     {"4:1: error: the file ends within a line, which has 5 of 10 cells: it was cut off"}},
    {"IdentifierTwice",
     kCsv,
     kCsvMessage + "N,0x1,8\n",
     {"4:1: warning: message \"N\" has the identifier of \"M\", which comes first"}},
};

class BadLabelFile : public testing::TestWithParam<t_BadFile>
{
};
} // namespace

TEST_P(BadLabelFile, IsTakenOrSaysElsewhereWhatIsWrong)
{
    const t_ReadLabels read = ReadLabels(GetParam().text, GetParam().format);
    EXPECT_EQ(read.reports, GetParam().reports);
    const bool isRefused = !read.reports.filter(QStringLiteral("error: ")).isEmpty();
    EXPECT_EQ(read.code, isRefused ? eKW_ACC_FILE_NOT_UNDERSTOOD : eKW_ACC_WARNING);
}

INSTANTIATE_TEST_SUITE_P(Files, BadLabelFile, testing::ValuesIn(kBadFiles),
                         [](const auto& test) { return std::string(test.param.name); });
