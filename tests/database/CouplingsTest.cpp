// SPDX-License-Identifier: MIT
#include "CommonDatabase/Couplings/DbRules.h"
#include "FileText.h"
#include "FixtureTree.h"
#include "KWCouplings.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <map>

using namespace NNames;

// Not unnamed: steps are arguments of templates that a header defines.
namespace NRuled
{
/** Letters of the steps that ran, and what a step does beside that. */
static std::string s_ran;
static std::map<char, std::function<KW_ACCEPTANCE()>> s_does;

static KW_ACCEPTANCE RunLetter(char name)
{
    s_ran += name;
    const auto found = s_does.find(name);
    return found == s_does.end() ? static_cast<KW_ACCEPTANCE>(eKW_ACC_OK) : found->second();
}

class CPgRuled;
class CPgRuledItem;

struct t_ItemNames
{
    using t_Class = CPgRuledItem;
    static constexpr t_Way<t_ItemNames, CDbPropNumInt32> Level{{eNODE::Property, false, 1, {0}}};
};

struct t_RuledNames
{
    using t_Class = CPgRuled;
    static constexpr t_Way<t_RuledNames, CDbPropNumInt32> A{{eNODE::Property, false, 1, {0}}};
    static constexpr t_Way<t_RuledNames, CDbPropNumInt32> B{{eNODE::Property, false, 1, {1}}};
    static constexpr t_Way<t_RuledNames, CDbPropNumInt32> C{{eNODE::Property, false, 1, {2}}};
    static constexpr t_Way<t_RuledNames, t_Items<t_ItemNames>> Array{{eNODE::Group, false, 1, {0}}};
    static constexpr t_Way<t_RuledNames, t_Items<t_ItemNames>> Map{{eNODE::Group, false, 1, {1}}};
    static constexpr t_Way<t_RuledNames, CDbFunction> Action{{eNODE::Action, false, 1, {0}}};
};

struct t_TreeNames
{
    static constexpr bool isRoot = true;
    static constexpr t_Way<t_TreeNames, t_RuledNames> First{{eNODE::Group, false, 1, {0}}};
    static constexpr t_Way<t_TreeNames, t_RuledNames> Second{{eNODE::Group, false, 1, {1}}};
};

class CPgRuledItem : public CPgOfTest
{
public:
    t_Couplings Rules() const override;
    template <char name>
    void Step()
    {
        RunLetter(name);
    }

    CDbPropNumInt32* m_level = Declare(new CDbPropNumInt32, "Level");
};

/** Steps are letters; the table is that of the tree's second group. */
class CPgRuled : public CPgOfTest
{
public:
    explicit CPgRuled(bool hasRules) : m_hasRules(hasRules)
    {
        m_a->DeclareMinAndMax(0, 1000);
        AddPropGroupToList(m_array, QStringLiteral("Array"));
        AddPropGroupToList(m_map, QStringLiteral("Map"));
        AddObject(m_action, QStringLiteral("Action"));
    }
    t_Couplings Rules() const override;
    template <char name>
    KW_ACCEPTANCE Step()
    {
        return RunLetter(name);
    }
    void Double() { m_c->DbSet(2 * m_b->Get()); }
    void Halve() { m_b->DbSet(m_c->Get() / 2); }

    CDbPropNumInt32* m_a = Declare(new CDbPropNumInt32, "A");
    CDbPropNumInt32* m_b = Declare(new CDbPropNumInt32, "B");
    CDbPropNumInt32* m_c = Declare(new CDbPropNumInt32, "C");
    CDbPgArray<CPgRuledItem>* m_array = new CDbPgArray<CPgRuledItem>(1, 20);
    CDbPgMap<CPgRuledItem>* m_map = new CDbPgMap<CPgRuledItem>(20);
    CDbFunction* m_action = new CDbFunction;

private:
    bool m_hasRules;
};

t_Couplings CPgRuledItem::Rules() const
{
    using I = CPgRuledItem;
    static constexpr auto elsewhere = t_TreeNames::First / t_RuledNames::A;
    static constexpr auto rows = Table<t_ItemNames>(
        On(t_ItemNames::Level) >> Do<&I::Step<'x'>>,
        Delivered(t_ItemNames::Level) >> Do<&I::Step<'w'>>, Changed(elsewhere) >> Do<&I::Step<'y'>>,
        Changed(elsewhere) >> Do<&I::Step<'z'>>);
    return rows;
}

template <char name>
constexpr auto step = &CPgRuled::Step<name>;

t_Couplings CPgRuled::Rules() const
{
    using N = t_RuledNames;
    static constexpr auto first = t_TreeNames::First;
    static constexpr auto rows = Table<N>(
        On(N::A) >> Do<step<'a'>>, OnAny() >> Derive<step<'b'>>, Delivered(N::A) >> Do<step<'c'>>,
        On(first / N::A, first / N::Action) >> Do<step<'d'>>,
        Delivered(first / N::A) >> Do<step<'e'>>,
        Changed(first / N::A, first / N::B, N::A) >> Derive<step<'f'>>,
        Changed(first / N::B) >> Settle<step<'g'>>, Changed(first / N::A) >> Do<step<'h'>>,
        Items(N::Array, N::Map) >> Do<step<'i'>>, On(N::Action) >> Do<step<'j'>, step<'k'>>,
        On(N::Action) >> Do<step<'l'>>, Fresh<step<'m'>>, Derive<step<'n'>, step<'b'>>,
        On(first / N::Array / each / t_ItemNames::Level) >> Do<step<'o'>>,
        Changed(first / N::Array / each / t_ItemNames::Level) >> Do<step<'p'>>,
        Changed(first / N::C) >> Do<step<'q'>>, On(N::B) >> Do<&CPgRuled::Double>,
        On(N::C) >> Do<&CPgRuled::Halve>, Twins(N::B, N::C));
    return m_hasRules ? t_Couplings(rows) : t_Couplings{};
}

class CRuledRoot final : public CDbPgRoot
{
public:
    CRuledRoot()
    {
        SetNodeName(QStringLiteral("Ruled"));
        AddPropGroupToList(m_first, QStringLiteral("First"));
        AddPropGroupToList(m_second, QStringLiteral("Second"));
    }
    CPgRuled* m_first = new CPgRuled(false);
    CPgRuled* m_second = new CPgRuled(true);
};
} // namespace NRuled

using namespace NRuled;

namespace
{
class Couplings : public testing::Test
{
protected:
    ~Couplings() override
    {
        s_ran.clear();
        s_does.clear();
    }
    static std::string Ran() { return std::exchange(s_ran, {}); }

    std::shared_ptr<CRuledRoot> m_root = BuildTree<CRuledRoot>();
    CPgRuled& m_first = *m_root->m_first;
    CPgRuled& m_second = *m_root->m_second;
    CReports m_reports;
};
} // namespace

TEST_F(Couplings, RowRunsForAnotherCauseOrInAnotherOrder)
{
    EXPECT_EQ(Ran(), "mbfnfg") << "fresh, each derived step once, what waits again, what settles";
    INT32 value = 0;
    const auto next = [&value] { return ++value; };
    const struct
    {
        const char* what;
        std::function<void()> act;
        const char* ran;
    } steps[] = {
        {"a client writes", [&] { m_second.m_a->Set(next()); }, "abf"},
        {"it writes what stands", [&] { m_second.m_a->Set(value); }, ""},
        {"it writes what is refused", [&] { m_second.m_a->Set(5000); }, ""},
        {"a setting that only OnAny knows", [&] { m_second.m_b->Set(next()); }, "b"},
        {"delivered", [&] { m_second.m_a->DbSet(next()); }, "cf"},
        {"a client writes elsewhere", [&] { m_first.m_a->Set(next()); }, "dfh"},
        {"delivered elsewhere", [&] { m_first.m_a->DbSet(next()); }, "efh"},
        {"what only waits", [&] { m_first.m_b->Set(next()); }, "fg"},
        {"two writes of a transaction",
         [&]
         {
             m_root->StartTransaction(QString());
             m_first.m_b->Set(next());
             m_first.m_b->Set(next());
             m_root->EndTransaction(true);
         },
         "fgfg"},
        {"undo", [&] { m_root->Undo(); }, ""},
        {"redo", [&] { m_root->Redo(); }, ""},
        {"a forced write of what stands",
         [&]
         {
             m_first.m_a->SetForceDependencies(true);
             m_first.m_a->Set(m_first.m_a->Get());
             m_first.m_a->DbSet(m_first.m_a->Get());
             m_first.m_a->SetForceDependencies(false);
         },
         "dfhefh"},
        {"an action", [&] { EXPECT_EQ(m_second.m_action->Set(), eKW_ACC_OK); }, "jkl"},
        {"an action elsewhere", [&] { EXPECT_EQ(m_first.m_action->Set(), eKW_ACC_OK); }, "d"},
        {"an item comes", [&] { m_second.m_array->Insert(0); }, "i"},
        {"it goes", [&] { m_second.m_array->Remove(0, 1); }, "i"},
        {"a named one comes", [&] { m_second.m_map->Insert(QStringLiteral("M")); }, "i"},
        {"it is renamed", [&] { m_second.m_map->Rename(QStringLiteral("M"), QStringLiteral("N")); },
         "i"},
        {"it comes back by undo", [&] { m_root->Undo(); }, ""},
        {"everything is computed", [&] { m_root->GetDependencies().CalculateEverything(); },
         "bfnfg"},
        {"nothing is while the tree is built",
         [&]
         {
             m_root->SetAutoUpdateDependencies(false);
             m_first.m_b->Set(next());
             m_root->SetAutoUpdateDependencies(true);
         },
         ""},
        {"nor is it caught up by another write", [&] { m_first.m_action->Set(); }, "d"}};
    for (const auto& [what, act, ran] : steps)
    {
        act();
        EXPECT_EQ(Ran(), ran) << what;
    }
    EXPECT_EQ(m_reports.Messages().toStdString(), "");
}

TEST_F(Couplings, RowMissesAnItemThatCameOrFollowsOneThatWent)
{
    INT32 value = 0;
    // What a client's write starts; it is taken back.
    const auto probe = [this, &value](CDbPropNumInt32& number)
    {
        Ran();
        EXPECT_EQ(number.Set(++value), eKW_ACC_OK);
        EXPECT_EQ(m_root->Undo(), eKW_ACC_OK);
        return Ran();
    };
    const auto undo = [this] { EXPECT_EQ(m_root->Undo(), eKW_ACC_OK); };
    const auto redo = [this] { EXPECT_EQ(m_root->Redo(), eKW_ACC_OK); };
    const auto insert = [this] { EXPECT_EQ(m_first.m_array->Insert(0), eKW_ACC_OK); };
    const auto remove = [this] { EXPECT_EQ(m_first.m_array->Remove(0, 1), eKW_ACC_OK); };
    const struct
    {
        const char* what;
        std::vector<std::function<void()>> acts;
        const char* elsewhere; ///< what a write starts that items follow
    } steps[] = {{"none", {}, "dfh"},
                 {"inserted", {insert}, "dfhyz"},
                 {"undone", {undo}, "dfh"},
                 {"redone", {insert, undo, redo}, "dfhyz"},
                 {"removed", {remove}, "dfh"},
                 {"removal undone", {undo}, "dfhyz"},
                 {"removal redone", {remove, undo, redo}, "dfh"},
                 {"two", {insert, insert}, "dfhyzyz"}};
    for (const auto& [what, acts, elsewhere] : steps)
    {
        for (const auto& act : acts)
        {
            act();
        }
        EXPECT_EQ(probe(*m_first.m_a), elsewhere) << what;
        for (INT32 i = 0; i < m_first.m_array->GetCount(); ++i)
        {
            EXPECT_EQ(probe(*m_first.m_array->ItemDirect(i)->m_level), "xop") << what;
        }
    }
    const auto gone =
        std::static_pointer_cast<CPgRuledItem>(m_first.m_array->ItemDirect(0)->shared_from_this());
    remove();
    Ran();
    EXPECT_EQ(gone->m_level->DbSet(++value), eKW_ACC_OK);
    m_root->GetDependencies().LeaveItem(m_second);
    m_first.m_a->Set(++value);
    EXPECT_EQ(Ran(), "yz") << "what left runs no more";
}

TEST_F(Couplings, StepThatWritesOrRefusesRunsRowsTwiceOrStopsAWrite)
{
    const auto refuse = [] { return static_cast<KW_ACCEPTANCE>(eKW_ACC_NOTHING_TO_ACT_ON); };
    const auto warn = [] { return static_cast<KW_ACCEPTANCE>(eKW_ACC_WARNING); };
    const auto own = [this] { return m_second.m_action->Set(); };
    const auto elsewhere = [this] { return m_first.m_action->Set(); };
    const auto write = [this] { return m_second.m_a->Set(m_second.m_a->Get() + 1); };
    const auto deliver = [this] { return m_second.m_a->DbSet(m_second.m_a->Get() + 1); };
    const auto writeMarked = [this] { return m_first.m_a->Set(m_first.m_a->Get() + 1); };
    const auto writeC = [this] { return m_first.m_c->Set(1); };
    const auto deliverTwice = [deliver] { return std::max(deliver(), deliver()); };
    const auto deliverB = [this] { return m_first.m_b->DbSet(m_first.m_b->Get() + 1); };
    const struct
    {
        char step;
        std::function<KW_ACCEPTANCE()> does;
        std::function<KW_ACCEPTANCE()> act;
        KW_ACCEPTANCE code;
        const char* ran;
        // A row that several writes mark runs once, behind them all; f is registered before q.
    } cases[] = {{'q', deliverTwice, writeC, eKW_ACC_OK, "qccf"},
                 {'d', deliverB, writeMarked, eKW_ACC_OK, "dfgh"},
                 {'j', refuse, own, eKW_ACC_NOTHING_TO_ACT_ON, "j"},
                 {'k', refuse, own, eKW_ACC_NOTHING_TO_ACT_ON, "jk"},
                 {'j', warn, own, eKW_ACC_WARNING, "jkl"},
                 {'d', refuse, elsewhere, eKW_ACC_NOTHING_TO_ACT_ON, "d"},
                 {'a', refuse, write, eKW_ACC_WARNING, "abf"},
                 {'c', refuse, deliver, eKW_ACC_OK, "cf"},
                 {'f', refuse, write, eKW_ACC_OK, "abf"}};
    for (const auto& [step, does, act, code, ran] : cases)
    {
        s_does = {{step, does}};
        Ran();
        EXPECT_EQ(act(), code) << ran;
        EXPECT_EQ(Ran(), ran);
    }
    EXPECT_EQ(m_reports.Messages().toStdString(), "");
}

TEST_F(Couplings, CycleNeverEndsOrIsSilent)
{
    s_does['f'] = [this] { return m_first.m_c->DbSet(m_first.m_c->Get() + 1); };
    s_does['q'] = [this] { return m_first.m_a->DbSet(m_first.m_a->Get() + 1); };
    Ran();
    EXPECT_EQ(m_first.m_a->Set(1), eKW_ACC_WARNING) << "moved by a row";
    EXPECT_EQ(Ran(), "dfhqe");
    EXPECT_EQ(m_reports.Messages().toStdString(),
              "Dependency cycle: \"First/A\" changed again after \"Second/Step\" ran; it is not "
              "run a second time\n"
              "Dependency cycle: \"First/A\" changed again after \"Second/Step\" ran; it is not "
              "run a second time");
    m_reports.Clear();
    s_does.clear();
    ASSERT_EQ(m_first.m_a->Set(9), eKW_ACC_OK);
    EXPECT_EQ(Ran(), "dfh") << "a cycle leaves nothing behind";
    EXPECT_EQ(m_reports.Count(), 0);
}

TEST_F(Couplings, WhatRowsWroteIsNotOneStepWithTheWrite)
{
    s_does['f'] = [this] { return m_second.m_c->DbSet(m_first.m_a->Get() * 2); };
    m_first.m_a->DbSet(21);
    EXPECT_EQ(m_second.m_c->Get(), 42);
    long long counter = 0;
    m_root->HasChanged(counter);
    m_root->GetDependencies().CalculateEverything();
    EXPECT_FALSE(m_root->HasChanged(counter)) << "computed a second time";
    ASSERT_EQ(m_first.m_a->Set(7), eKW_ACC_OK);
    ASSERT_EQ(m_root->Undo(), eKW_ACC_OK);
    EXPECT_EQ(m_second.m_c->Get(), 42);
    ASSERT_EQ(m_root->Redo(), eKW_ACC_OK);
    EXPECT_EQ(m_second.m_c->Get(), 14);
}

TEST_F(Couplings, FileThatNamesOneTwinLosesItOrLeavesTheOther)
{
    const struct
    {
        const char* named;
        INT32 b;
        INT32 c;
    } cases[] = {{R"(<Prop Name="B" Value="3"/>)", 3, 6},
                 {R"(<Prop Name="C" Value="8"/>)", 4, 8},
                 {R"(<Prop Name="B" Value="7"/><Prop Name="C" Value="9"/>)", 7, 9}};
    const QTemporaryDir folder;
    for (const auto& [named, b, c] : cases)
    {
        const QString file = WriteFile(
            folder.filePath(QStringLiteral("a.xml")),
            QByteArray(R"(<Settings Kind="Ruled" Version="1.0"><PropGroup Name="Ruled">)") +
                R"(<PropGroup Name="Second">)" + named + "</PropGroup></PropGroup></Settings>");
        EXPECT_EQ(m_root->Recall(file), eKW_ACC_OK) << m_reports.Messages().toStdString();
        EXPECT_EQ(m_second.m_b->Get(), b) << named;
        EXPECT_EQ(m_second.m_c->Get(), c) << named;
    }
}

TEST_F(Couplings, RowIsToldOtherwiseThanDeclaredOrRun)
{
    const std::map<int, std::string> expected = {{1, "On(A) Do Step"},
                                                 {2, "OnAny() Derive Step"},
                                                 {6, "Changed(First/A, First/B, A) Derive Step"},
                                                 {7, "Changed(First/B) Settle Step"},
                                                 {9, "Items(Array, Map) Do Step"},
                                                 {10, "On(Action) Do Step, Step"},
                                                 {12, "Fresh() Do Step"},
                                                 {13, " Derive Step, Step"},
                                                 {14, "On(First/Array[each]/Level) Do Step"},
                                                 {17, "On(B) Do Double"},
                                                 {19, "Twins(B, C)  "}};
    const auto rows = KW_GetCouplingRows(m_second);
    ASSERT_EQ(rows.size(), 19U);
    for (const auto& [number, text] : expected)
    {
        const KW_CouplingRow& row = rows[static_cast<std::size_t>(number) - 1];
        EXPECT_EQ(row.number, number);
        EXPECT_EQ(row.group.toStdString(), "Second");
        EXPECT_EQ(
            QStringList({KW_FormatCouplingWhen(row), row.what, row.steps.join(QLatin1String(", "))})
                .join(QLatin1Char(' '))
                .toStdString(),
            text);
    }
    EXPECT_TRUE(KW_GetCouplingRows(m_first).empty());

    QStringList told;
    KW_WatchCouplings(
        [&told](const QString& path, const std::vector<KW_CouplingStep>& running)
        {
            told.append(path);
            for (const KW_CouplingStep& step : running)
            {
                told.back() +=
                    QStringLiteral(" < %1 %2 %3").arg(step.group).arg(step.row).arg(step.step);
            }
        });
    s_does['d'] = [this] { return m_second.m_b->Set(m_second.m_b->Get() + 1); };
    ASSERT_EQ(m_first.m_a->Set(1), eKW_ACC_OK);
    m_second.m_array->Insert(0);
    m_second.m_array->SetAvailability(eAVAILABILITY_READ_ONLY);
    ASSERT_EQ(m_root->Undo(), eKW_ACC_OK);
    int own = 0;
    KW_WatchCouplings(m_second, [&own](const QString&, const auto&) { ++own; });
    const auto other = BuildTree<CRuledRoot>();
    KW_WatchCouplings(*other, [](const QString& path, const auto&)
                      { ADD_FAILURE() << path.toStdString() << " of another tree"; });
    KW_WatchCouplings({});
    ASSERT_EQ(m_first.m_a->Set(2), eKW_ACC_OK);
    KW_WatchCouplings(*m_root, {});
    KW_WatchCouplings(*other, {});
    ASSERT_EQ(m_first.m_a->Set(3), eKW_ACC_OK);
    EXPECT_EQ(own, 3);
    EXPECT_EQ(told,
              QStringList({QStringLiteral("First/A"), QStringLiteral("Second/B < Second 4 Step"),
                           QStringLiteral("Second/C < Second 4 Step < Second 17 Double"),
                           QStringLiteral("Second/Array/ActiveIndex"),
                           QStringLiteral("Second/Array"), QStringLiteral("Second/Array")}))
        << told.join(QLatin1Char('\n')).toStdString();
}
