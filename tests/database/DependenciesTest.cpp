// SPDX-License-Identifier: MIT
#include "FixtureTree.h"

#include <gtest/gtest.h>

namespace
{
/** Records the order in which updates run. */
class Dependency : public testing::Test
{
protected:
    std::shared_ptr<CPgFixtureRoot> m_root = CPgFixtureRoot::Create();
    CPgFixture& m_first = *m_root->m_pFirst;
    CPgFixture& m_second = *m_root->m_pSecond;
    CReports m_reports;
    std::string m_ran;

    void Add(
        char name, std::initializer_list<CDbPropBase*> sources,
        std::function<void()> update = [] {})
    {
        m_root->GetDependencies().Add(
            m_second, sources,
            [this, name, update]
            {
                m_ran += name;
                update();
            },
            QString(QLatin1Char(name)));
    }
};
} // namespace

TEST_F(Dependency, RunsTwiceForAWriteOrOutOfOrder)
{
    Add('a', {m_first.m_pInt32, m_first.m_pInt16});
    Add('b', {m_first.m_pInt16, m_first.m_pFollower});
    Add('c', {m_first.m_pDouble}, [this] { m_second.m_pInt32->DbSet(9); });
    Add('d', {m_first.m_pInt32, m_second.m_pInt32});

    // The limits of the follower go with the number: both are sources of one write.
    ASSERT_EQ(m_first.m_pFollower->Set(-8.0), eKW_ACC_OK);
    EXPECT_EQ(m_ran, "b");
    m_ran.clear();
    ASSERT_EQ(m_first.m_pDouble->Set(5.0), eKW_ACC_OK);
    EXPECT_EQ(m_ran, "bcd") << "in order of registration, d after what c wrote";
    m_ran.clear();
    ASSERT_EQ(m_first.m_pDouble->Set(5.0), eKW_ACC_OK);
    EXPECT_EQ(m_first.m_pInt32->Set(101), eKW_ACC_ABOVE_MAXIMUM);
    EXPECT_EQ(m_ran, "") << "nothing was written";
    m_root->StartTransaction(QString());
    m_first.m_pInt32->Set(1);
    m_first.m_pInt32->Set(2);
    EXPECT_EQ(m_root->EndTransaction(true), eKW_ACC_OK);
    EXPECT_EQ(m_ran, "adad") << "each write of a transaction leaves settled numbers";
    EXPECT_EQ(m_reports.Count(), 0);
}

TEST_F(Dependency, SeveralSourcesWrittenByOneRunTheNextSeveralTimes)
{
    // Registered before the one that feeds it: it still runs after, and once.
    Add('a', {m_second.m_pInt16, m_second.m_pUInt16, m_second.m_pText});
    Add('b', {m_first.m_pInt32},
        [this]
        {
            m_second.m_pInt16->DbSet(1);
            m_second.m_pUInt16->DbSet(2);
            m_second.m_pInt16->DbSet(3);
            m_second.m_pText->DbSet(QStringLiteral("x"));
        });
    ASSERT_EQ(m_first.m_pInt32->Set(1), eKW_ACC_OK);
    EXPECT_EQ(m_ran, "ba");
    ASSERT_EQ(m_first.m_pInt32->Set(2), eKW_ACC_OK);
    EXPECT_EQ(m_ran, "baba") << "Int16 went from 3 to 1 and back";
    EXPECT_EQ(m_reports.Count(), 0);
}

TEST_F(Dependency, UndoRunsRulesAgain)
{
    Add('a', {m_first.m_pInt32}, [this] { m_second.m_pInt32->DbSet(m_first.m_pInt32->Get() + 1); });
    ASSERT_EQ(m_first.m_pInt32->Set(7), eKW_ACC_OK);
    EXPECT_EQ(m_second.m_pInt32->Get(), 8);
    m_ran.clear();
    ASSERT_EQ(m_root->Undo(), eKW_ACC_OK);
    EXPECT_EQ(m_second.m_pInt32->Get(), 0) << "one step with what followed";
    ASSERT_EQ(m_root->Redo(), eKW_ACC_OK);
    EXPECT_EQ(m_second.m_pInt32->Get(), 8);
    EXPECT_EQ(m_ran, "");
}

TEST_F(Dependency, CycleNeverEndsOrIsSilent)
{
    Add('a', {m_first.m_pInt32}, [this] { m_second.m_pInt32->DbSet(m_first.m_pInt32->Get()); });
    Add('b', {m_second.m_pInt32},
        [this] { m_first.m_pInt32->DbSet(m_second.m_pInt32->Get() + 1); });
    ASSERT_EQ(m_first.m_pInt32->Set(1), eKW_ACC_WARNING) << "moved by a dependant";
    EXPECT_EQ(m_ran, "ab");
    EXPECT_EQ(m_first.m_pInt32->Get(), 2);
    EXPECT_EQ(m_reports.Messages(),
              QStringLiteral("Dependency cycle: \"First/Int32\" changed again after \"a\" ran; it "
                             "is not run a second time"));
    m_ran.clear();
    m_reports.Clear();
    ASSERT_EQ(m_first.m_pInt16->Set(1), eKW_ACC_OK);
    EXPECT_EQ(m_ran, "") << "a cycle leaves nothing behind";
    EXPECT_EQ(m_reports.Count(), 0);
}

TEST_F(Dependency, RunsBeforeTheTreeIsCompleteOrAfterItsOwnerIsGone)
{
    Add('a', {m_first.m_pInt32});
    m_root->SetAutoUpdateDependencies(false);
    ASSERT_EQ(m_first.m_pInt32->Set(1), eKW_ACC_OK);
    EXPECT_EQ(m_ran, "");
    m_root->SetAutoUpdateDependencies(true);
    ASSERT_EQ(m_first.m_pInt16->Set(1), eKW_ACC_OK);
    EXPECT_EQ(m_ran, "") << "what was missed is not caught up by another write";
    m_root->GetDependencies().CalculateEverything();
    EXPECT_EQ(m_ran, "a");
    m_root->GetDependencies().LeaveItem(m_second);
    ASSERT_EQ(m_first.m_pInt32->Set(2), eKW_ACC_OK);
    EXPECT_EQ(m_ran, "a");
}

TEST_F(Dependency, SecondCalculationChangesSomething)
{
    Add('a', {m_first.m_pInt32}, [this] { m_second.m_pInt32->DbSet(m_first.m_pInt32->Get() * 2); });
    m_root->SetAutoUpdateDependencies(false);
    m_first.m_pDouble->DbSet(3.0);
    m_first.m_pInt32->DbSet(21);
    m_root->SetAutoUpdateDependencies(true);
    m_root->GetDependencies().CalculateEverything();
    EXPECT_EQ(m_second.m_pInt32->Get(), 42);
    EXPECT_EQ(m_first.m_pFollower->GetMax(), 3.0);
    long long counter = 0;
    m_root->HasChanged(counter);
    m_root->GetDependencies().CalculateEverything();
    EXPECT_FALSE(m_root->HasChanged(counter));
}

TEST_F(Dependency, ForcedWriteOfTheSameValueIsSwallowed)
{
    Add('a', {m_first.m_pInt32});
    m_first.m_pInt32->SetForceDependencies(true);
    ASSERT_EQ(m_first.m_pInt32->Set(0), eKW_ACC_OK);
    EXPECT_EQ(m_ran, "a");
    ASSERT_EQ(m_first.m_pInt32->DbSet(0), eKW_ACC_OK);
    EXPECT_EQ(m_ran, "aa");
    m_first.m_pInt32->SetForceDependencies(false);
    ASSERT_EQ(m_first.m_pInt32->Set(0), eKW_ACC_OK);
    EXPECT_EQ(m_ran, "aa");
}
