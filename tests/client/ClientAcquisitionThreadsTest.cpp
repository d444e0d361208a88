// SPDX-License-Identifier: MIT
// An acquisition whose settings change all the time, eight readers, and a thread that delivers.
// KWI_STREAM_SECONDS lets it run for so long instead of a second.
#include "IKWFunctionChannel.h"
#include "IKWFunctionControl.h"
#include "IKWFunctionHistoryViewer.h"
#include "IKWFunctionHorizontal.h"
#include "IKWFunctionReferenceCurve.h"
#include "IKWFunctionSMScope.h"
#include "IKWFunctionSampleCounter.h"
#include "IKWFunctionVertical.h"
#include "IKWFunctionZEL.h"
#include "KWBrackets.h"
#include "KWErrorReport.h"
#include "Streams/Acquisition.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <random>
#include <thread>

namespace
{
using t_Root = std::shared_ptr<IKWFunctionZEL>;
using t_Clock = std::chrono::steady_clock;

t_Clock::time_point End()
{
    const char* const seconds = std::getenv("KWI_STREAM_SECONDS");
    return t_Clock::now() + std::chrono::seconds(seconds != nullptr ? std::atoi(seconds) : 1);
}

/** A record says by its trigger time which one it is; each entry follows from that. */
INT16 EntryOf(INT64 count, UINT32 place, std::size_t i)
{
    return static_cast<INT16>(
        (static_cast<UINT64>(count) * 2654435761U + place * 977 + i * 31) % 60000 - 30000);
}

bool IsWhole(const CKWRecord& record)
{
    const INT64 count = record.GetInfo().triggerTime;
    for (UINT32 place = eKW_PLACE_C1; place <= eKW_PLACE_C4; ++place)
    {
        const auto bytes = record.GetSamples(place);
        const KW_TraceInfo trace = record.GetTrace(place);
        if (bytes.size() != trace.count * KW_GetPointSize(trace.format))
        {
            return false;
        }
        for (std::size_t i = 0; i < bytes.size() / 2; ++i)
        {
            INT16 entry = 0;
            std::memcpy(&entry, bytes.data() + 2 * i, sizeof entry);
            if (entry != EntryOf(count, place, i))
            {
                return false;
            }
        }
    }
    // Written in one bracket: settings of two moments would differ.
    return record.GetTrace(eKW_PLACE_C1).scale == record.GetTrace(eKW_PLACE_C2).scale;
}

struct t_Verdict
{
    std::atomic<bool> isEnd{false};
    std::atomic<UINT64> torn{0};
    std::atomic<UINT64> uncounted{0};
    std::atomic<UINT64> published{0};
    std::atomic<UINT64> fetched{0};
};

void Acquire(IKWAcquisition& acquisition, t_Verdict& verdict)
{
    for (INT64 count = 1; !verdict.isEnd; ++count)
    {
        if (!KW_IsAccepted(acquisition.Arm()))
        {
            std::this_thread::yield();
            continue;
        }
        for (UINT32 place = 0; place < eKW_PLACE_COUNT; ++place)
        {
            const auto room = acquisition.Reserve(place);
            for (std::size_t i = 0; i < room.size() / 2; ++i)
            {
                const INT16 entry = EntryOf(count, place, i);
                std::memcpy(room.data() + 2 * i, &entry, sizeof entry);
            }
            const UINT32 size = KW_GetPointSize(acquisition.GetArmed().traces[place].format);
            acquisition.Advance(place, static_cast<UINT32>(room.size() / size));
        }
        KW_AcquiredInfo info;
        info.triggerTime = count;
        verdict.published += acquisition.Publish(info) == eKW_ACC_OK ? 1 : 0;
    }
}

/** A user who never rests. */
void ChangeSettings(const t_Root& root, t_Verdict& verdict)
{
    const auto time = root->GetPgHorizontal();
    const auto channels = root->GetPgVertical()->GetPgChannel();
    const auto run = root->GetPgControl()->GetPgSMScope()->GetPrRunStop();
    std::mt19937 random(7);
    while (!verdict.isEnd)
    {
        CKWTransaction step(root, "both");
        const double scale = random() % 2 == 0 ? 0.5 : 2.0;
        channels->GetItem(0)->GetPrScale()->Set(scale);
        channels->GetItem(1)->GetPrScale()->Set(scale);
        step.Commit();
        switch (random() % 12)
        {
        case 0:
            time->GetPrScale()->Set(random() % 2 == 0 ? 1e-7 : 2e-7);
            break;
        case 1:
            time->GetPrAcquisitionMode()->Set(random() % 2 == 0 ? eKW_ZEL_ACQUISITION_MODE_SAMPLE
                                                                : eKW_ZEL_ACQUISITION_MODE_PEAK);
            break;
        case 2:
            channels->GetItem(2)->GetPrEnabled()->Set(random() % 2 == 0 ? eKW_ONOFF_ON
                                                                        : eKW_ONOFF_OFF);
            break;
        case 3:
            root->GetPgHistoryViewer()->GetPrClear()->Set();
            break;
        case 4:
            time->GetPgSampleCounter()->GetPrResetCounters()->Set();
            break;
        case 5:
            root->GetPgVertical()->GetPgReferenceCurve()->GetPrUpdate()->Set();
            break;
        case 6:
            run->Set(eKW_ZEL_RUNSTOP_STATE_STOP);
            run->Set(eKW_ZEL_RUNSTOP_STATE_SINGLE);
            break;
        default:
            run->Set(eKW_ZEL_RUNSTOP_STATE_RUN);
            break;
        }
    }
}

void Deliver(const t_Root& root, IKWAcquisition& acquisition, t_Verdict& verdict)
{
    const auto reader = acquisition.GetStream()->MakeReader();
    while (!verdict.isEnd)
    {
        acquisition.Deliver();
        const CKWRecord shown = acquisition.GetShown(*reader);
        verdict.torn += !shown || IsWhole(shown) ? 0 : 1;
        const CKWRecord reference = acquisition.GetReference();
        verdict.torn += !reference || reference.GetTrace(0).channel == eKW_ZEL_CHANNEL_R1 ? 0 : 1;
        const UINT64 told =
            root->GetPgHorizontal()->GetPgSampleCounter()->GetPrAcquisitions()->Get();
        verdict.uncounted += told <= verdict.published + 1 ? 0 : 1;
    }
}

CKWRecord Read(IKWStreamReader& reader, t_Verdict& verdict)
{
    CKWRecord kept;
    while (!verdict.isEnd)
    {
        reader.Wait(5);
        CKWRecord record = reader.GetNext();
        if (record)
        {
            verdict.torn += IsWhole(record) ? 0 : 1;
            ++verdict.fetched;
            kept = std::move(record);
        }
    }
    return kept;
}
} // namespace

TEST(AcquisitionThreads, FollowSettingsThatChangeAtEveryRecord)
{
    t_Verdict verdict;
    std::vector<CKWRecord> kept(8);
    // A curve of a history that was just cleared can not be stored, and is reported.
    const KW_ErrorHandler before = KW_SetErrorHandler([](const KW_ErrorReport&) {});
    {
        const t_Root root = GetZELRoot();
        root->RunPresetSequence(true);
        const auto acquisition = KW_MakeAcquisition(root, 2 << 20);
        std::vector<std::thread> threads;
        threads.emplace_back([&] { Acquire(*acquisition, verdict); });
        threads.emplace_back([&] { ChangeSettings(root, verdict); });
        threads.emplace_back([&] { Deliver(root, *acquisition, verdict); });
        for (CKWRecord& last : kept)
        {
            threads.emplace_back([&, reader = std::shared_ptr<IKWStreamReader>(
                                         acquisition->GetStream()->MakeReader())]
                                 { last = Read(*reader, verdict); });
        }
        std::this_thread::sleep_until(End());
        verdict.isEnd = true;
        for (std::thread& thread : threads)
        {
            thread.join();
        }
    }
    KW_SetErrorHandler(before);
    for (const CKWRecord& record : kept)
    {
        EXPECT_TRUE(!record || IsWhole(record)) << "outlives stream and tree";
    }
    EXPECT_EQ(verdict.torn, 0U);
    EXPECT_EQ(verdict.uncounted, 0U);
    EXPECT_GT(verdict.published, 0U);
    EXPECT_GT(verdict.fetched, 0U);
}
