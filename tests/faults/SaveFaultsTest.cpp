// SPDX-License-Identifier: MIT
#include "FileText.h"
#include "WholeFile.h"
#include "database/FixtureTree.h"
#include "faults/SystemCalls.h"

#include <QDir>
#include <QTemporaryDir>
#include <algorithm>
#include <cerrno>
#include <cstring>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{
/** A file of settings that a tree with other settings is saved over. */
class SaveFaults : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_EQ(m_root->Save(m_name), eKW_ACC_OK);
        m_old = ContentsOf(m_name);
        ASSERT_EQ(m_root->m_pFirst->m_pInt16->Set(7), eKW_ACC_OK);
        const CSystemCallFault watch;
        ASSERT_EQ(m_root->Save(m_name), eKW_ACC_OK);
        m_calls = watch.Calls();
        m_new = ContentsOf(m_name);
        ASSERT_NE(m_old, m_new);
    }
    void RestoreOldFile()
    {
        QString error;
        ASSERT_TRUE(KW_WriteWholeFile(m_name, m_old, error)) << error.toStdString();
        m_reports.Clear();
    }
    KW_ACCEPTANCE SaveWith(const t_SystemCallFault& fault)
    {
        const CSystemCallFault struck(fault);
        return m_root->Save(m_name);
    }
    QStringList Files() const
    {
        return QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden | QDir::System);
    }
    /** Old file, nothing beside it, and one report that names the file and the reason. */
    void ExpectRefused(KW_ACCEPTANCE code, int error)
    {
        EXPECT_EQ(code, eKW_ACC_FILE_NOT_WRITABLE);
        EXPECT_EQ(ContentsOf(m_name), m_old);
        EXPECT_EQ(Files(), QStringList{QStringLiteral("keep.xml")});
        EXPECT_EQ(m_reports.Count(), 1);
        const QString text = m_reports.Messages();
        EXPECT_TRUE(text.contains(m_name)) << text.toStdString();
        EXPECT_TRUE(text.contains(QString::fromLocal8Bit(std::strerror(error))))
            << text.toStdString();
    }
    /** Place of the first call of a name that acts on a path; the count of calls for none. */
    std::size_t PlaceOf(const char* name, const QByteArray& path) const
    {
        const auto fits = [&](const t_SystemCall& call)
        { return call.name == name && call.path == path; };
        return static_cast<std::size_t>(std::find_if(m_calls.begin(), m_calls.end(), fits) -
                                        m_calls.begin());
    }

    QTemporaryDir m_folder;
    QString m_name = m_folder.filePath(QStringLiteral("keep.xml"));
    std::shared_ptr<CPgFixtureRoot> m_root = CPgFixtureRoot::Create();
    CReports m_reports;
    QByteArray m_old;
    QByteArray m_new;
    std::vector<t_SystemCall> m_calls;
};
} // namespace

TEST_F(SaveFaults, ErrorOfASystemCallLosesTheOldFileOrIsSilent)
{
    const std::size_t renamed = PlaceOf("rename", QFile::encodeName(m_name));
    ASSERT_LT(renamed, m_calls.size());
    for (std::size_t call = 0; call < m_calls.size(); ++call)
    {
        SCOPED_TRACE(m_calls[call].name.toStdString() + " of " + m_calls[call].path.toStdString());
        RestoreOldFile();
        const int error = m_calls[call].name == "fsync" ? EIO : ENOSPC;
        const KW_ACCEPTANCE code = SaveWith({.failingCall = call, .error = error});
        // Once the contents are on the disk, closing or synchronising again loses nothing, nor does
        // anything that follows the new name.
        const bool isSynced = call > PlaceOf("fsync", m_calls[call].path);
        if (call > renamed || m_calls[call].name == "close" ||
            (m_calls[call].name == "fsync" && isSynced))
        {
            EXPECT_EQ(code, eKW_ACC_OK);
            EXPECT_EQ(ContentsOf(m_name), m_new);
            EXPECT_EQ(Files().size(), 1);
            continue;
        }
        ExpectRefused(code, error);
    }
    RestoreOldFile();
    EXPECT_EQ(m_root->Save(m_name), eKW_ACC_OK);
    EXPECT_EQ(ContentsOf(m_name), m_new);
}

TEST_F(SaveFaults, DiskThatFillsUpLeavesHalfAFile)
{
    for (qsizetype room = 0; room < m_new.size(); room += 1 + m_new.size() / 150)
    {
        SCOPED_TRACE(room);
        RestoreOldFile();
        ExpectRefused(SaveWith({.room = static_cast<std::size_t>(room)}), ENOSPC);
    }
    RestoreOldFile();
    EXPECT_EQ(SaveWith({.room = static_cast<std::size_t>(m_new.size())}), eKW_ACC_OK);
}

TEST_F(SaveFaults, PowerLossLeavesNeitherTheOldNorTheNewFile)
{
    for (std::size_t call = 0; call <= m_calls.size(); ++call)
    {
        SCOPED_TRACE(call);
        RestoreOldFile();
        const pid_t child = fork();
        if (child == 0)
        {
            SaveWith({.lastCall = call});
            _exit(0);
        }
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        ASSERT_EQ(status, 0);
        const bool isRenamed = call > PlaceOf("rename", QFile::encodeName(m_name));
        EXPECT_EQ(ContentsOf(m_name), isRenamed ? m_new : m_old);
        EXPECT_EQ(CPgFixtureRoot::Create()->Recall(m_name), eKW_ACC_OK);
        // What was being written may lie beside it, under another name.
        for (const QString& name : Files())
        {
            EXPECT_TRUE(name == QStringLiteral("keep.xml") ||
                        QFile::remove(m_folder.filePath(name)));
        }
    }
}

TEST_F(SaveFaults, NewNameIsOnTheDiskBeforeTheContentsOrNever)
{
    const std::size_t renamed = PlaceOf("rename", QFile::encodeName(m_name));
    const std::size_t folderSynced = PlaceOf("fsync", QFile::encodeName(m_folder.path()));
    ASSERT_LT(renamed, m_calls.size());
    ASSERT_LT(folderSynced, m_calls.size()) << "the new name may be lost";
    EXPECT_LT(renamed, folderSynced);
    std::size_t written = m_calls.size();
    std::size_t synced = m_calls.size();
    for (std::size_t i = 0; i < renamed; ++i)
    {
        written = m_calls[i].name == "write" ? i : written;
        synced = m_calls[i].name == "fsync" ? i : synced;
    }
    ASSERT_LT(written, renamed);
    ASSERT_LT(synced, renamed) << "the name may reach the disk before the contents";
    EXPECT_GT(synced, written);
    EXPECT_EQ(m_calls[synced].path, m_calls[written].path);
}
