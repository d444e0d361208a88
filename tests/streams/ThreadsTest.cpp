// SPDX-License-Identifier: MIT
// A writer and eight readers at once. Each trace carries its number in every point, and a checksum
// over the rest: a record that is torn, taken away or mixed with another shows. KWI_STREAM_SECONDS
// lets each test run for so long instead of a second.
#include "streams/TestStream.h"

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <deque>
#include <functional>
#include <random>
#include <thread>

namespace
{
using t_Clock = std::chrono::steady_clock;

t_Clock::time_point End()
{
    const char* const seconds = std::getenv("KWI_STREAM_SECONDS");
    return t_Clock::now() + std::chrono::seconds(seconds != nullptr ? std::atoi(seconds) : 1);
}

/** Records of the test: points and checksum follow from the number that the writer counts. */
constexpr UINT32 kTraces = 2;

INT16 PointOf(UINT64 count, UINT32 trace, std::size_t i)
{
    return static_cast<INT16>((count * 2654435761U + trace * 977 + i * 31) % 60000 - 30000);
}

bool IsWhole(const CKWRecord& record)
{
    const auto count = static_cast<UINT64>(record.GetInfo().settingsCounter);
    for (UINT32 trace = 0; trace < record.GetTraceCount(); ++trace)
    {
        const std::vector<INT16> points = PointsOf(record, trace);
        if (points.size() != record.GetTrace(trace).count)
        {
            return false;
        }
        INT16 low = INT16_MAX;
        INT16 high = INT16_MIN;
        for (std::size_t i = 0; i < points.size(); ++i)
        {
            if (points[i] != PointOf(count, trace, i))
            {
                return false;
            }
            low = std::min(low, points[i]);
            high = std::max(high, points[i]);
        }
        KW_MinMax whole;
        if (!points.empty() && (record.GetColumns(trace, 0, static_cast<double>(points.size()),
                                                  {&whole, 1}) != eKW_ACC_OK ||
                                whole.minimum != low || whole.maximum != high))
        {
            return false;
        }
    }
    return record.GetTraceCount() == kTraces;
}

/** Counts what goes wrong in any thread. */
struct t_Verdict
{
    std::atomic<UINT64> torn{0};
    std::atomic<UINT64> backwards{0};
    std::atomic<UINT64> uncounted{0};
    std::atomic<UINT64> fetched{0};
    std::atomic<UINT64> written{0}; ///< dropped ones included
    std::atomic<bool> isEnd{false};
};

/** Writes one record, now and then a growing one. */
void WriteOne(IKWStreamWriter& writer, UINT64 count, UINT32 length, bool grows)
{
    const KW_RecordInfo info{0, 0, static_cast<INT64>(count), eKW_MASK_NOT_TESTED};
    const std::vector<KW_TraceInfo> traces(kTraces, CTestStream::Info(eKW_SAMPLES_INT16, length));
    const UINT32 pieces = grows ? 3 : 1;
    for (UINT32 piece = 0; piece < pieces; ++piece)
    {
        const UINT32 begin = length * piece / pieces;
        const UINT32 points = length * (piece + 1) / pieces - begin;
        for (UINT32 trace = 0; trace < kTraces; ++trace)
        {
            const auto room = writer.Reserve(trace);
            for (std::size_t i = 0; i < points && !room.empty(); ++i)
            {
                const INT16 point = PointOf(count, trace, begin + i);
                std::memcpy(room.data() + 2 * i, &point, sizeof point);
            }
            writer.Advance(trace, points);
        }
        if (!KW_IsAccepted(writer.Publish(info, traces, piece + 1 < pieces)))
        {
            return; // dropped
        }
        writer.Wake();
    }
}

/** Fetches in order, and adds up what it did not get. */
void ReadNext(IKWStreamReader& reader, t_Verdict& verdict, std::deque<CKWRecord>* kept = nullptr)
{
    UINT64 last = 0;
    UINT64 got = 0;
    while (!verdict.isEnd || reader.HasNew())
    {
        CKWRecord record = reader.GetNext();
        if (!record)
        {
            reader.Wait(5);
            continue;
        }
        const UINT64 number = record.GetInfo().number;
        verdict.torn += IsWhole(record) ? 0 : 1;
        verdict.backwards += number < last ? 1 : 0;
        got += number > last ? 1 : 0; // grown ones come again
        last = number;
        if (kept != nullptr)
        {
            kept->push_back(std::move(record));
            for (const CKWRecord& old : *kept)
            {
                verdict.torn += kept->size() % 16 != 0 || IsWhole(old) ? 0 : 1;
            }
            if (kept->size() > 20)
            {
                kept->erase(kept->begin(), kept->begin() + 10);
            }
        }
    }
    verdict.uncounted += got + reader.GetMissed() == verdict.written ? 0 : 1;
    verdict.fetched += got;
}

void ReadLatest(IKWStreamReader& reader, t_Verdict& verdict)
{
    UINT64 last = 0;
    while (!verdict.isEnd)
    {
        const CKWRecord record = reader.GetLatest();
        if (record)
        {
            verdict.torn += IsWhole(record) ? 0 : 1;
            verdict.backwards += record.GetInfo().number < last ? 1 : 0;
            last = record.GetInfo().number;
            ++verdict.fetched;
        }
        const CKWRecord older = reader.GetHistory(-static_cast<INT32>(last % 7));
        verdict.torn += older && !IsWhole(older) ? 1 : 0;
    }
}

/** Eight readers beside `write`, which is called with the number of its turn until the end. */
void RunAll(CTestStream& stream, t_Verdict& verdict, const std::function<void(UINT64)>& write,
            const std::function<void(UINT32, IKWStreamReader&)>& read)
{
    std::vector<std::thread> threads;
    for (UINT32 i = 0; i < 8; ++i)
    {
        threads.emplace_back([&read, i, reader = std::shared_ptr<IKWStreamReader>(stream.Reader())]
                             { read(i, *reader); });
    }
    const auto end = End();
    for (UINT64 turn = 1; t_Clock::now() < end; ++turn)
    {
        write(turn);
        verdict.written = turn;
    }
    verdict.isEnd = true;
    for (std::thread& thread : threads)
    {
        thread.join();
    }
    EXPECT_EQ(verdict.torn, 0U);
    EXPECT_EQ(verdict.backwards, 0U);
    EXPECT_EQ(verdict.uncounted, 0U);
    EXPECT_GT(verdict.fetched, 0U);
}

void ReadEitherWay(UINT32 which, IKWStreamReader& reader, t_Verdict& verdict)
{
    if (which % 2 == 0)
    {
        ReadNext(reader, verdict);
    }
    else
    {
        ReadLatest(reader, verdict);
    }
}
} // namespace

TEST(StreamThreads, SeeNoTornRecordAndMissNoneUncounted)
{
    CTestStream stream;
    t_Verdict verdict;
    stream.Configure({{eKW_SAMPLES_INT16, 300}, {eKW_SAMPLES_INT16, 300}}, 20);
    RunAll(
        stream, verdict,
        [&](UINT64 turn)
        { WriteOne(stream.Writer(), turn, 50 + static_cast<UINT32>(turn % 250), turn % 5 == 0); },
        [&](UINT32 which, IKWStreamReader& reader) { ReadEitherWay(which, reader, verdict); });
}

TEST(StreamThreads, MayBeConfiguredAnewAtEveryRecord)
{
    CTestStream stream(256 * 1024);
    t_Verdict verdict;
    RunAll(
        stream, verdict,
        [&](UINT64 turn)
        {
            const UINT32 length = 50 + static_cast<UINT32>(turn * 7919 % 4000);
            EXPECT_TRUE(KW_IsAccepted(
                stream.Configure({{eKW_SAMPLES_INT16, length}, {eKW_SAMPLES_INT16, length}},
                                 1 + static_cast<UINT32>(turn % 40))));
            WriteOne(stream.Writer(), turn, length, turn % 3 == 0);
        },
        [&](UINT32 which, IKWStreamReader& reader) { ReadEitherWay(which, reader, verdict); });
}

/** Readers that hold more than there is room for: the writer goes on, and counts. */
TEST(StreamThreads, ThatHoldAllRoomStarveNobodyElse)
{
    CTestStream stream(256 * 1024);
    t_Verdict verdict;
    stream.Configure({{eKW_SAMPLES_INT16, 300}, {eKW_SAMPLES_INT16, 300}}, 20);
    std::vector<std::deque<CKWRecord>> kept(8);
    RunAll(
        stream, verdict, [&](UINT64 turn) { WriteOne(stream.Writer(), turn, 300, turn % 5 == 0); },
        [&](UINT32 which, IKWStreamReader& reader) { ReadNext(reader, verdict, &kept[which]); });
    stream.End();
    for (const auto& records : kept)
    {
        for (const CKWRecord& record : records)
        {
            EXPECT_TRUE(IsWhole(record)) << "outlives the stream";
        }
    }
}

/** Readers that come and go while the writer wakes them, and streams that end under records. */
TEST(StreamThreads, ComeAndGoWhileStreamsEnd)
{
    t_Verdict verdict;
    const auto end = End();
    for (UINT64 round = 1; t_Clock::now() < end; ++round)
    {
        CTestStream stream(64 * 1024);
        stream.Configure({{eKW_SAMPLES_INT16, 300}, {eKW_SAMPLES_INT16, 300}}, 5);
        std::vector<std::thread> threads;
        std::atomic<UINT32> gone{0};
        for (UINT32 i = 0; i < 4; ++i)
        {
            threads.emplace_back(
                [&verdict, &gone, reader = std::shared_ptr<IKWStreamReader>(stream.Reader())]
                {
                    reader->Wait(1000);
                    const CKWRecord record = reader->GetLatest();
                    verdict.torn += IsWhole(record) ? 0 : 1;
                    ++gone;
                });
        }
        WriteOne(stream.Writer(), round, 300, false);
        while (gone < 2)
        {
            stream.Writer().Wake();
            std::this_thread::yield();
        }
        stream.End();
        for (std::thread& thread : threads)
        {
            thread.join();
        }
    }
    EXPECT_EQ(verdict.torn, 0U);
}

/** Each record is published when the one before was fetched: a reader that looks, arms and polls in
    the wrong order misses one, and nothing else wakes it. */
TEST(StreamThreads, AreWokenForEachRecord)
{
    CTestStream stream;
    stream.Configure({{eKW_SAMPLES_INT16, 10}, {eKW_SAMPLES_INT16, 10}}, 5);
    constexpr UINT64 kRecords = 20000;
    std::atomic<UINT64> fetched{0};
    std::atomic<bool> isLost{false};
    std::thread thread(
        [&, reader = std::shared_ptr<IKWStreamReader>(stream.Reader())]
        {
            for (UINT64 i = 0; i < kRecords && !isLost; ++i)
            {
                const auto begin = t_Clock::now();
                reader->Wait(20000);
                isLost = t_Clock::now() - begin > std::chrono::seconds(15);
                fetched += reader->GetNext() ? 1 : 0;
            }
        });
    for (UINT64 i = 1; i <= kRecords && !isLost; ++i)
    {
        const auto begin = t_Clock::now(); // a little later each time, through all that Arm does
        while (t_Clock::now() - begin < std::chrono::nanoseconds(i % 100 * 20))
        {
        }
        WriteOne(stream.Writer(), i, 10, false);
        for (UINT32 looks = 1; fetched < i && !isLost; ++looks)
        {
            if (looks % 1000 == 0)
            {
                std::this_thread::yield();
            }
        }
    }
    thread.join();
    EXPECT_FALSE(isLost);
    EXPECT_EQ(fetched, kRecords);
}
