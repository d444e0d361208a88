// SPDX-License-Identifier: MIT
#include "FixtureTree.h"
#include "Together.h"

#include <future>
#include <gtest/gtest.h>

namespace
{
class Operations : public testing::Test, protected CFixture
{
protected:
    CDbOperation& m_operation = *m_group.m_pOperation;

    /** Takes events until one comes. */
    KW_OP_EVENT WaitForEvent()
    {
        KW_OP_EVENT event = eKW_OP_EVENT_NONE;
        while (event == eKW_OP_EVENT_NONE)
        {
            event = m_operation.TakeEvent();
            std::this_thread::yield();
        }
        return event;
    }
    /** What a request answers while an executor works. */
    KW_ACCEPTANCE SetBeside(const std::function<void()>& work)
    {
        std::thread executor(work);
        const KW_ACCEPTANCE code = m_operation.Set();
        executor.join();
        return code;
    }
};
} // namespace

TEST_F(Operations, WithoutExecutorWaitsOrFails)
{
    EXPECT_EQ(m_operation.Set(), eKW_ACC_OK);
    EXPECT_EQ(m_operation.GetResult(), eKW_OP_RESULT_SUCCESS);
    EXPECT_EQ(
        m_operation.ExternalSetEventAndWaitForCompletion(eKW_OP_EVENT_ABORT, eKW_OP_RESULT_ABORTED),
        eKW_ACC_OK);
    EXPECT_EQ(m_operation.TakeEvent(), eKW_OP_EVENT_NONE) << "nobody is there to take it";
    EXPECT_EQ(m_operation.GetRunCount(), 2U);
}

TEST_F(Operations, EndsWithAnotherCodeOrInsideTheTreesLock)
{
    m_operation.AttachExecutor(true);
    for (const auto& [result, code] : {std::pair{eKW_OP_RESULT_SUCCESS, eKW_ACC_OK},
                                       {eKW_OP_RESULT_FAILURE, eKW_ACC_OPERATION_FAILED},
                                       {eKW_OP_RESULT_ABORTED, eKW_ACC_OPERATION_FAILED}})
    {
        const auto work = [this, end = result]
        {
            EXPECT_EQ(WaitForEvent(), eKW_OP_EVENT_START);
            // The executor may use the tree while the requester waits.
            EXPECT_EQ(m_group.m_pResult->SetResult(end), eKW_ACC_OK);
            m_operation.Complete(end);
        };
        EXPECT_EQ(SetBeside(work), code);
        EXPECT_EQ(m_operation.GetResult(), result);
        EXPECT_EQ(m_group.m_pResult->Get(), result);
    }
}

TEST_F(Operations, LateEndPassesForThatOfTheNextRequest)
{
    m_operation.AttachExecutor(true);
    ASSERT_EQ(m_operation.SetTimeout(1), eKW_ACC_OK);
    EXPECT_EQ(SetBeside([&] { EXPECT_EQ(WaitForEvent(), eKW_OP_EVENT_START); }), eKW_ACC_TIMEOUT);
    ASSERT_EQ(m_operation.SetTimeout(CDbOperation::kMaxTimeoutMs), eKW_ACC_OK);
    auto second = std::async(std::launch::async, [&] { return m_operation.Set(); });
    while (m_operation.GetRunCount() < 2)
    {
        std::this_thread::yield();
    }
    m_operation.Complete(eKW_OP_RESULT_SUCCESS);
    EXPECT_EQ(second.wait_for(std::chrono::seconds(0)), std::future_status::timeout)
        << "that was the first";
    EXPECT_EQ(WaitForEvent(), eKW_OP_EVENT_START);
    m_operation.Complete(eKW_OP_RESULT_FAILURE);
    EXPECT_EQ(second.get(), eKW_ACC_OPERATION_FAILED);
}

TEST_F(Operations, RequesterWaitsForAnExecutorThatIsGoneOrStartsTheNext)
{
    m_operation.AttachExecutor(true);
    const auto leave = [&]
    {
        WaitForEvent();
        m_operation.AttachExecutor(false);
    };
    EXPECT_EQ(SetBeside(leave), eKW_ACC_OPERATION_FAILED);
    EXPECT_EQ(m_operation.Set(), eKW_ACC_OK) << "nobody is attached any more";
    m_operation.AttachExecutor(true);
    ASSERT_EQ(m_operation.SetTimeout(1), eKW_ACC_OK);
    EXPECT_EQ(m_operation.Set(), eKW_ACC_TIMEOUT);
    m_operation.AttachExecutor(false);
    m_operation.AttachExecutor(true);
    EXPECT_EQ(m_operation.TakeEvent(), eKW_OP_EVENT_NONE);
}

TEST_F(Operations, EndForOneRequesterIsLostByTheRequestOfAnother)
{
    constexpr int kRounds = 300;
    std::atomic<bool> done{false};
    std::atomic<int> wrong{0};
    m_operation.AttachExecutor(true);
    std::thread executor(
        [&]
        {
            while (!done)
            {
                if (m_operation.TakeEvent() == eKW_OP_EVENT_START)
                {
                    m_operation.Complete(eKW_OP_RESULT_SUCCESS);
                }
            }
        });
    const auto request = [&](int) { wrong += m_operation.Set() != eKW_ACC_OK; };
    RunTogether({request, request}, kRounds);
    done = true;
    executor.join();
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(m_operation.GetRunCount(), 2U * kRounds);
}

TEST_F(Operations, AbortIsTakenForTheEndThatTheStartWaitsFor)
{
    m_operation.AttachExecutor(true);
    auto starter = std::async(std::launch::async, [&] { return m_operation.Set(); });
    EXPECT_EQ(WaitForEvent(), eKW_OP_EVENT_START);
    const auto abort = [&]
    {
        return m_operation.ExternalSetEventAndWaitForCompletion(eKW_OP_EVENT_ABORT,
                                                                eKW_OP_RESULT_ABORTED);
    };
    auto stopper = std::async(std::launch::async, abort);
    EXPECT_EQ(WaitForEvent(), eKW_OP_EVENT_ABORT);
    m_operation.Complete(eKW_OP_RESULT_ABORTED);
    EXPECT_EQ(starter.get(), eKW_ACC_OPERATION_FAILED);
    EXPECT_EQ(stopper.get(), eKW_ACC_OK);
}

TEST_F(Operations, RunsWithoutAccessOrWithATimeoutOfNothing)
{
    EXPECT_EQ(m_operation.SetTimeout(0), eKW_ACC_BELOW_MINIMUM);
    EXPECT_EQ(m_operation.SetTimeout(CDbOperation::kMaxTimeoutMs + 1), eKW_ACC_ABOVE_MAXIMUM);
    m_root->SetControlMode(eCONTROL_LOCAL_LOCKOUT);
    EXPECT_EQ(m_operation.Set(), eKW_ACC_NO_WRITE_ACCESS);
    EXPECT_EQ(m_group.m_pAction->Set(), eKW_ACC_NO_WRITE_ACCESS);
    m_root->SetControlMode(eCONTROL_LOCAL);
    EXPECT_EQ(m_operation.GetRunCount(), 0U) << "refused requests do not count";
    const auto operation = m_operation.GetFIMPointer();
    const auto action = m_group.m_pAction->GetFIMPointer();
    m_root.reset();
    EXPECT_EQ(operation->Set(), eKW_ACC_DETACHED);
    EXPECT_EQ(action->Set(), eKW_ACC_DETACHED);
}

TEST_F(Operations, ActionIsNoStepOrItsRefusalLeavesATrace)
{
    m_group.m_refusal = eKW_ACC_NOTHING_TO_ACT_ON;
    m_operation.AttachExecutor(true);
    long long counter = 0;
    m_root->HasChanged(counter);
    for (CDbFunction* const action : {m_group.m_pAction, static_cast<CDbFunction*>(&m_operation)})
    {
        EXPECT_EQ(action->Set(), eKW_ACC_NOTHING_TO_ACT_ON);
        EXPECT_EQ(action->GetRunCount(), 0U);
    }
    EXPECT_FALSE(m_root->HasChanged(counter));
    EXPECT_EQ(m_operation.TakeEvent(), eKW_OP_EVENT_NONE);
    EXPECT_FALSE(m_root->CanUndo());
    m_group.m_refusal = eKW_ACC_OK;
    ASSERT_EQ(m_group.m_pInt32->Set(5), eKW_ACC_OK);
    m_root->HasChanged(counter);
    ASSERT_EQ(m_group.m_pAction->ExternalApply(), eKW_ACC_OK);
    EXPECT_EQ(m_group.m_pInt32->Get(), 0);
    EXPECT_TRUE(m_root->HasChanged(counter));
    EXPECT_EQ(m_group.m_pAction->GetRunCount(), 1U);
    EXPECT_EQ(m_root->GetUndoText(), QStringLiteral("First/Action"));
    ASSERT_EQ(m_root->Undo(), eKW_ACC_OK);
    EXPECT_EQ(m_group.m_pInt32->Get(), 5);
}
