// SPDX-License-Identifier: MIT
#include "IKWFunctionZEL.h"
#include "ServiceTargets.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace
{
struct t_Target
{
    const char* folder;
    void (*run)(const QByteArray&);
};

constexpr t_Target kTargets[] = {{"JsonRequests", KW_TryJsonRequests},
                                 {"RemoteMessages", KW_TryRemoteMessages}};
} // namespace

std::shared_ptr<IKWFunctionRootBase> KW_MakeServedTree()
{
    static const QTemporaryDir folder;
    auto root = GetZELRoot();
    root->SetSettingsFolder(folder.path());
    return root;
}

class ServiceCorpus : public testing::TestWithParam<t_Target>
{
};

TEST_P(ServiceCorpus, InputThatOnceBrokeTheServiceDoesSoAgain)
{
    const t_Target& target = GetParam();
    const QDir dir(QStringLiteral(KWI_SERVICE_CORPUS "/") + QString::fromLatin1(target.folder));
    const QFileInfoList files = dir.entryInfoList(QDir::Files, QDir::Name);
    ASSERT_GE(files.size(), 3);
    for (const QFileInfo& info : files)
    {
        QFile file(info.filePath());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QByteArray bytes = file.readAll();
        SCOPED_TRACE(info.fileName().toStdString());
        target.run(bytes);
        const int stride = 1 + static_cast<int>(bytes.size()) / 10;
        for (int i = 0; i < bytes.size(); i += stride)
        {
            target.run(bytes.left(i));
            QByteArray spoilt = bytes;
            spoilt.data()[i] = static_cast<char>(bytes.at(i) ^ 4);
            target.run(spoilt);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Targets, ServiceCorpus, testing::ValuesIn(kTargets),
                         [](const auto& test) { return std::string(test.param.folder); });

TEST(ServiceCorpus, FolderIsTriedByNobody)
{
    QStringList folders;
    for (const t_Target& target : kTargets)
    {
        folders.append(QString::fromLatin1(target.folder));
    }
    EXPECT_EQ(QDir(QStringLiteral(KWI_SERVICE_CORPUS))
                  .entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name),
              folders);
}
