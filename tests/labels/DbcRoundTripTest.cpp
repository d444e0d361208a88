// SPDX-License-Identifier: MIT
#include "FileText.h"
#include "labels/LabelListText.h"
#include "labels/ReadLabels.h"

#include <QDir>

namespace
{
constexpr auto kDbc = eKW_LABEL_FILE_FORMAT_DBC;

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

INSTANTIATE_TEST_SUITE_P(All, Databases, testing::ValuesIn(Databases::All()),
                         [](const auto& test) { return test.param; });
} // namespace
