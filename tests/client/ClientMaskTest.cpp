// SPDX-License-Identifier: MIT
// The mask test of the tree: what is counted, when it ends, what it stops and what clients get.
#include "IKWFunctionChannel.h"
#include "IKWFunctionControl.h"
#include "IKWFunctionHorizontal.h"
#include "IKWFunctionMask.h"
#include "IKWFunctionMaskChannelSetup.h"
#include "IKWFunctionMaskSettings.h"
#include "IKWFunctionMathematics.h"
#include "IKWFunctionRuns.h"
#include "IKWFunctionSMScope.h"
#include "IKWFunctionVertical.h"
#include "IKWFunctionZEL.h"
#include "Masks/MaskTree.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstring>
#include <thread>

namespace
{
constexpr INT16 kDivision = 6400;

class ClientMask : public testing::Test
{
protected:
    const std::shared_ptr<IKWFunctionZEL> m_root = GetZELRoot();
    const std::shared_ptr<IKWAcquisition> m_acquisition = KW_MakeAcquisition(m_root, 16 << 20);
    std::shared_ptr<IKWMaskRun> m_run;
    const std::unique_ptr<IKWStreamReader> m_reader = m_acquisition->GetStream()->MakeReader();
    const std::shared_ptr<IKWFunctionMask> m_mask = m_root->GetPgMask();
    const std::shared_ptr<IKWFunctionMaskSettings> m_settings = m_mask->GetPgMaskSettings();

    ClientMask()
    {
        m_root->RunPresetSequence(true);
        m_root->GetPgControl()->GetPgSMScope()->GetPrRunStop()->Set(eKW_ZEL_RUNSTOP_STATE_RUN);
        for (INT32 i = 0; i < 4; ++i)
        {
            KW_PutMask(*Setup(i), {});
        }
        m_run = KW_MakeMaskRun(m_root, m_acquisition);
        m_acquisition->SetTest(m_run.get());
        // C1 between −1 and 1 division, C2 below 2.
        KW_PutMask(*Setup(0), {Frame(), {{0, 1}, {10, 1}}, {{0, -1}, {10, -1}}});
        KW_PutMask(*Setup(1), {Frame(), {{0, 2}, {10, 2}}, {}});
    }
    static KW_MaskFrame Frame() { return {eKW_UNIT_LEVEL_V, -5e-7, 1e-7, 0, 1}; }
    std::shared_ptr<IKWFunctionMaskChannelSetup> Setup(INT32 channel) const
    {
        return m_mask->GetPgMaskChannelSetup()->GetItem(channel);
    }
    /** A record whose inputs are flat, so many counts above the middle. False when it is dropped.
     */
    bool Acquire(INT16 value)
    {
        if (!KW_IsAccepted(m_acquisition->Arm()))
        {
            return false;
        }
        for (UINT32 place = 0; place <= eKW_PLACE_C4; ++place)
        {
            const auto room = m_acquisition->Reserve(place);
            for (std::size_t i = 0; i + 2 <= room.size(); i += 2)
            {
                std::memcpy(room.data() + i, &value, 2);
            }
            const KW_TraceInfo& trace = m_acquisition->GetArmed().traces[place];
            m_acquisition->Advance(place, room.empty() ? 0 : trace.count);
        }
        return KW_IsAccepted(m_acquisition->Publish({}));
    }
    void Expect(UINT64 tested, UINT64 failed, KW_ZEL_MASK_TESTSTATE state)
    {
        EXPECT_EQ(m_mask->GetPrTestedAcquisitions()->Get(), tested);
        EXPECT_EQ(m_mask->GetPrPassedAcquisitions()->Get(), tested - failed);
        EXPECT_EQ(m_mask->GetPrFailedAcquisitions()->Get(), failed);
        EXPECT_EQ(m_mask->GetPrState()->Get(), state);
    }
};
} // namespace

TEST_F(ClientMask, CountsOtherAcquisitionsThanWereTested)
{
    EXPECT_TRUE(Acquire(2 * kDivision)); // no test runs
    EXPECT_EQ(m_reader->GetLatest().GetInfo().maskResult, eKW_MASK_NOT_TESTED);
    m_mask->GetPrStart()->Set();
    Acquire(0);
    Acquire(kDivision); // a trace may touch its line
    EXPECT_EQ(m_reader->GetLatest().GetInfo().maskResult, eKW_MASK_PASSED);
    Acquire(kDivision + 1);
    EXPECT_EQ(m_reader->GetLatest().GetInfo().maskResult, eKW_MASK_FAILED);
    m_run->Deliver();
    Expect(3, 1, eKW_ZEL_MASK_TESTSTATE_RUNNING);
    EXPECT_NEAR(m_mask->GetPrFailureRate()->Get(), 100.0 / 3, 1e-9);
    EXPECT_EQ(Setup(0)->GetPrViolation()->Get(), eKW_ZEL_LIMIT_OVERFLOW);
    EXPECT_EQ(Setup(0)->GetPrFailedAcquisitions()->Get(), 1U);
    EXPECT_EQ(Setup(1)->GetPrFailedAcquisitions()->Get(), 0U);
    m_mask->GetPrPause()->Set();
    Acquire(3 * kDivision);
    m_mask->GetPrPause()->Set();
    Acquire(-2 * kDivision);
    m_run->Deliver();
    Expect(4, 2, eKW_ZEL_MASK_TESTSTATE_RUNNING);
    EXPECT_EQ(Setup(0)->GetPrViolation()->Get(), eKW_ZEL_LIMIT_UNDERFLOW);
    // A second test goes on where the first one ended.
    m_run = KW_MakeMaskRun(m_root);
    m_acquisition->SetTest(m_run.get());
    m_mask->GetPrClearCounts()->Set();
    m_run->Deliver();
    Expect(0, 0, eKW_ZEL_MASK_TESTSTATE_RUNNING);
    Setup(0)->GetPrEnabled()->Set(eKW_ONOFF_OFF);
    Acquire(-2 * kDivision);
    Acquire(2 * kDivision + 1);
    m_run->Deliver();
    Expect(2, 1, eKW_ZEL_MASK_TESTSTATE_RUNNING);
    EXPECT_EQ(Setup(1)->GetPrViolation()->Get(), eKW_ZEL_LIMIT_OVERFLOW);
}

TEST_F(ClientMask, TestRunsBeyondItsEnd)
{
    m_mask->GetPrMaximumAcquisitions()->Set(3);
    m_mask->GetPrAllowedViolations()->Set(1);
    m_mask->GetPrStart()->Set();
    for (const INT32 value : {0, 2, 0, 2, 2})
    {
        Acquire(static_cast<INT16>(value * kDivision));
    }
    m_run->Deliver();
    Expect(3, 1, eKW_ZEL_MASK_TESTSTATE_PASSED);
    m_mask->GetPrStopAfterViolations()->Set(2);
    m_mask->GetPrStart()->Set();
    Acquire(2 * kDivision);
    Acquire(2 * kDivision);
    Acquire(0);
    m_run->Deliver();
    Expect(2, 2, eKW_ZEL_MASK_TESTSTATE_FAILED);
    m_mask->GetPrMaximumTime()->Set(1e-9);
    m_mask->GetPrStart()->Set();
    m_run->Deliver();
    Acquire(0);
    m_run->Deliver();
    Expect(1, 0, eKW_ZEL_MASK_TESTSTATE_PASSED);
    EXPECT_GT(m_mask->GetPrElapsedTime()->Get(), 0.0);
}

TEST_F(ClientMask, ViolationDoesNotStopOrTellsNobody)
{
    m_mask->GetPrViolationAction()->Set(eKW_ZEL_MASK_VIOLATION_ACTIONS_BEEP);
    m_mask->GetPrStart()->Set();
    Acquire(0);
    EXPECT_EQ(m_run->Deliver().action, eKW_ZEL_MASK_VIOLATION_ACTIONS_NONE);
    Acquire(2 * kDivision);
    Acquire(2 * kDivision);
    const KW_MaskEvent event = m_run->Deliver();
    EXPECT_EQ(event.action, eKW_ZEL_MASK_VIOLATION_ACTIONS_BEEP);
    EXPECT_EQ(event.violations, 2U);
    EXPECT_EQ(event.record, m_reader->GetLatest().GetInfo().number);
    m_mask->GetPrViolationAction()->Set(eKW_ZEL_MASK_VIOLATION_ACTIONS_STOP);
    Acquire(2 * kDivision);
    Acquire(0); // comes before the stop: the violation is what was seen last
    m_run->Deliver();
    Expect(4, 3, eKW_ZEL_MASK_TESTSTATE_PAUSED);
    EXPECT_FALSE(Acquire(0));
    m_root->GetPgControl()->GetPgSMScope()->GetPrRunStop()->Set(eKW_ZEL_RUNSTOP_STATE_RUN);
    EXPECT_TRUE(Acquire(0));
    m_run->Deliver();
    Expect(5, 3, eKW_ZEL_MASK_TESTSTATE_RUNNING);
}

TEST_F(ClientMask, HistoryKeepsWhatItIsNotTo)
{
    m_mask->GetPrHistoryMode()->Set(eKW_ZEL_MASK_HISTORY_MODES_FAILED);
    m_mask->GetPrStart()->Set();
    for (const INT32 value : {2, 0, 0, -2, 0})
    {
        Acquire(static_cast<INT16>(value * kDivision));
    }
    EXPECT_EQ(m_reader->GetAvailable(), 2U);
}

TEST_F(ClientMask, MaskStandsElsewhereThanItIsDrawn)
{
    m_mask->GetPrStart()->Set();
    EXPECT_EQ(m_settings->GetPrPositionY()->Set(1.0), eKW_ACC_OK);
    Acquire(2 * kDivision); // locked to the screen, and shifted
    const auto set = m_run->GetMasks();
    EXPECT_EQ(set->channels[0].mask.upper.front().y, 2.0);
    EXPECT_TRUE(set->channels[0].isTested);
    EXPECT_FALSE(set->channels[2].isVisible);
    EXPECT_EQ(m_run->GetMasks(), set);
    m_settings->GetPrLockToScreen()->Set(eKW_ONOFF_OFF);
    m_root->GetPgVertical()->GetPgChannel()->GetItem(0)->GetPrScale()->Set(2.0);
    EXPECT_GT(m_run->GetMasks()->number, set->number);
    EXPECT_EQ(m_run->GetMasks()->channels[0].mask.frame, Frame());
    Acquire(kDivision); // 2 V
    m_run->Deliver();
    Expect(2, 0, eKW_ZEL_MASK_TESTSTATE_RUNNING);
    Acquire(kDivision + 1);
    m_run->Deliver();
    Expect(3, 1, eKW_ZEL_MASK_TESTSTATE_RUNNING);
}

TEST_F(ClientMask, CreateMaskTakesNoTrace)
{
    EXPECT_EQ(m_settings->GetPrCreateMask()->Set(), eKW_ACC_NOTHING_TO_ACT_ON);
    Acquire(kDivision);
    EXPECT_EQ(m_settings->GetPrCreateMask()->Set(), eKW_ACC_OK);
    EXPECT_NEAR(KW_GetMask(*Setup(0)).upper.front().y, 1.2, 1e-12);
    // C1 + C2, a trace that is computed.
    m_root->GetPgMathematics()->GetPrEnabled()->Set(eKW_ONOFF_ON);
    m_root->GetPgMathematics()->GetPrAutoScale()->Set(eKW_ONOFF_OFF);
    m_settings->GetPrSource()->Set(eKW_ZEL_CHANNEL_M1);
    EXPECT_EQ(m_settings->GetPrCreateMask()->Set(), eKW_ACC_OK);
    EXPECT_NEAR(KW_GetMask(*Setup(0)).upper.front().y, 2.2, 1e-3);
    EXPECT_EQ(KW_GetMask(*Setup(0)).frame, Frame());
    m_run = nullptr;
    m_acquisition->SetTest(nullptr);
    EXPECT_EQ(m_settings->GetPrCreateMask()->Set(), eKW_ACC_NOTHING_TO_ACT_ON);
}

TEST_F(ClientMask, CountsOfTwoMomentsAreDelivered)
{
    m_mask->GetPrStart()->Set();
    std::atomic<bool> isEnd{false};
    std::thread acquires(
        [this, &isEnd]
        {
            for (INT16 i = 0; !isEnd; i = static_cast<INT16>((i + 1) % 3))
            {
                Acquire(static_cast<INT16>(i * kDivision));
            }
        });
    UINT64 tested = 0;
    UINT64 most = 0;
    for (int round = 0; round < 200; ++round)
    {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
        if (round % 10 == 5)
        {
            m_settings->GetPrPositionY()->Set(round % 20 == 5 ? 0.5 : 0.0);
        }
        if (round % 50 == 30)
        {
            m_mask->GetPrClearCounts()->Set();
            tested = 0;
        }
        m_run->Deliver();
        const std::shared_ptr<const KW_MaskSet> set = m_run->GetMasks();
        EXPECT_EQ(set->channels[0].mask.upper.front().y, 1.0 + m_settings->GetPrPositionY()->Get());
        const UINT64 now = m_mask->GetPrTestedAcquisitions()->Get();
        EXPECT_GE(now, tested);
        EXPECT_EQ(now, m_mask->GetPrPassedAcquisitions()->Get() +
                           m_mask->GetPrFailedAcquisitions()->Get());
        tested = now;
        most = std::max(most, now);
    }
    isEnd = true;
    acquires.join();
    EXPECT_GT(most, 0U);
}
