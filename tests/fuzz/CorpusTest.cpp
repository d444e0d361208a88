// SPDX-License-Identifier: MIT
#include "fuzz/Targets.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

namespace
{
struct t_Target
{
    const char* folder;
    void (*run)(const QByteArray&);
};

constexpr t_Target kTargets[] = {
    {"Expressions", KW_TryExpressions},
    {"FrameLines", KW_TryFrameLines},
    {"LabelCsv", KW_TryLabelCsv},
    {"LabelDbc", KW_TryLabelDbc},
    {"LabelXml", KW_TryLabelXml},
    {"MaskFiles", KW_TryMaskFiles},
    {"Paths", KW_TryPaths},
    {"RecordFiles", KW_TryRecordFiles},
    {"SettingsCsv", KW_TrySettingsCsv},
    {"SettingsXml", KW_TrySettingsXml},
    {"Signals", KW_TrySignals},
    {"Texts", KW_TryTexts},
};

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

class FuzzCorpus : public testing::TestWithParam<t_Target>
{
};

TEST_P(FuzzCorpus, InputThatOnceBrokeTheReaderDoesSoAgain)
{
    const t_Target& target = GetParam();
    const auto files = Corpus(target.folder);
    ASSERT_GE(files.size(), 3U);
    for (const auto& [name, text] : files)
    {
        SCOPED_TRACE(name.toStdString());
        target.run(text);
        // Cut anywhere, with a bit turned over: what a failing memory card leaves.
        const int stride = 1 + static_cast<int>(text.size()) / 40;
        for (int i = 0; i < text.size(); i += stride)
        {
            target.run(text.left(i));
            QByteArray spoilt = text;
            spoilt.data()[i] = static_cast<char>(text.at(i) ^ 4);
            target.run(spoilt);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Targets, FuzzCorpus, testing::ValuesIn(kTargets),
                         [](const auto& test) { return std::string(test.param.folder); });

TEST(FuzzCorpus, FolderIsTriedByNobody)
{
    QStringList folders;
    for (const t_Target& target : kTargets)
    {
        folders.append(QString::fromLatin1(target.folder));
    }
    EXPECT_EQ(
        QDir(QStringLiteral(KWI_CORPUS)).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name),
        folders);
}
