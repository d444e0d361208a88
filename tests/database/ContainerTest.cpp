// SPDX-License-Identifier: MIT
#include "CommonDatabase/Values/DbBounds.h"
#include "FixtureTree.h"

#include <gtest/gtest.h>

namespace
{
class Containers : public testing::Test, protected CFixture
{
protected:
    CPgaFixtureItem& m_array = *m_group.m_pArray;
    CPgmFixtureItem& m_map = *m_group.m_pMap;

    /** The one report since the last call, and that nothing else changed. */
    void ExpectRefused(KW_ACCEPTANCE code, KW_ACCEPTANCE expected, const char* text)
    {
        EXPECT_EQ(code, expected);
        ASSERT_EQ(m_reports.Count(), 1) << text;
        const KW_ErrorReport report = m_reports.All()[0];
        EXPECT_TRUE(report.message.startsWith(QLatin1String(text)))
            << report.message.toStdString() << " is not " << text;
        EXPECT_EQ(report.file, QLatin1String(m_source));
        EXPECT_TRUE(report.function.contains(QLatin1String("CPgFixtureItem")))
            << report.function.toStdString();
        EXPECT_EQ(m_root->Text(), m_before);
        m_reports.Clear();
    }
    void Remember() { m_before = m_root->Text(); }

    QByteArray m_before;
    /** Where refusals say that they come from. */
    const char* m_source = "CommonDatabase/Src/DbPgArray";
};
} // namespace

TEST_F(Containers, ArraySizeShrinksOrGoesNegative)
{
    ASSERT_EQ(m_array.DbSetSize(3), eKW_ACC_OK);
    Remember();
    EXPECT_EQ(m_array.DbSetSize(3), eKW_ACC_OK) << "the present count changes nothing";
    EXPECT_EQ(m_root->Text(), m_before);
    ExpectRefused(m_array.DbSetSize(-1), eKW_ACC_BAD_INDEX, "bad size argument in KW_ACCEPTANCE");
    ExpectRefused(m_array.DbSetSize(2), eKW_ACC_CAN_NOT_SHRINK,
                  "Cannot use SetSize() to reduce size of the array -- memory leaks! in ");
    ExpectRefused(m_array.DbSetSize(21), eKW_ACC_CONTAINER_FULL, "bad size argument in ");
    EXPECT_EQ(m_array.ItemAt(2)->GetNodeName(), QStringLiteral("2"));
}

TEST_F(Containers, UnlimitedOnesFillTheMemory)
{
    auto* const array = new CPgaFixtureItem(1, CDbContainerBase::kUnlimited);
    auto* const map = new CPgmFixtureItem(CDbContainerBase::kUnlimited);
    m_root->AddPropGroupToList(array, QStringLiteral("Array"));
    m_root->AddPropGroupToList(map, QStringLiteral("Map"));
    EXPECT_EQ(array->GetMaxCount(), 2147483647);
    EXPECT_EQ(array->Grow(500000), eKW_ACC_CONTAINER_FULL);
    EXPECT_EQ(array->GetCount(), 0);
    const auto most = static_cast<INT32>(NDbBounds::kMaxContainerBytes /
                                         (3 * NDbBounds::kBytesPerNode)); // a group, two properties
    EXPECT_TRUE(map->HasRoomFor(most));
    EXPECT_FALSE(map->HasRoomFor(most + 1));
}

TEST_F(Containers, HistoryKeepsMoreBytesThanItMay)
{
    const auto steps = [this]
    {
        int count = 0;
        for (; m_root->Undo() == eKW_ACC_OK; ++count)
        {
        }
        return count;
    };
    const auto mebibyte = [](char c) { return QByteArray(CDbPropBlob::kMaxSize, c); };
    ASSERT_EQ(m_group.m_pInt16->Set(1), eKW_ACC_OK);
    for (int i = 0; i < 90; ++i)
    {
        ASSERT_EQ(m_group.m_pBlob->Set(mebibyte(static_cast<char>(i + 1))), eKW_ACC_OK);
    }
    EXPECT_EQ(steps(), 63) << "a record beside each mebibyte";
    EXPECT_EQ(m_group.m_pInt16->Get(), 1) << "the oldest steps went";
    ASSERT_EQ(m_root->Redo(), eKW_ACC_OK);

    auto* const array = new CPgaFixtureItem(1, CDbContainerBase::kUnlimited);
    m_root->AddPropGroupToList(array, QStringLiteral("Array"));
    for (int i = 0; i < 5; ++i)
    {
        ASSERT_EQ(array->Grow(20000), eKW_ACC_OK);
        ASSERT_EQ(array->Remove(0, 20000), eKW_ACC_OK);
    }
    EXPECT_EQ(steps(), 3) << "of 18 MB each";
}

TEST_F(Containers, ArrayTakesBadIndexesOrCounts)
{
    ASSERT_EQ(m_array.DbSetSize(2), eKW_ACC_OK);
    Remember();
    ExpectRefused(m_array.InsertInternal(3), eKW_ACC_BAD_INDEX, "Bad index 3");
    ExpectRefused(m_array.Insert(-1), eKW_ACC_BAD_INDEX, "Bad index -1");
    ExpectRefused(m_array.DbRemovePriv(-1, 1), eKW_ACC_BAD_INDEX, "Negative index... in ");
    ExpectRefused(m_array.DbRemovePriv(0, -1), eKW_ACC_BAD_INDEX, "Negative nofElements... in ");
    ExpectRefused(m_array.DbRemovePriv(1, 2), eKW_ACC_BAD_INDEX, "Index out of range.");
    ExpectRefused(m_array.Remove(1, 2147483647), eKW_ACC_BAD_INDEX, "Index out of range.");
    EXPECT_EQ(m_group.m_pFixed->Insert(0), eKW_ACC_FIXED_SIZE);
    EXPECT_EQ(m_group.m_pFixed->Remove(0, 1), eKW_ACC_FIXED_SIZE);
    EXPECT_EQ(m_array.ItemAt(2), nullptr);
    EXPECT_FALSE(m_array.IsItem(QStringLiteral("2")));
}

TEST_F(Containers, ArrayChangeIsNotUndoneWithContentsIndexAndReference)
{
    for (int i = 0; i < 3; ++i)
    {
        ASSERT_EQ(m_array.Insert(i), eKW_ACC_OK);
        m_array.ItemDirect(i)->m_pLevel->Set(i);
    }
    ASSERT_EQ(m_array.SetActive(2), eKW_ACC_OK);
    ASSERT_EQ(m_group.m_pReference->Set(QStringLiteral("First/Array[2]")), eKW_ACC_OK);
    Remember();
    const auto kept = m_array.ItemAt(1)->ShareGroup();
    ASSERT_EQ(m_array.Remove(1, 2), eKW_ACC_OK);
    EXPECT_EQ(m_array.GetCount(), 1);
    EXPECT_EQ(m_array.GetActive(), 0) << "the active index follows the count";
    EXPECT_FALSE(m_group.m_pReference->IsActive());
    EXPECT_EQ(m_root->GetUndoText(), QStringLiteral("First/Array[1] removed"));
    ASSERT_EQ(m_root->Undo(), eKW_ACC_OK);
    EXPECT_EQ(m_root->Text(), m_before);
    EXPECT_EQ(m_array.ItemAt(1)->ShareGroup(), kept) << "the same node, so handles stay good";
    EXPECT_EQ(m_group.m_pReference->Get(), QStringLiteral("First/Array[2]"));
    ASSERT_EQ(m_root->Redo(), eKW_ACC_OK);
    EXPECT_EQ(m_array.GetCount(), 1);
    EXPECT_EQ(kept->GetProperty(0)->SetText(QStringLiteral("5")), eKW_ACC_DETACHED);
}

TEST_F(Containers, ActiveIndexOrReferenceStaysWhileItsItemMoves)
{
    ASSERT_EQ(m_array.DbSetSize(4), eKW_ACC_OK);
    ASSERT_EQ(m_array.SetActive(2), eKW_ACC_OK);
    ASSERT_EQ(m_group.m_pReference->Set(QStringLiteral("First/Array[2]")), eKW_ACC_OK);
    const struct
    {
        bool inserts;
        INT32 index, count, active;
    } rows[] = {{true, 3, 1, 2},  {true, 2, 1, 3},  {true, 0, 1, 4}, {false, 5, 1, 4},
                {false, 0, 2, 2}, {false, 1, 1, 1}, {true, 1, 1, 2}};
    const CDbPropertyGroup* const item = m_array.ItemAt(2);
    for (const auto& [inserts, index, count, active] : rows)
    {
        SCOPED_TRACE(testing::Message() << (inserts ? "insert " : "remove ") << index);
        Remember();
        const INT32 before = m_array.GetActive();
        ASSERT_EQ(inserts ? m_array.Insert(index) : m_array.Remove(index, count), eKW_ACC_OK);
        ASSERT_EQ(m_root->Undo(), eKW_ACC_OK);
        EXPECT_EQ(m_root->Text(), m_before);
        EXPECT_EQ(m_array.GetActive(), before);
        ASSERT_EQ(m_root->Redo(), eKW_ACC_OK);
        EXPECT_EQ(m_array.GetActive(), active);
        EXPECT_EQ(m_array.ItemAt(active), item);
        EXPECT_EQ(m_group.m_pReference->Get(), item->GetPath());
    }
    // The item itself goes: what takes its place is active, and stays it when the array grows.
    ASSERT_EQ(m_array.Remove(2, m_array.GetCount() - 2), eKW_ACC_OK);
    EXPECT_EQ(m_array.GetActive(), 1);
    ASSERT_EQ(m_array.DbSetSize(9), eKW_ACC_OK);
    EXPECT_EQ(m_array.GetActive(), 1);
    ASSERT_EQ(m_array.Remove(0, 9), eKW_ACC_OK);
    EXPECT_EQ(m_array.GetActive(), -1);
}

TEST_F(Containers, ReferenceThatMovedToTheItemOfItsPathIsNotUndone)
{
    ASSERT_EQ(m_array.Insert(0), eKW_ACC_OK);
    const CDbPropertyGroup* const first = m_array.ItemAt(0);
    const QString path = QStringLiteral("First/Array[0]");
    ASSERT_EQ(m_group.m_pReference->Set(path), eKW_ACC_OK);
    {
        CDbTransaction transaction(*m_root, QStringLiteral("both"));
        ASSERT_EQ(m_array.Insert(0), eKW_ACC_OK);
        ASSERT_EQ(m_group.m_pReference->Set(path), eKW_ACC_OK);
        ASSERT_EQ(transaction.Commit(), eKW_ACC_OK);
    }
    ASSERT_EQ(m_root->Undo(), eKW_ACC_OK);
    EXPECT_EQ(m_group.m_pReference->GetReferencedGroup().get(), first);
    ASSERT_EQ(m_root->Redo(), eKW_ACC_OK);
    EXPECT_EQ(m_group.m_pReference->GetReferencedGroup().get(), m_array.ItemAt(0));
}

TEST_F(Containers, CopyLosesItsItemToARuleThatMovesIt)
{
    m_map.Insert(QStringLiteral("a"));
    m_map.ItemDirect(QStringLiteral("a"))->m_pLevel->Set(4.0);
    m_group.m_onInserted = [this](const QString& item)
    {
        m_map.AdaptNumericKeyAndName(item, QStringLiteral("z"), 9);
        m_map.ProcessRemove(QStringLiteral("a"));
    };
    ASSERT_EQ(m_map.Copy(QStringLiteral("a"), QStringLiteral("b")), eKW_ACC_OK);
    EXPECT_EQ(m_map.GetNames(), QStringList(QStringLiteral("z")));
    EXPECT_EQ(m_map.ItemDirect(QStringLiteral("z"))->m_pLevel->Get(), 4.0);
    ASSERT_EQ(m_array.DbSetSize(1), eKW_ACC_OK);
    m_array.ItemDirect(0)->m_pLevel->Set(5.0);
    m_group.m_onInserted = [this](const QString& item)
    { m_array.DbRemovePriv(item.toInt() == 0 ? 1 : 0, 1); };
    ASSERT_EQ(m_array.Copy(0, 1), eKW_ACC_OK);
    ASSERT_EQ(m_array.GetCount(), 1);
    EXPECT_EQ(m_array.ItemDirect(0)->m_pLevel->Get(), 5.0);
}

TEST_F(Containers, ChangeOrItsUndoIsNotCounted)
{
    const QString names[] = {QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")};
    ASSERT_EQ(m_map.Insert(names[0]), eKW_ACC_OK);
    ASSERT_EQ(m_map.Insert(names[1]), eKW_ACC_OK);
    ASSERT_EQ(m_array.DbSetSize(3), eKW_ACC_OK);
    ASSERT_EQ(m_array.SetActive(0), eKW_ACC_OK);
    // None of them moves the active item, which counts of itself.
    const std::pair<CDbPropertyGroup*, std::function<KW_ACCEPTANCE()>> changes[] = {
        {&m_map, [&] { return m_map.InsertInternal(names[2], QString(), -1, false, true); }},
        {&m_map, [&] { return m_map.Rename(names[0], names[2]); }},
        {&m_map, [&] { return m_map.Remove(names[0]); }},
        {&m_array, [&] { return m_array.Insert(3); }},
        {&m_array, [&] { return m_array.Remove(2, 1); }}};
    for (const auto& [container, change] : changes)
    {
        long long counter = 0;
        container->HasChanged(counter);
        CDbTransaction transaction(*m_root, QStringLiteral("change"));
        ASSERT_EQ(change(), eKW_ACC_OK);
        ASSERT_EQ(transaction.Commit(), eKW_ACC_OK);
        EXPECT_TRUE(container->HasChanged(counter));
        ASSERT_EQ(m_root->Undo(), eKW_ACC_OK);
        EXPECT_TRUE(container->HasChanged(counter));
    }
}

TEST_F(Containers, MapTakesDoubleMissingOrBadNames)
{
    ASSERT_EQ(m_map.Insert(QStringLiteral("a")), eKW_ACC_OK);
    ASSERT_EQ(m_map.InsertInternal(QStringLiteral("b"), QString(), 7, true, false), eKW_ACC_OK);
    m_source = "CommonDatabase/Src/DbPgMap";
    Remember();
    ExpectRefused(m_map.Insert(QStringLiteral(" a ")), eKW_ACC_NAME_IN_USE, "a already exists in ");
    ExpectRefused(m_map.InsertInternal(QStringLiteral("c"), QString(), 7, false, false),
                  eKW_ACC_NAME_IN_USE, "7 already exists in ");
    ExpectRefused(m_map.Remove(QStringLiteral("x")), eKW_ACC_NOT_FOUND,
                  "Item x does not exist in ");
    ExpectRefused(m_map.Rename(QStringLiteral("x"), QStringLiteral("y")), eKW_ACC_NOT_FOUND,
                  "PropertyGroup x not exists in ");
    ExpectRefused(m_map.Rename(QStringLiteral("a"), QStringLiteral("b")), eKW_ACC_NAME_IN_USE,
                  "b already exists in ");
    ExpectRefused(m_map.Insert(QStringLiteral("a/b")), eKW_ACC_BAD_NAME,
                  "\"a/b\" is no valid name");
    EXPECT_EQ(m_map.Copy(QStringLiteral("x"), QStringLiteral("y")), eKW_ACC_NOT_FOUND);
    EXPECT_EQ(m_map.SetActive(QStringLiteral("x")), eKW_ACC_NOT_FOUND);
    CDbPropBase& activeKey = *m_map.FindProperty(u"ActiveKey");
    EXPECT_EQ(activeKey.SetText(QStringLiteral("x")), eKW_ACC_NOT_FOUND);
    EXPECT_EQ(activeKey.GetValueTexts(), m_map.GetNames());
    EXPECT_EQ(m_map.GetActiveItem(), QStringLiteral("b"));
    EXPECT_TRUE(m_map.IsItem(7));
    EXPECT_FALSE(m_map.IsItem(-1));
    EXPECT_EQ(m_map.GetNames(), (QStringList{QStringLiteral("a"), QStringLiteral("b")}));
}

TEST_F(Containers, RenameLosesKeyActiveItemReferenceOrHandle)
{
    m_map.Insert(QStringLiteral("a"));
    m_map.InsertInternal(QStringLiteral("b"), QStringLiteral("Shown"), 7, true, false);
    ASSERT_EQ(m_group.m_pReference->Set(QStringLiteral("First/Map[b]")), eKW_ACC_OK);
    const auto item = m_map.ShareMapItem(7);
    ASSERT_EQ(item->Rename(QStringLiteral("z")), eKW_ACC_OK);
    EXPECT_EQ(item->GetName(), QStringLiteral("z"));
    EXPECT_EQ(item->GetDisplayName(), QStringLiteral("Shown"));
    EXPECT_EQ(item->GetNumericKey(), 7);
    EXPECT_TRUE(item->IsActive());
    EXPECT_EQ(m_map.GetActiveItem(), QStringLiteral("z"));
    EXPECT_EQ(m_group.m_pReference->Get(), QStringLiteral("First/Map[z]"));
    EXPECT_EQ(m_root->GetUndoText(), QStringLiteral("b renamed"));
    ASSERT_EQ(m_root->Undo(), eKW_ACC_OK);
    EXPECT_EQ(m_map.GetActiveItem(), QStringLiteral("b"));
    EXPECT_EQ(item->GetName(), QStringLiteral("b"));
    ASSERT_EQ(m_root->Redo(), eKW_ACC_OK);
    ASSERT_EQ(m_map.AdaptNumericKeyAndName(QStringLiteral("z"), QStringLiteral("z"), 3),
              eKW_ACC_OK);
    EXPECT_EQ(item->GetNumericKey(), 3);
    ASSERT_EQ(m_map.Remove(QStringLiteral("z")), eKW_ACC_OK);
    EXPECT_EQ(m_map.GetActiveItem(), QString());
    EXPECT_EQ(item->GetNumericKey(), -1);
    EXPECT_EQ(item->Rename(QStringLiteral("y")), eKW_ACC_DETACHED);
}

TEST_F(Containers, UndoOfARenameGuessesTheDisplayName)
{
    m_map.InsertInternal(QStringLiteral("b"), QStringLiteral("z"), 7, true, false);
    const auto item = m_map.ShareMapItem(7);
    ASSERT_EQ(item->Rename(QStringLiteral("z")), eKW_ACC_OK);
    ASSERT_EQ(m_root->Undo(), eKW_ACC_OK);
    EXPECT_EQ(item->GetName(), QStringLiteral("b"));
    EXPECT_EQ(item->GetDisplayName(), QStringLiteral("z"));
    long long counter = 0;
    m_root->HasChanged(counter);
    ASSERT_EQ(item->Rename(QStringLiteral(" b ")), eKW_ACC_OK);
    EXPECT_FALSE(m_root->HasChanged(counter)) << "its own name is no change";
    EXPECT_TRUE(m_root->CanRedo()) << "nor a step";
}

TEST_F(Containers, LetterOfUnicodeIsRefusedOrSpeltInTwoWays)
{
    const QString composed = QStringLiteral("Caf\u00e9");
    const QString decomposed = QStringLiteral("Cafe\u0301");
    const QString beyond = QString::fromUtf8("\U00020BB7");
    for (const QString& name : {decomposed, beyond, beyond.repeated(64)})
    {
        EXPECT_TRUE(CDbPgMapBase::IsNameValid(name)) << name.toStdString();
        EXPECT_EQ(m_map.Insert(name), eKW_ACC_OK) << name.toStdString();
    }
    for (const QString& name :
         {beyond.repeated(65), beyond.left(1), beyond.right(1) + beyond.left(1),
          QStringLiteral("a\tb"), QStringLiteral("a\uFFFE")})
    {
        EXPECT_FALSE(CDbPgMapBase::IsNameValid(name)) << name.toStdString();
    }
    EXPECT_EQ(m_map.GetNames().first(), composed);
    const CDbPropertyGroup* const item = m_map.ItemByName(composed);
    for (const QString& name : {composed, decomposed})
    {
        SCOPED_TRACE(name.toUtf8().toHex().toStdString());
        EXPECT_EQ(m_map.InsertInternal(name, QString(), -1, false, false), eKW_ACC_NAME_IN_USE);
        EXPECT_EQ(m_map.ItemByName(name), item);
        ASSERT_EQ(m_map.SetActive(name), eKW_ACC_OK);
        EXPECT_EQ(m_map.GetActiveItem(), composed);
        EXPECT_EQ(dynamic_cast<CDbPropertyGroup*>(
                      m_root->Find(QStringLiteral("First/Map[%1]").arg(name)).get()),
                  item);
        EXPECT_EQ(m_map.Rename(name, decomposed), eKW_ACC_OK);
        EXPECT_EQ(m_map.Copy(name, QStringLiteral("x")), eKW_ACC_OK);
        EXPECT_EQ(m_map.Remove(QStringLiteral("x")), eKW_ACC_OK);
    }
    EXPECT_EQ(m_map.Remove(decomposed), eKW_ACC_OK);
    EXPECT_EQ(m_map.GetActiveItem(), QString());
}

TEST_F(Containers, CopyMissesContentsOrAliasesThem)
{
    m_map.Insert(QStringLiteral("a"));
    m_map.ItemDirect(QStringLiteral("a"))->m_pLevel->Set(4.0);
    m_map.ItemDirect(QStringLiteral("a"))->m_pLabel->Set(QStringLiteral("x"));
    ASSERT_EQ(m_map.Copy(QStringLiteral("a"), QStringLiteral("  ")), eKW_ACC_OK)
        << "a name that normalises to none is made from the pattern";
    EXPECT_EQ(m_map.GetCount(), 2);
    ASSERT_EQ(m_root->Undo(), eKW_ACC_OK);
    Remember();
    ASSERT_EQ(m_map.Copy(QStringLiteral("a"), QStringLiteral("b")), eKW_ACC_OK);
    EXPECT_EQ(m_map.ItemDirect(QStringLiteral("b"))->m_pLevel->Get(), 4.0);
    EXPECT_EQ(m_map.ItemDirect(QStringLiteral("b"))->m_pLabel->Get(), QStringLiteral("x"));
    m_map.ItemDirect(QStringLiteral("b"))->m_pLevel->Set(5.0);
    EXPECT_EQ(m_map.ItemDirect(QStringLiteral("a"))->m_pLevel->Get(), 4.0);
    m_root->Undo();
    ASSERT_EQ(m_root->Undo(), eKW_ACC_OK);
    EXPECT_EQ(m_root->Text(), m_before) << "a copy is one step";
}

TEST_F(Containers, NameOfThePatternCollidesOrIsNotFoundAgainOrLimitIsIgnored)
{
    m_map.Insert(QStringLiteral("Label2"));
    for (int i = 1; i < 20; ++i)
    {
        ASSERT_EQ(m_map.Insert(QString()), eKW_ACC_OK);
    }
    EXPECT_EQ(m_map.Insert(QStringLiteral("one more")), eKW_ACC_CONTAINER_FULL);
    EXPECT_EQ(m_map.GetCount(), 20);
    m_map.Remove(QStringLiteral("Label3"));
    m_map.Remove(QStringLiteral("Label20"));
    m_map.Rename(QStringLiteral("Label5"), QStringLiteral("Another"));
    m_map.Insert(QString());
    m_map.Insert(QString());
    const QStringList names = m_map.GetNames();
    EXPECT_EQ(names.mid(0, 5), (QStringList{"Label2", "Label1", "Label3", "Label4", "Another"}));
    EXPECT_EQ(names.mid(17), (QStringList{"Label18", "Label19", "Label5"}));
    EXPECT_EQ(m_map.ShareMapItem(QStringLiteral("Label3"))->GetNumericKey(), 2);
    m_root->Undo();
    EXPECT_EQ(m_map.CreateUniqueName(), QStringLiteral("Label5"));
    m_map.SetNamePattern(QStringLiteral("Signal"));
    EXPECT_EQ(m_map.CreateUniqueName(), QStringLiteral("Signal1"));
}
