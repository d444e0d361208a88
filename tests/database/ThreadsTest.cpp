// SPDX-License-Identifier: MIT
// Several threads on one tree of the frame. The assertions see what is lost, torn or late; the
// thread sanitizer sees the rest.

#include "FixtureTree.h"
#include "LockManager.h"
#include "Together.h"

#include <chrono>
#include <future>
#include <gtest/gtest.h>
#include <limits>

namespace
{
constexpr int kRounds = 400;
/** Rounds that hit a gap of a few instructions even where two cores are busy. */
constexpr int kNarrow = 20000;

class Threads : public testing::Test, protected CFixture
{
protected:
    std::atomic<int> m_wrong{0};
};

template <typename... T>
void ReadNumbers(CDbPropNum<T>*... properties)
{
    const auto read = [](const auto& handle)
    {
        handle->Get();
        handle->GetMin();
        handle->GetMax();
        handle->GetDefault();
        handle->GetStep();
        handle->GetUserValue();
    };
    (read(properties->GetFIMPointer()), ...);
}

/** Readings that promise never to wait, as fetching a handle does. */
const std::pair<const char*, void (*)(CPgFixture&)> kReadings[] = {
    {"Whole number", [](CPgFixture& g)
     { ReadNumbers(g.m_pInt16, g.m_pUInt16, g.m_pInt32, g.m_pUInt32, g.m_pInt64, g.m_pUInt64); }},
    {"Double", [](CPgFixture& g) { ReadNumbers(g.m_pDouble); }},
    {"Enumeration",
     [](CPgFixture& g)
     {
         const auto handle = g.m_pEnum->GetFIMPointer();
         handle->Get();
         handle->GetAsInt();
         handle->GetDefault();
         handle->GetEnumNameInfo().GetSerialName(0);
     }},
    {"Counter",
     [](CPgFixture& g)
     {
         long long counter = 0;
         g.GetHandle()->HasChanged(counter);
     }},
    {"RunCount", [](CPgFixture& g) { g.m_pAction->GetRunCount(); }},
    {"Validity", [](CPgFixture& g) { g.m_pResult->ShareProperty()->GetValidity(); }},
    {"Container", [](CPgFixture& g) { g.m_pArray->GetFIMPointer(); }},
};
} // namespace

TEST_F(Threads, LockFreeReadingWaitsForAWriter)
{
    std::atomic<const char*> reading{nullptr};
    m_root->StartTransaction(QStringLiteral("long"));
    ASSERT_EQ(m_group.m_pDouble->Set(20.0), eKW_ACC_OK);
    const auto readAll = [&]
    {
        for (const auto& [name, read] : kReadings)
        {
            reading = name;
            read(m_group);
        }
    };
    const auto finished = std::async(std::launch::async, readAll);
    const auto state = finished.wait_for(std::chrono::seconds(20));
    EXPECT_EQ(state, std::future_status::ready) << reading;
    m_root->EndTransaction(true);
}

TEST_F(Threads, HalfOfAValueOrLimitIsRead)
{
    const auto tear = [this]<typename T>(CDbPropNum<T>&& property)
    {
        // Both halves of the two differ.
        constexpr T kLow = std::numeric_limits<T>::max() / 5;
        constexpr T kHigh = std::numeric_limits<T>::max() / 3;
        const auto write = [&](int round)
        {
            const T value = round % 2 == 0 ? kLow : kHigh;
            m_wrong += property.SetMinAndMax(value, value) != eKW_ACC_OK;
        };
        write(0);
        const auto read = [&](int)
        {
            for (const T seen : {property.Get(), property.GetMin(), property.GetMax()})
            {
                m_wrong += seen != kLow && seen != kHigh;
            }
        };
        RunTogether({write, read, read}, kRounds);
        EXPECT_EQ(m_wrong, 0);
    };
    tear(CDbPropNum<INT64>());
    tear(CDbPropNum<UINT64>());
    tear(CDbPropNum<double>());
}

TEST_F(Threads, StepOrItsCountIsLost)
{
    long long before = 0;
    long long after = 0;
    m_root->HasChanged(before);
    const auto step = [&](int) { m_wrong += m_group.m_pInt64->Inc() != eKW_ACC_OK; };
    RunTogether({step, step, step}, kRounds);
    EXPECT_EQ(m_wrong, 0);
    EXPECT_EQ(m_group.m_pInt64->Get(), 3 * kRounds);
    m_root->HasChanged(after);
    EXPECT_GE(after - before, 3 * kRounds);
    int steps = 0;
    while (m_root->Undo() == eKW_ACC_OK)
    {
        ++steps;
    }
    EXPECT_EQ(m_group.m_pInt64->Get(), 3 * kRounds - steps) << "each write is a step of its own";
}

TEST_F(Threads, LimitSetByOneThreadIsTakenBackByAnother)
{
    CDbPropNum<double>& limited = *m_group.m_pFollower;
    const auto distance = [](int round) { return 11.0 + round % 900; };
    ASSERT_EQ(limited.SetMinAndMax(-distance(0), distance(0)), eKW_ACC_OK);
    const auto lower = [&](int round)
    {
        m_wrong += limited.GetMin() != -distance(round);
        limited.SetMin(-distance(round + 1));
    };
    const auto raise = [&](int round)
    {
        m_wrong += limited.GetMax() != distance(round);
        limited.SetMax(distance(round + 1));
    };
    RunTogether({lower, raise}, 10 * kNarrow);
    EXPECT_EQ(m_wrong, 0);
}

TEST_F(Threads, WriteToTheLimitIsRefusedWhileTheLimitMoves)
{
    const auto move = [&](int round) { m_group.m_pDouble->Set(round % 2 == 0 ? 1000.0 : 1.0); };
    const auto toEnd = [&](int round)
    {
        const auto handle = m_group.m_pFollower->GetFIMPointer();
        m_wrong += (round % 2 == 0 ? handle->SetToMax() : handle->SetToMin()) != eKW_ACC_OK;
    };
    RunTogether({move, toEnd, toEnd}, kNarrow);
    EXPECT_EQ(m_wrong, 0);
}

TEST_F(Threads, FirstRequestsMakeTwoHandles)
{
    for (int i = 0; i < 20; ++i)
    {
        // Without handles, as a tree is before OnFIMCreated.
        const std::shared_ptr<CPgFixtureRoot> root(new CPgFixtureRoot, CDbNodeDeleter{});
        CPgFixture& group = *root->m_pFirst;
        std::vector<const void*> seen[2];
        const auto fetch = [&group](std::vector<const void*>& handles)
        {
            handles = {
                group.m_pDouble->GetFIMPointer().get(), group.m_pEnum->GetFIMPointer().get(),
                group.m_pText->GetHandle().get(),       group.GetHandle().get(),
                group.m_pArray->GetFIMPointer().get(),  group.m_pMap->GetFIMPointer().get(),
                group.m_pAction->GetFIMPointer().get(), group.m_pOperation->GetFIMPointer().get()};
        };
        std::thread other(fetch, std::ref(seen[1]));
        fetch(seen[0]);
        other.join();
        EXPECT_EQ(seen[0], seen[1]);
    }
}

TEST_F(Threads, RenamedItemIsNotFoundByItsKeyOrUnderTwoNames)
{
    CPgmFixtureItem& map = *m_group.m_pMap;
    const QString names[] = {QStringLiteral("odd"), QStringLiteral("even")};
    ASSERT_EQ(map.InsertInternal(names[1], QString(), 7, true, false), eKW_ACC_OK);
    ASSERT_EQ(m_group.m_pReference->Set(QStringLiteral("First/Map[even]")), eKW_ACC_OK);
    const auto rename = [&](int round)
    { m_wrong += map.Rename(names[(round + 1) % 2], names[round % 2]) != eKW_ACC_OK; };
    const auto read = [&](int)
    {
        const auto item = map.ShareMapItem(7);
        m_wrong += item == nullptr || item->GetNumericKey() != 7 || !item->IsActive();
        m_wrong += map.GetNames().size() != 1;
        const CLockGuard together(eACCESS_READ);
        m_wrong += map.IsItem(names[0]) == map.IsItem(names[1]);
        m_wrong +=
            m_group.m_pReference->Get() != QStringLiteral("First/Map[%1]").arg(map.GetActiveItem());
    };
    RunTogether({rename, read, read}, kRounds);
    EXPECT_EQ(m_wrong, 0);
}

TEST_F(Threads, LastReleaseElsewhereTakesAHandleWithItOrLeavesTheTree)
{
    for (int i = 0; i < 40; ++i)
    {
        auto root = CPgFixtureRoot::Create();
        const std::weak_ptr<CPgFixtureRoot> watched = root;
        const auto number = root->m_pFirst->m_pInt64->GetFIMPointer();
        const auto item = root->m_pSecond->m_pFixed->ItemDirect(1)->ShareGroup();
        INT64 last = 0;
        bool detached = false;
        const auto write = [&](int round)
        {
            const KW_ACCEPTANCE code = number->Set(round + 1);
            detached = detached || code == eKW_ACC_DETACHED;
            m_wrong += code != (detached ? eKW_ACC_DETACHED : eKW_ACC_OK);
            last = detached ? last : round + 1;
        };
        const auto walk = [&](int)
        {
            const QString path = item->GetPath();
            m_wrong += path != QStringLiteral("Second/Fixed[1]") && !path.isEmpty();
        };
        const auto release = [&](int round)
        {
            if (round == 5)
            {
                root.reset();
                m_wrong += !watched.expired();
            }
        };
        RunTogether({write, walk, release}, 60);
        EXPECT_EQ(number->Get(), last);
        EXPECT_EQ(number->Set(-1), eKW_ACC_DETACHED);
        EXPECT_EQ(number->GetDbObject()->GetNodeName(), QStringLiteral("Int64"));
    }
    EXPECT_EQ(m_wrong, 0);
}
