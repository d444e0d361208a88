// SPDX-License-Identifier: MIT
#include "CommonDatabase/Values/DbBounds.h"
#include "FileText.h"
#include "FixtureTree.h"
#include "KWSettingsFile.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace
{
class Files : public testing::Test, protected CFixture
{
protected:
    QTemporaryDir m_folder;

    QString Write(const QByteArray& text, const char* name = "a.xml")
    {
        return WriteFile(m_folder.filePath(QString::fromLatin1(name)), text);
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

/** A file of the group "First", written by hand. */
QByteArray FileOfFirst(const QByteArray& members)
{
    return "<Settings Kind=\"Fixture\" Version=\"1.0\"><PropGroup Name=\"Fixture\">"
           "<PropGroup Name=\"First\">" +
           members + "</PropGroup></PropGroup></Settings>";
}

/** A tree in which every kind has a value of its own and containers are filled. */
std::shared_ptr<CPgFixtureRoot> FilledTree()
{
    auto root = CPgFixtureRoot::Create();
    CPgFixture& group = *root->m_pSecond;
    group.m_pText->Set(QString::fromUtf8("a,\"b\"\n<ä> &amp; ;\r\t End"));
    group.m_pBlob->Set(QByteArray("\0\xff,", 3));
    group.m_pDouble->Set(0.1);
    group.m_pFollower->SetUserValue(5.0);
    group.m_pEnum->SetAsInt(4);
    group.m_pEnum->EnableValue(4, false);
    group.m_pEnum->FollowWish(2);
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
    EXPECT_EQ(m_root->m_pSecond->m_pEnum->GetUserValueAsInt(), 4);
    EXPECT_EQ(m_root->m_pSecond->m_pEnum->GetAsInt(), 2);
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
    const QByteArray csv = "Settings,2,Kind,Fixture,Version,1.0,\n";
    const std::tuple<const char*, const char*, QByteArray> cases[] = {
        {"a.xml", "empty", ""},
        {"a.xml", "binary", QByteArray("\x7f\x45\x4c\x46\0\0\0", 7)},
        {"a.xml", "other root", "<Other/>"},
        {"a.xml", "other kind", with("Kind=\"Fixture\"", "Kind=\"Car\"")},
        {"a.xml", "second document", good + good},
        {"a.xml", "text between",
         with("<PropGroup Name=\"Second\">", "<PropGroup Name=\"Second\">text")},
        {"a.xml", "mismatched end", with("</Settings>", "</Setting>")},
        {"a.xml", "document type", "<!DOCTYPE Settings><Settings/>"},
        {"a.xml", "entity bomb",
         "<!DOCTYPE a [<!ENTITY a \"aaaaaaaaaa\"><!ENTITY b \"&a;&a;&a;&a;&a;&a;&a;&a;\">"
         "<!ENTITY c \"&b;&b;&b;&b;&b;&b;&b;&b;\"><!ENTITY d \"&c;&c;&c;&c;&c;&c;&c;&c;\">]>"
         "<Settings Kind=\"&d;&d;&d;&d;\"/>"},
        {"a.xml", "deep nesting",
         "<Settings Kind=\"Fixture\" Version=\"1.0\">" +
             QByteArray("<PropGroup>").repeated(100000)},
        {"a.csv", "half", "Settings,2,Kind,Fixture"},
        {"a.csv", "count", "Settings,2000000000,Kind,Fixture,End\n"},
        {"a.csv", "quote", "\"Settings"},
        {"a.csv", "text behind a quote", csv + "Prop,1,Name,\"a\"b,End\nEnd\n"},
        {"a.csv", "quote in a field", csv + "Prop,1,Name,a\"b\",End\nEnd\n"},
        {"a.csv", "half a line end", csv + "Prop,1,Name,a\rb,End\nEnd\n"},
        {"a.csv", "no UTF-8", csv + "Prop,1,Name,\xC3\x28,End\nEnd\n"},
        {"a.csv", "half a character", csv + "Prop,1,Name,\xC3,End\nEnd\n"},
        {"a.csv", "second document", FilledTree()->FileText(true).repeated(2)},
    };
    for (const auto& [file, what, text] : cases)
    {
        ExpectRefused(Write(text, file), eKW_ACC_FILE_NOT_UNDERSTOOD, what);
    }
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

TEST_P(FileFormat, ChangedFileIsTakenOrASealedOneRefused)
{
    const bool csv = GetParam();
    const QByteArray good = FilledTree()->SavedText(csv);
    const char* const name = csv ? "a.csv" : "a.xml";
    const auto end = good.lastIndexOf("Digest");
    ASSERT_GT(end, 0);
    for (int i = 0; i < end; ++i)
    {
        QByteArray changed = good;
        changed[i] = static_cast<char>(changed[i] ^ 1);
        ASSERT_EQ(m_root->Recall(Write(changed, name)), eKW_ACC_FILE_NOT_UNDERSTOOD) << i;
    }
    EXPECT_FALSE(m_root->CanUndo());

    QByteArray edited = good;
    edited.replace(csv ? "Name,Double,Value,0.1" : "\"Double\" Value=\"0.1\"",
                   csv ? "Name,Double,Value,0.2" : "\"Double\" Value=\"0.2\"");
    ASSERT_NE(edited, good);
    const QString file = Write(edited, name);
    ExpectRefused(file, eKW_ACC_FILE_NOT_UNDERSTOOD, "edited");
    EXPECT_TRUE(m_reports.Messages().contains(QStringLiteral("zelctl seal \"%1\"").arg(file)));
    ASSERT_EQ(KW_SealSettingsFile(file), eKW_ACC_OK);
    EXPECT_EQ(m_root->Recall(file), eKW_ACC_OK) << m_reports.Messages().toStdString();
    EXPECT_EQ(m_root->m_pSecond->m_pDouble->Get(), 0.2);

    const QString saved = Write(good, name);
    ASSERT_EQ(KW_SealSettingsFile(saved), eKW_ACC_OK);
    EXPECT_EQ(ContentsOf(saved), good) << "what is sealed already stays as it is";
    m_reports.Clear();
    EXPECT_EQ(KW_SealSettingsFile(Write("no settings", name)), eKW_ACC_FILE_NOT_UNDERSTOOD);
    EXPECT_EQ(m_reports.Count(), 1);
    EXPECT_EQ(ContentsOf(saved), "no settings");
}

TEST_F(Files, FileThatCanNotBeFillsTheMemoryOrIsSilent)
{
    ExpectRefused(m_folder.filePath(QStringLiteral("missing.xml")), eKW_ACC_FILE_NOT_READABLE,
                  "missing");
    for (const QString& name :
         {m_folder.path(), m_folder.filePath(QStringLiteral("no/such/folder.xml"))})
    {
        ExpectRefused(name, eKW_ACC_FILE_NOT_READABLE, "folder");
        m_reports.Clear();
        EXPECT_EQ(m_root->Save(name), eKW_ACC_FILE_NOT_WRITABLE);
        ASSERT_EQ(m_reports.Count(), 1);
        EXPECT_TRUE(
            m_reports.Messages().contains(QStringLiteral("An older file of this name is kept.")));
    }
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
        "<Prop Name=\"Unknown\" Value=\"1\"/>"
        "<Prop Name=\"Int32\" Value=\"101\"/><Prop Name=\"Enum\" Value=\"NOTHING\"/>"
        "<Prop Name=\"Double\"/><Prop Name=\"Array\" Value=\"1\"/>"
        "<Prop Name=\"Reference\" Value=\"First/Nothing[1]\"/>"
        "<Prop Name=\"Int16\" Value=\"7\"/>"
        "<Array Name=\"Fixed\"><ArrayItem/><ArrayItem/><ArrayItem/><Foo/></Array>"
        "<Map Name=\"Map\"><MapItem Name=\"a\" Key=\"0\"/><MapItem Name=\"a\" Key=\"1\"/>"
        "<MapItem Name=\"b\" Key=\"0\"/><MapItem/></Map>"
        "<PropGroup Name=\"Gone\"/>";
    ASSERT_EQ(m_root->Recall(Write(FileOfFirst(text))), eKW_ACC_WARNING);
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
        const QByteArray members = "<Prop Name=\"Double\" Value=\"1\"/>"
                                   "<Prop Name=\"Follower\" Value=\"0.5\" User=\"" +
                                   QByteArray(text) + "\"/>";
        EXPECT_LE(m_root->Recall(Write(FileOfFirst(members))), eKW_ACC_WARNING) << text;
        EXPECT_EQ(number.GetUserValue(), wish) << text;
    }
}

TEST_F(Files, FileTouchesWhatItsPatternLeavesOut)
{
    const auto all = FilledTree();
    ASSERT_EQ(all->m_pFirst->m_pInt16->Set(7), eKW_ACC_OK);
    const QString name = Write(all->FileText(false));
    CDbObject::SetSaveRecallType(m_root->m_pSecond, eSAVERECALL_SYSTEM, true);
    m_root->m_pSecond->m_pMap->Insert(QStringLiteral("kept"));
    m_root->m_pSecond->m_pArray->Insert(0);
    m_root->m_pSecond->m_pText->Set(QStringLiteral("kept"));
    QList<QString> before;
    m_root->m_pSecond->SerializeCSV(before);
    EXPECT_EQ(m_root->RecallFromFile(name, eSAVERECALL_SETTINGS), true);
    QList<QString> after;
    m_root->m_pSecond->SerializeCSV(after);
    EXPECT_EQ(after, before);
    EXPECT_EQ(m_root->m_pFirst->m_pInt16->Get(), 7);
    EXPECT_EQ(m_reports.List(), QStringList{QStringLiteral(
                                    "No part of such settings: PropGroup \"Second\" in Fixture")});
}

TEST_F(Files, ItemsAreTakenByPlaceOrLoseTheirHandles)
{
    CPgFixture& group = *m_root->m_pFirst;
    group.m_pMap->Insert(QStringLiteral("a"));
    group.m_pMap->Insert(QStringLiteral("b"));
    const auto kept = group.m_pMap->ShareMapItem(QStringLiteral("a"));
    const auto lost = group.m_pMap->ShareMapItem(QStringLiteral("b"));
    const QByteArray before = m_root->Text();
    const QByteArray text =
        "<Array Name=\"Fixed\"><ArrayItem Name=\"1\"><Prop Name=\"Level\" Value=\"1\"/></ArrayItem>"
        "<ArrayItem Name=\"0\"><Prop Name=\"Level\" Value=\"2\"/></ArrayItem>"
        "<ArrayItem Name=\"1\"><Prop Name=\"Level\" Value=\"3\"/></ArrayItem></Array>"
        "<Map Name=\"Map\"><MapItem Name=\"b\" Key=\"7\"/><MapItem Name=\"a\" Key=\"0\" "
        "DisplayName=\"A\"><Prop Name=\"Level\" Value=\"5\"/></MapItem></Map>";
    EXPECT_EQ(m_root->Recall(Write(FileOfFirst(text))), eKW_ACC_WARNING);
    EXPECT_EQ(m_reports.List(), QStringList{QStringLiteral(
                                    "Item 1 skipped: the file names it twice in First/Fixed")});
    EXPECT_EQ(group.m_pFixed->ItemDirect(1)->m_pLevel->Get(), 1.0);
    EXPECT_EQ(group.m_pFixed->ItemDirect(0)->m_pLevel->Get(), 2.0);
    EXPECT_EQ(group.m_pMap->ShareMapItem(QStringLiteral("a")), kept);
    EXPECT_EQ(kept->GetDisplayName(), QStringLiteral("A"));
    EXPECT_EQ(group.m_pMap->ItemDirect(QStringLiteral("a"))->m_pLevel->Get(), 5.0);
    EXPECT_EQ(lost->GetNumericKey(), -1) << "another key is another item";
    ASSERT_EQ(m_root->Undo(), eKW_ACC_OK);
    EXPECT_EQ(m_root->Text(), before);
    EXPECT_EQ(kept->GetDisplayName(), QStringLiteral("a"));
}

TEST_F(Files, PipeIsWaitedForOrReplaced)
{
    const QString pipe = m_folder.filePath(QStringLiteral("pipe.xml"));
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    const QString link = m_folder.filePath(QStringLiteral("link.xml"));
    ASSERT_TRUE(QFile::link(pipe, link));
    CDbPropFilePath& loaded = *m_root->m_pFirst->m_pPath;
    loaded.DeclareFolder(m_folder.path());
    ASSERT_EQ(loaded.Set(QStringLiteral("pipe.xml")), eKW_ACC_OK);
    QByteArray contents;
    EXPECT_EQ(loaded.Load(contents), eKW_ACC_FILE_NOT_READABLE);
    EXPECT_EQ(loaded.Write("x"), eKW_ACC_FILE_NOT_WRITABLE);
    m_root->DisableHistoryObjects();
    for (const QString& name : {pipe, link})
    {
        ExpectRefused(name, eKW_ACC_FILE_NOT_READABLE, "pipe");
        EXPECT_EQ(m_root->Save(name), eKW_ACC_FILE_NOT_WRITABLE);
        EXPECT_EQ(KW_SealSettingsFile(name), eKW_ACC_FILE_NOT_READABLE);
    }
    struct stat target
    {
    };
    ASSERT_EQ(stat(QFile::encodeName(link).constData(), &target), 0);
    EXPECT_TRUE(S_ISFIFO(target.st_mode));

    const QString file = Write("old", "file.xml");
    const QString good = m_folder.filePath(QStringLiteral("good.xml"));
    ASSERT_TRUE(QFile::link(file, good));
    EXPECT_EQ(m_root->Save(good), eKW_ACC_OK);
    EXPECT_NE(ContentsOf(file), "old") << "a link to a file stands for the file";
    EXPECT_EQ(m_root->Recall(good), eKW_ACC_OK);
}

namespace
{
/** Parts of files that ask for more than a file may, and what may be reported of each. */
struct t_Excess
{
    const char* name;
    bool csv;
    QByteArray text;
    KW_ACCEPTANCE code;
};

QByteArray Many(const char* pattern, int count)
{
    QByteArray text;
    for (int i = 0; i < count; ++i)
    {
        text += QByteArray(pattern).replace('#', QByteArray::number(i));
    }
    return text;
}

std::vector<t_Excess> Excesses()
{
    const auto in = FileOfFirst;
    const QByteArray million(1000000, 'x');
    const KW_ACCEPTANCE refused = eKW_ACC_FILE_NOT_UNDERSTOOD;
    return {
        {"Attributes", false, in("<Prop " + Many("a#='1' ", 300000) + "/>"), refused},
        {"AttributesBehindAComment", false,
         in("<!-- ' --><?x '?><Prop " + Many("a#=\"'1\" ", 300000) + "/>"), refused},
        {"AttributesInUtf16", false, QByteArray("\0<\0a", 4), refused},
        {"Elements", false, in(QByteArray("<a/>").repeated(3000000)), refused},
        {"Fields", true, QByteArray(",").repeated(10000000), refused},
        {"Unknown", false, in(QByteArray("<a/>").repeated(500000)), eKW_ACC_WARNING},
        {"Items", false,
         in("<Array Name=\"Array\">" + QByteArray("<ArrayItem/>").repeated(100000) + "</Array>"),
         eKW_ACC_WARNING},
        {"Keys", false, in("<Map Name=\"Map\">" + Many("<MapItem Name='a#'/>", 100000) + "</Map>"),
         eKW_ACC_WARNING},
        {"Unnamed", false,
         in("<Map Name=\"Map\">" + QByteArray("<MapItem/>").repeated(100000) + "</Map>"),
         eKW_ACC_WARNING},
        {"Text", false,
         in("<Prop Name='Text' Value='" + million + "'/><Prop Name='Path' Value='" + million +
            "'/><Prop Name='" + million + "'/>"),
         eKW_ACC_WARNING},
        {"DisplayName", false,
         in("<Map Name='Map'><MapItem Name='a' DisplayName='" + million + "'/></Map>"),
         eKW_ACC_WARNING},
    };
}
} // namespace

class FileBounds : public Files, public testing::WithParamInterface<t_Excess>
{
};

TEST_P(FileBounds, FileTakesMoreTimeMemoryOrReportsThanItMay)
{
    const t_Excess& excess = GetParam();
    const QString name = Write(excess.text, excess.csv ? "a.csv" : "a.xml");
    EXPECT_EQ(m_root->Recall(name), excess.code); // what takes minutes runs out of the test's time
    EXPECT_LE(m_reports.Count(), NDbBounds::kMaxReports + 1);
    for (const QString& message : m_reports.List())
    {
        EXPECT_LT(message.size(), 500);
    }
    EXPECT_LE(m_root->m_pFirst->m_pMap->GetCount(), 20);
    EXPECT_TRUE(m_root->m_pFirst->m_pPath->Get().isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Dimensions, FileBounds, testing::ValuesIn(Excesses()),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_F(Files, TreeIsSavedThatCanNotBeRecalled)
{
    for (int i = 0; i < 14; ++i)
    {
        auto* const group = new CPgFixture;
        m_root->AddPropGroupToList(group, QStringLiteral("More%1").arg(i));
        ASSERT_EQ(group->m_pBlob->Set(QByteArray(CDbPropBlob::kMaxSize, 'x')), eKW_ACC_OK);
    }
    const QString name = Write("old");
    EXPECT_EQ(m_root->Save(name), eKW_ACC_FILE_NOT_WRITABLE);
    EXPECT_EQ(m_reports.Count(), 1);
    EXPECT_EQ(ContentsOf(name), "old");
    for (int i = 0; i < 3; ++i)
    {
        ASSERT_EQ(m_root->Undo(), eKW_ACC_OK);
    }
    EXPECT_EQ(m_root->Save(name), eKW_ACC_OK);
    EXPECT_EQ(m_root->Recall(name), eKW_ACC_OK);
}
