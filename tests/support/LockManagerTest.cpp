// SPDX-License-Identifier: MIT
#include "LockManager.h"

#include "Reports.h"
#include "Together.h"

#include <gtest/gtest.h>

TEST(LockManager, SecondThreadGetsInOrTheFirstLocksItselfOut)
{
    constexpr int kRounds = 2000;
    int unguarded = 0;
    const auto work = [&unguarded](int round)
    {
        const CLockGuard outer(round % 2 == 0 ? eACCESS_READ : eACCESS_WRITE);
        const CLockGuard inner;
        const int before = unguarded;
        std::this_thread::yield();
        unguarded = before + 1;
    };
    RunTogether({work, work}, kRounds);
    EXPECT_EQ(unguarded, 2 * kRounds);
}

#ifdef KWI_CHECK_LOCK_ORDER
TEST(LockOrder, LockGivenBackOutOfOrderIsNotNamed)
{
    const CReports reports;
    CLockManager& locks = CLockManager::instance();
    locks.Lock(eCS_TREE, eACCESS_READ, "a.cpp", 1);
    locks.Lock(eCS_TREE, eACCESS_WRITE, "b.cpp", 2);
    locks.Unlock(eCS_TREE, eACCESS_READ, "a.cpp", 1);
    locks.Unlock(eCS_TREE, eACCESS_WRITE, "b.cpp", 2);
    EXPECT_EQ(reports.List(),
              (QStringList{
                  QStringLiteral("Lock not given back in order: held section 0, access 1, taken at "
                                 "b.cpp:2; given back section 0, access 0, taken at a.cpp:1"),
                  QStringLiteral("Lock not given back in order: held section 0, access 0, taken at "
                                 "a.cpp:1; given back section 0, access 1, taken at b.cpp:2")}));
    std::thread([] { const CLockGuard free; }).join();
}

TEST(LockOrder, UnlockWithoutALockReleasesAnotherThreadsOne)
{
    const CReports reports;
    CLockManager::instance().Unlock(eCS_TREE, eACCESS_WRITE, "c.cpp", 3);
    EXPECT_EQ(reports.List(),
              QStringList{QStringLiteral("Unlock without a lock: section 0, access 1, "
                                         "taken at c.cpp:3")});
}
#endif
