// SPDX-License-Identifier: MIT
#include "FileText.h"
#include "labels/ReadLabels.h"

#include <QDir>

namespace
{

class Databases : public testing::TestWithParam<std::string>
{
public:
    static std::vector<std::string> All()
    {
        std::vector<std::string> names;
        for (const QString& name :
             QDir(QStringLiteral(KWI_DATABASES)).entryList({QStringLiteral("*.dbc")}, QDir::Files))
        {
            names.push_back(name.chopped(4).toStdString());
        }
        return names;
    }
    static QByteArray Text(const std::string& name)
    {
        return ContentsOf(QStringLiteral(KWI_DATABASES "/") + QString::fromStdString(name) +
                          QStringLiteral(".dbc"));
    }
};

TEST_P(Databases, WrittenListIsAnother)
{
    const auto read = ReadLabels(Text(GetParam()), kDbc);
    EXPECT_EQ(read.reports.join('\n').toStdString(), "");
    EXPECT_EQ(read.code, eKW_ACC_OK);
    QStringList reports;
    const QByteArray written = WriteLabels(read.list, kDbc, &reports);
    EXPECT_EQ(reports.join('\n').toStdString(), "");
    const auto again = ReadLabels(written, kDbc);
    EXPECT_EQ(again.reports.join('\n').toStdString(), "");
    EXPECT_EQ(TextOfLabelList(again.list), TextOfLabelList(read.list));
    EXPECT_EQ(again.list.database.otherStatements, read.list.database.otherStatements);
    EXPECT_EQ(WriteLabels(again.list, kDbc), written);
}

/** What a list says, whatever encoding its file had. */
std::string Said(KW_LabelList list)
{
    list.database.isUtf8 = false;
    std::string text = TextOfLabelList(list);
    for (const std::string& statement : list.database.otherStatements)
    {
        text += statement + '\n';
    }
    return text;
}

// Whatever is read, unless the writer says what it loses.
TEST_P(Databases, SpoiltFileIsReadAsAnother)
{
    const QByteArray text = Text(GetParam());
    for (int i = 0; i < text.size(); i += 3)
    {
        SCOPED_TRACE(i);
        QByteArray spoilt = text;
        spoilt.data()[i] = static_cast<char>(text.at(i) ^ (1 << i % 7));
        const auto read = ReadLabels(spoilt, kDbc, {true});
        QStringList lost;
        const QByteArray written = WriteLabels(read.list, kDbc, &lost);
        const auto again = ReadLabels(written, kDbc);
        ASSERT_LE(again.code, eKW_ACC_WARNING) << again.reports.join('\n').toStdString();
        EXPECT_EQ(WriteLabels(again.list, kDbc), written);
        if (lost.isEmpty())
        {
            EXPECT_EQ(Said(again.list), Said(read.list));
        }
    }
}

TEST(DbcWriter, WritesOtherBytesThanStored)
{
    const QByteArray text = Databases::Text("canonical");
    EXPECT_EQ(WriteLabels(ReadLabels(text, kDbc).list, kDbc), text);
}

INSTANTIATE_TEST_SUITE_P(All, Databases, testing::ValuesIn(Databases::All()),
                         [](const auto& test) { return test.param; });
} // namespace
