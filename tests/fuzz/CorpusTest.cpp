// SPDX-License-Identifier: MIT
#include "fuzz/SettingsTarget.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

namespace
{
/** Path and content of each file of a folder of the corpus. */
std::vector<std::pair<QString, QByteArray>> Corpus(const char* folder)
{
    std::vector<std::pair<QString, QByteArray>> files;
    const QDir dir(QStringLiteral(KWI_CORPUS "/") + QString::fromLatin1(folder));
    for (const QFileInfo& info : dir.entryInfoList(QDir::Files, QDir::Name))
    {
        QFile file(info.filePath());
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        files.emplace_back(info.fileName(), file.readAll());
    }
    return files;
}
} // namespace

class SettingsCorpus : public testing::TestWithParam<bool>
{
};

TEST_P(SettingsCorpus, FileThatOnceBrokeTheReaderDoesSoAgain)
{
    const auto files = Corpus(GetParam() ? "settings-csv" : "settings-xml");
    ASSERT_GE(files.size(), 3U);
    for (const auto& [name, text] : files)
    {
        SCOPED_TRACE(name.toStdString());
        KW_TrySettingsFile(text, GetParam());
        // Cut anywhere, with a bit turned over: what a failing memory card leaves.
        for (qsizetype i = 0; i < text.size(); i += 1 + text.size() / 40)
        {
            KW_TrySettingsFile(text.left(i), GetParam());
            QByteArray spoilt = text;
            spoilt.data()[i] = static_cast<char>(text.at(static_cast<int>(i)) ^ 4);
            KW_TrySettingsFile(spoilt, GetParam());
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Formats, SettingsCorpus, testing::Bool(),
                         [](const auto& test) { return test.param ? "Csv" : "Xml"; });
