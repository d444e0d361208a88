// SPDX-License-Identifier: MIT
#include "FixtureTree.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
class Files : public testing::Test
{
protected:
    QTemporaryDir m_folder;
    std::shared_ptr<CPgFixtureRoot> m_root = CPgFixtureRoot::Create();
    CReports m_reports;

    QString Write(const QByteArray& text, const char* name = "a.xml")
    {
        QFile file(m_folder.filePath(QString::fromLatin1(name)));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        return file.fileName();
    }
    /** Refused whole: one report that names the file, and nothing changed. */
    void ExpectRefused(const QString& fileName, KW_ACCEPTANCE code, const std::string& what)
    {
        const QByteArray before = m_root->Text();
        m_reports.Clear();
        EXPECT_EQ(m_root->Recall(fileName), code) << what;
        ASSERT_EQ(m_reports.Count(), 1) << what;
        EXPECT_TRUE(m_reports.Messages().contains(fileName)) << what;
        EXPECT_FALSE(m_reports.Messages().contains(QLatin1String(".."))) << what;
        EXPECT_EQ(m_root->Text(), before) << what;
        EXPECT_FALSE(m_root->CanUndo()) << what;
    }
};

/** A tree in which every kind has a value of its own and containers are filled. */
std::shared_ptr<CPgFixtureRoot> FilledTree()
{
    auto root = CPgFixtureRoot::Create();
    CPgFixture& group = *root->m_pSecond;
    group.m_pText->Set(QString::fromUtf8("a,\"b\"\n<ä> &amp; ;\r\t End"));
    group.m_pBlob->Set(QByteArray("\0\xff,", 3));
    group.m_pDouble->Set(0.1);
    group.m_pFollower->SetUserValue(5.0);
    group.m_pMap->Insert(QString::fromUtf8("Ω & \"x\""));
    group.m_pMap->SetActive(QString::fromUtf8("Ω & \"x\""));
    group.m_pArray->Insert(0);
    group.m_pArray->ItemDirect(0)->m_pLabel->Set(QStringLiteral("End"));
    group.m_pReference->Set(QString::fromUtf8("Second/Map[Ω & \"x\"]"));
    return root;
}
} // namespace

TEST_F(Files, SecretIsReportedOrLeftForOthersToRead)
{
    CDbPropString& secret = *m_root->m_pFirst->m_pText;
    secret.DeclareSecret();
    ASSERT_EQ(secret.Set(QStringLiteral("hush")), eKW_ACC_OK);
    const mode_t mask = umask(0);
    for (const char* const name : {"kept.xml", "kept.csv"})
    {
        const QString file = Write("readable for all", name);
        const auto permissions = [&file]
        { return static_cast<int>(QFile::permissions(file)) & 0xF0FF; };
        EXPECT_EQ(CPgFixtureRoot::Create()->Save(file), eKW_ACC_OK);
        EXPECT_EQ(permissions(), 0x6066) << name;
        EXPECT_EQ(m_root->Save(file), eKW_ACC_OK);
        EXPECT_EQ(permissions(), 0x6000) << name;
    }
    umask(mask);
    const QByteArray tooLong = QByteArray("hush").repeated(11);
    EXPECT_EQ(m_root->Recall(Write(m_root->FileText(false).replace("hush", tooLong))),
              eKW_ACC_WARNING);
    EXPECT_EQ(m_root->Recall(Write("Settings,hush\n", "a.csv")), eKW_ACC_FILE_NOT_UNDERSTOOD);
    EXPECT_TRUE(m_reports.Messages().contains(secret.GetPath()));
    EXPECT_FALSE(m_reports.Messages().contains(QLatin1String("hush")));
    EXPECT_FALSE(m_root->GetUndoText().contains(QLatin1String("hush")));
}

class FileFormat : public Files, public testing::WithParamInterface<bool>
{
};

TEST_P(FileFormat, LosesOrChangesWhatItCarries)
{
    const QByteArray text = FilledTree()->FileText(GetParam());
    const QString name = Write(text, GetParam() ? "a.csv" : "a.xml");
    ASSERT_EQ(m_root->Recall(name), eKW_ACC_OK) << m_reports.Messages().toStdString();
    EXPECT_EQ(m_root->FileText(GetParam()), text);
    EXPECT_EQ(m_root->m_pSecond->m_pFollower->GetUserValue(), 5.0);
    EXPECT_EQ(m_root->m_pSecond->m_pFollower->Get(), 0.1) << "limits hold the wish back";
    ASSERT_EQ(m_root->Undo(), eKW_ACC_OK);
    EXPECT_EQ(m_root->Text(), CPgFixtureRoot::Create()->Text());
}

TEST_P(FileFormat, TruncatedFileIsAppliedInPart)
{
    const QByteArray text = FilledTree()->FileText(GetParam()).trimmed();
    const QByteArray before = m_root->Text();
    for (int length = 0; length < text.size(); length += length < 400 ? 1 : 7)
    {
        const QString name = Write(text.left(length), GetParam() ? "a.csv" : "a.xml");
        m_reports.Clear();
        ASSERT_EQ(m_root->Recall(name), eKW_ACC_FILE_NOT_UNDERSTOOD) << "after " << length;
        ASSERT_EQ(m_reports.Count(), 1) << "after " << length;
    }
    EXPECT_EQ(m_root->Text(), before);
    EXPECT_FALSE(m_root->CanUndo());
}

INSTANTIATE_TEST_SUITE_P(Formats, FileFormat, testing::Bool(),
                         [](const auto& test) { return test.param ? "Csv" : "Xml"; });

TEST_F(Files, DamagedForeignOrNewerFileIsApplied)
{
    const QByteArray good = FilledTree()->FileText(false);
    const auto with = [&good](const char* from, const char* to)
    {
        QByteArray text = good;
        EXPECT_TRUE(text.contains(from)) << from;
        return text.replace(from, to);
    };
    const std::pair<const char*, QByteArray> cases[] = {
        {"empty", ""},
        {"binary", QByteArray("\x7f\x45\x4c\x46\0\0\0", 7)},
        {"other root", "<Other/>"},
        {"other kind", with("Kind=\"Fixture\"", "Kind=\"Car\"")},
        {"second document", good + good},
        {"text between", with("<PropGroup Name=\"Second\">", "<PropGroup Name=\"Second\">text")},
        {"mismatched end", with("</Settings>", "</Setting>")},
        {"document type", "<!DOCTYPE Settings><Settings/>"},
        {"entity bomb",
         "<!DOCTYPE a [<!ENTITY a \"aaaaaaaaaa\"><!ENTITY b \"&a;&a;&a;&a;&a;&a;&a;&a;\">"
         "<!ENTITY c \"&b;&b;&b;&b;&b;&b;&b;&b;\"><!ENTITY d \"&c;&c;&c;&c;&c;&c;&c;&c;\">]>"
         "<Settings Kind=\"&d;&d;&d;&d;\"/>"},
        {"deep nesting", "<Settings Kind=\"Fixture\" Version=\"1.0\">" +
                             QByteArray("<PropGroup>").repeated(100000)},
    };
    for (const auto& [what, text] : cases)
    {
        ExpectRefused(Write(text), eKW_ACC_FILE_NOT_UNDERSTOOD, what);
    }
    ExpectRefused(Write("Settings,2,Kind,Fixture", "a.csv"), eKW_ACC_FILE_NOT_UNDERSTOOD, "csv");
    ExpectRefused(Write("Settings,2000000000,Kind,Fixture,End\n", "a.csv"),
                  eKW_ACC_FILE_NOT_UNDERSTOOD, "csv count");
    ExpectRefused(Write("\"Settings", "a.csv"), eKW_ACC_FILE_NOT_UNDERSTOOD, "csv quote");
}

TEST_F(Files, VersionIsTakenForAnother)
{
    const auto file = [this](const std::string& version)
    {
        return Write(QByteArray::fromStdString("<Settings Kind=\"Fixture\"" + version +
                                               "><PropGroup Name=\"Fixture\"/></Settings>"));
    };
    for (const char* const version : {"1.0", "1.9", "1"})
    {
        EXPECT_EQ(m_root->Recall(file(std::string(" Version=\"") + version + '"')), eKW_ACC_OK);
    }
    for (const char* const version :
         {"2.0", "2", "0", "0.9", "-1.0", "", ".1", "x", "1x.0", "4294967297.0"})
    {
        ExpectRefused(file(std::string(" Version=\"") + version + '"'), eKW_ACC_FILE_NOT_UNDERSTOOD,
                      version);
    }
    ExpectRefused(file(""), eKW_ACC_FILE_NOT_UNDERSTOOD, "no version");
}

TEST_F(Files, UnreadableFileIsReadOrFillsTheMemory)
{
    ExpectRefused(m_folder.filePath(QStringLiteral("missing.xml")), eKW_ACC_FILE_NOT_READABLE,
                  "missing");
    ExpectRefused(m_folder.path(), eKW_ACC_FILE_NOT_READABLE, "folder");
    const QString huge = m_folder.filePath(QStringLiteral("huge.xml"));
    QFile file(huge);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_TRUE(file.resize(100 * 1024 * 1024));
    file.close();
    ExpectRefused(huge, eKW_ACC_FILE_NOT_READABLE, "100 MB");
}

TEST_F(Files, UnknownOrIllegalEntryStopsTheRestOrIsSilent)
{
    const QByteArray text =
        "<Settings Kind=\"Fixture\" Version=\"1.0\"><PropGroup Name=\"Fixture\">"
        "<PropGroup Name=\"First\"><Prop Name=\"Unknown\" Value=\"1\"/>"
        "<Prop Name=\"Int32\" Value=\"101\"/><Prop Name=\"Enum\" Value=\"NOTHING\"/>"
        "<Prop Name=\"Double\"/><Prop Name=\"Array\" Value=\"1\"/>"
        "<Prop Name=\"Reference\" Value=\"First/Nothing[1]\"/>"
        "<Prop Name=\"Int16\" Value=\"7\"/>"
        "<Array Name=\"Fixed\"><ArrayItem/><ArrayItem/><ArrayItem/><Foo/></Array>"
        "<Map Name=\"Map\"><MapItem Name=\"a\" Key=\"0\"/><MapItem Name=\"a\" Key=\"1\"/>"
        "<MapItem Name=\"b\" Key=\"0\"/><MapItem/></Map>"
        "<PropGroup Name=\"Gone\"/></PropGroup></PropGroup></Settings>";
    ASSERT_EQ(m_root->Recall(Write(text)), eKW_ACC_WARNING);
    EXPECT_EQ(m_root->m_pFirst->m_pInt16->Get(), 7) << "what is legal is applied";
    EXPECT_EQ(m_root->m_pFirst->m_pInt32->Get(), 0);
    EXPECT_EQ(m_root->m_pFirst->m_pMap->GetNames(), QStringList{QStringLiteral("a")});
    const QString messages = m_reports.Messages();
    for (const char* what :
         {"Unknown Prop \"Unknown\" in First", "Value \"101\" skipped (above the maximum)",
          "Value \"NOTHING\" skipped (no such value) in First/Enum", "in First/Double",
          "Unknown Prop \"Array\"", "\"First/Nothing[1]\" skipped (not found)",
          "Item 2 skipped: the array has 2 items", "Unexpected item: Foo",
          "Item \"a\" skipped (the name or key is in use)", "Unknown PropGroup \"Gone\""})
    {
        EXPECT_TRUE(messages.contains(QLatin1String(what))) << what << " in\n"
                                                            << messages.toStdString();
    }
    ASSERT_EQ(m_root->Undo(), eKW_ACC_OK);
    EXPECT_EQ(m_root->Text(), CPgFixtureRoot::Create()->Text());
}

TEST_F(Files, WishOfAFileIsNoneOrLeavesTheRange)
{
    CDbPropNum<double>& number = *m_root->m_pFirst->m_pFollower;
    for (const auto& [text, wish] : {std::pair{"7", 7.0},
                                     {"-5000", -1000.0},
                                     {"inf", 1000.0},
                                     {"nan", 0.5},
                                     {"x", 0.5},
                                     {"", 0.5}})
    {
        const QByteArray file =
            "<Settings Kind=\"Fixture\" Version=\"1.0\"><PropGroup Name=\"Fixture\"><PropGroup "
            "Name=\"First\"><Prop Name=\"Double\" Value=\"1\"/><Prop Name=\"Follower\" "
            "Value=\"0.5\" User=\"" +
            QByteArray(text) + "\"/></PropGroup></PropGroup></Settings>";
        EXPECT_LE(m_root->Recall(Write(file)), eKW_ACC_WARNING) << text;
        EXPECT_EQ(number.GetUserValue(), wish) << text;
    }
}

TEST_F(Files, FailedSaveDestroysTheOldFile)
{
    const QString name = Write("old", "keep.xml");
    EXPECT_EQ(m_root->Save(m_folder.filePath(QStringLiteral("no/such/folder.xml"))),
              eKW_ACC_FILE_NOT_WRITABLE);
    EXPECT_EQ(m_root->Save(m_folder.path()), eKW_ACC_FILE_NOT_WRITABLE);
    EXPECT_EQ(m_reports.Count(), 2);
    EXPECT_TRUE(
        m_reports.Messages().contains(QStringLiteral("An older file of this name is kept.")));
    if (geteuid() != 0)
    {
        QFile::setPermissions(m_folder.path(), QFileDevice::ReadOwner | QFileDevice::ExeOwner);
        EXPECT_EQ(m_root->Save(name), eKW_ACC_FILE_NOT_WRITABLE);
        QFile::setPermissions(m_folder.path(), QFileDevice::ReadOwner | QFileDevice::WriteOwner |
                                                   QFileDevice::ExeOwner);
    }
    QFile file(name);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), "old");
}

namespace
{
QString RandomText()
{
    return QString::fromStdString(*rc::gen::container<std::string>(rc::gen::inRange('0', 'z')));
}

/** One client action on a random node; refusals are part of the walk. */
void RandomAction(CPgFixture& group)
{
    const QString name = QStringLiteral("n%1").arg(*rc::gen::inRange(0, 6));
    const INT32 index = *rc::gen::inRange(-1, 6);
    switch (*rc::gen::inRange(0, 10))
    {
    case 0:
        group.m_pArray->Insert(index);
        break;
    case 1:
        group.m_pArray->Remove(index, *rc::gen::inRange(0, 3));
        break;
    case 2:
        group.m_pMap->Insert(name);
        break;
    case 3:
        group.m_pMap->Rename(name, QStringLiteral("n%1").arg(*rc::gen::inRange(0, 6)));
        break;
    case 4:
        index > 2 ? group.m_pMap->Remove(name) : group.m_pMap->Copy(name, QString());
        break;
    case 5:
        group.m_pMap->SetActive(name);
        group.m_pArray->SetActive(index);
        group.m_pReference->Set(QStringLiteral("%1/Map[%2]").arg(group.GetPath(), name));
        break;
    case 6:
        if (CPgFixtureItem* const item = group.m_pArray->ItemDirect(index))
        {
            item->m_pLevel->SetUserValue(*rc::gen::arbitrary<double>());
            item->m_pLabel->Set(RandomText());
        }
        break;
    case 7:
        group.m_pDouble->SetUserValue(*rc::gen::inRange(-10, 1010) / 3.0);
        group.m_pFollower->SetUserValue(*rc::gen::inRange(-3000, 3000) / 7.0);
        break;
    default:
    {
        const auto& properties = group.Properties();
        CDbPropBase& p = *properties[*rc::gen::inRange<std::size_t>(0, properties.size())];
        index < 2 ? p.SetText(RandomText())
                  : (index < 4 ? p.IncDec(*rc::gen::inRange(-9, 10)) : p.SetToDefault());
        break;
    }
    }
}
} // namespace

RC_GTEST_PROP(RandomWalk, IsNotUndoneRedoneOrSavedWhole, ())
{
    const CReports reports;
    const auto root = CPgFixtureRoot::Create();
    std::vector<QByteArray> states{root->Text()};
    const int actions = *rc::gen::inRange(1, 30);
    for (int i = 0; i < actions; ++i)
    {
        RandomAction(*rc::gen::arbitrary<bool>() ? *root->m_pFirst : *root->m_pSecond);
        if (root->Text() != states.back())
        {
            states.push_back(root->Text());
        }
    }
    const QTemporaryDir folder;
    for (const char* file : {"a.xml", "a.csv"})
    {
        const QString name = folder.filePath(QString::fromLatin1(file));
        RC_ASSERT(root->SaveToFile(name, eSAVERECALL_ALL) == eKW_ACC_OK);
        const auto other = CPgFixtureRoot::Create();
        RC_ASSERT(other->ApplyFile(name, eSAVERECALL_ALL) == eKW_ACC_OK);
        RC_ASSERT(other->Text() == states.back());
        for (std::size_t i = 0; i < root->m_pFirst->Properties().size(); ++i)
        {
            RC_ASSERT(other->m_pFirst->Properties()[i]->GetMaxText().toStdString() ==
                      root->m_pFirst->Properties()[i]->GetMaxText().toStdString());
        }
    }
    while (root->Undo() == eKW_ACC_OK)
    {
    }
    RC_ASSERT(root->Text() == states.front());
    while (root->Redo() == eKW_ACC_OK)
    {
    }
    RC_ASSERT(root->Text() == states.back());
    RC_ASSERT(root->ApplyDefaults(eSAVERECALL_ALL, QString()) == eKW_ACC_OK);
    RC_ASSERT(root->Text() == states.front());
    RC_ASSERT(states.back() == states.front() || root->Undo() == eKW_ACC_OK);
    RC_ASSERT(root->Text() == states.back());
}
