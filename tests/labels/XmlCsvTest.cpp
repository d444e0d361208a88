// SPDX-License-Identifier: MIT
#include "labels/LabelListText.h"
#include "labels/ReadLabels.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>

namespace
{
constexpr auto kXml = eKW_LABEL_FILE_FORMAT_XML;
constexpr auto kCsv = eKW_LABEL_FILE_FORMAT_CSV;

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

TEST(LabelCsv, LosesWhatItDoesNotName)
{
    KW_LabelList list = Everything();
    list.database.otherStatements = {"EV_ a"};
    list.messages.back().details.senders = {"", "A"};
    list.messages.front().details.comment = std::string("\x01\0\xFF", 3);
    QStringList reports;
    const QByteArray text = WriteLabels(list, kCsv, &reports);
    const QStringList expected = {
        "warning: CSV does not hold 10 attributes: left out",
        "warning: CSV does not hold 3 nodes: left out",
        "warning: CSV does not hold 1 value tables with a name: left out",
        "warning: CSV does not hold 4 definitions of attributes: left out",
        "warning: CSV does not hold 1 other statements of the CAN database: left out",
        "warning: CSV does not hold 1 version of the CAN database: left out",
        "warning: CSV does not hold 1 empty names of senders and receivers: left out",
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
