// SPDX-License-Identifier: MIT
// What one thread sees of a stream: order, history, gaps in numbers, room, growth, configuration.
#include "streams/TestStream.h"

#ifdef KWI_COUNT_ALLOCATIONS
#include "faults/Allocations.h"
#endif

#include <array>
#include <cmath>
#include <poll.h>

namespace
{
using t_Points = std::vector<INT16>;
constexpr KW_TraceLayout kShort{eKW_SAMPLES_INT16, 100};

/** A record that tells which one it is. */
t_Points Numbered(INT16 number)
{
    return t_Points(100, number);
}

std::vector<INT16> HistoryOf(IKWStreamReader& reader)
{
    std::vector<INT16> found;
    for (INT32 trace = 0; const CKWRecord record = reader.GetHistory(trace); --trace)
    {
        found.push_back(PointsOf(record)[0]);
    }
    EXPECT_EQ(found.size(), reader.GetAvailable());
    return found;
}

/** Lets readers hold all but so many records' room. */
std::vector<CKWRecord> HoldAll(CTestStream& stream, IKWStreamReader& reader)
{
    std::vector<CKWRecord> held;
    for (INT16 i = 0; stream.Publish(Numbered(i)); ++i)
    {
        held.push_back(reader.GetNext());
    }
    return held;
}
} // namespace

TEST(Records, HoldAllTracesOfOneTrigger)
{
    CTestStream stream;
    const auto reader = stream.Reader();
    stream.Configure({kShort, {eKW_SAMPLES_FLOAT, 0}, {eKW_SAMPLES_FLOAT, 50}}, 3);
    EXPECT_TRUE(stream.Writer().Reserve(1).empty()) << "a place without a trace begins no record";
    ASSERT_TRUE(stream.Fill(0, Numbered(7)));
    ASSERT_TRUE(stream.Fill(2, std::vector<float>(50, 2.5F)));
    KW_RecordInfo info{99, 1234567, 42, eKW_MASK_PASSED};
    std::array infos = {CTestStream::Info(eKW_SAMPLES_INT16, 100), KW_TraceInfo{},
                        CTestStream::Info(eKW_SAMPLES_FLOAT, 50)};
    infos[2].flags = eKW_TRACE_ABOVE_RANGE;
    infos[2].settlingPoints = 16;
    ASSERT_EQ(stream.Writer().Publish(info, infos), eKW_ACC_OK);
    const CKWRecord record = reader->GetNext();
    EXPECT_EQ(record.GetInfo().number, 1U) << "numbers are the stream's";
    EXPECT_EQ(record.GetInfo().triggerTime, 1234567);
    EXPECT_EQ(record.GetInfo().settingsCounter, 42);
    EXPECT_EQ(record.GetInfo().maskResult, eKW_MASK_PASSED);
    ASSERT_EQ(record.GetTraceCount(), 3U);
    EXPECT_EQ(PointsOf(record), Numbered(7));
    EXPECT_EQ(record.GetTrace(1).count, 0U);
    EXPECT_EQ(record.GetTrace(2).flags, eKW_TRACE_ABOVE_RANGE);
    EXPECT_EQ(record.GetTrace(2).settlingPoints, 16U);
    EXPECT_EQ(record.GetSamples(2).size(), 200U);
    EXPECT_TRUE(record.GetSamples(3).empty());
    EXPECT_EQ(record.GetTrace(3).channel, eKW_ZEL_CHANNEL_NONE);
}

TEST(Records, ComeInOrderAndWhoIsLateKnowsWhatHeMissed)
{
    CTestStream stream;
    const auto next = stream.Reader();
    const auto latest = stream.Reader();
    stream.Configure({kShort}, 3);
    EXPECT_FALSE(next->HasNew());
    EXPECT_FALSE(next->GetNext());
    EXPECT_FALSE(latest->GetLatest());
    for (INT16 i = 1; i <= 5; ++i)
    {
        ASSERT_TRUE(stream.Publish(Numbered(i)));
    }
    EXPECT_EQ(HistoryOf(*next), (t_Points{5, 4, 3}));
    EXPECT_FALSE(next->GetHistory(1));
    EXPECT_FALSE(next->GetHistory(INT32_MIN));
    EXPECT_TRUE(next->HasNew()) << "looking at the history fetches nothing";
    for (const UINT64 number : {3U, 4U, 5U})
    {
        EXPECT_TRUE(next->HasNew());
        EXPECT_EQ(next->GetNext().GetInfo().number, number);
    }
    EXPECT_FALSE(next->HasNew());
    EXPECT_FALSE(next->GetNext());
    EXPECT_EQ(next->GetMissed(), 2U);
    EXPECT_EQ(stream.Writer().GetLost(), 2U);
    EXPECT_EQ(latest->GetLatest().GetInfo().number, 5U);
    EXPECT_EQ(latest->GetLatest().GetInfo().number, 5U) << "again";
    EXPECT_FALSE(latest->HasNew());
    EXPECT_EQ(latest->GetMissed(), 4U);
    EXPECT_EQ(stream.Reader()->GetNext().GetInfo().number, 5U) << "a new reader has the newest";
}

TEST(Records, ThatFindNoRoomAreDroppedAndLeaveAGap)
{
    CTestStream stream(32768);
    const auto reader = stream.Reader();
    stream.Configure({kShort, kShort}, 100);
    const KW_TraceInfo info = CTestStream::Info(eKW_SAMPLES_INT16, 100);
    std::vector<CKWRecord> held = HoldAll(stream, *reader);
    ASSERT_GT(held.size(), 2U);
    EXPECT_EQ(HistoryOf(*reader).size(), 1U) << "the newest is never taken away";
    EXPECT_EQ(stream.Writer().GetDropped(), 1U);
    EXPECT_TRUE(stream.Writer().Reserve(1).empty()) << "the other trace of the dropped record";
    EXPECT_EQ(stream.Writer().Publish({}, {&info, 1}), eKW_ACC_NOTHING_TO_ACT_ON);
    EXPECT_EQ(stream.Writer().GetDropped(), 1U);
    EXPECT_FALSE(stream.Publish(Numbered(1)));
    EXPECT_FALSE(stream.Publish(Numbered(1))) << "whoever forgets to publish drops as many";
    EXPECT_EQ(stream.Writer().GetDropped(), 3U);
    EXPECT_EQ(reader->GetMissed(), 3U) << "while nothing is published";
    EXPECT_EQ(PointsOf(held[0]), Numbered(0));
    const UINT64 last = held.back().GetInfo().number;
    held.erase(held.begin());
    ASSERT_TRUE(stream.Publish(Numbered(77)));
    EXPECT_EQ(reader->GetNext().GetInfo().number, last + 4);
    EXPECT_EQ(reader->GetMissed(), 3U);
    EXPECT_EQ(stream.Writer().GetLost(), 0U) << "all were fetched";
    held.clear();
    for (INT16 i = 0; i < 200; ++i)
    {
        ASSERT_TRUE(stream.Publish(Numbered(i))) << "room that was held is room again";
    }
}

TEST(Records, OutliveReaderAndStream)
{
    CKWRecord kept;
    CKWRecord copy;
    {
        CTestStream stream;
        stream.Configure({kShort}, 3);
        const auto reader = stream.Reader();
        ASSERT_TRUE(stream.Publish(Numbered(3)));
        kept = reader->GetNext();
        stream.End();
        EXPECT_EQ(PointsOf(reader->GetLatest()), Numbered(3)) << "a reader without a stream";
        EXPECT_FALSE(reader->Wait(1));
    }
    EXPECT_EQ(PointsOf(kept), Numbered(3));
    copy = kept;
    kept = {};
    EXPECT_EQ(PointsOf(copy), Numbered(3));
    kept = std::move(copy);
    EXPECT_EQ(PointsOf(kept), Numbered(3));
}

TEST(Records, GrowWhileViewsStayAsTheyWere)
{
    CTestStream stream;
    const auto reader = stream.Reader();
    stream.Configure({{eKW_SAMPLES_INT16, 1000}, {eKW_SAMPLES_INT16, 500}}, 3);
    std::array infos = {CTestStream::Info(eKW_SAMPLES_INT16, 1000),
                        CTestStream::Info(eKW_SAMPLES_INT16, 500)};
    auto& writer = stream.Writer();
    ASSERT_TRUE(stream.Fill(0, t_Points(400, 1)));
    ASSERT_EQ(writer.Publish({}, infos, true), eKW_ACC_OK);
    const CKWRecord none = reader->GetLatest();
    EXPECT_EQ(none.GetTrace(0).count, 0U) << "the other trace has nothing yet";
    ASSERT_TRUE(stream.Fill(1, t_Points(150, 2)));
    EXPECT_FALSE(reader->HasNew()) << "not published";
    ASSERT_EQ(writer.Publish({}, infos, true), eKW_ACC_OK);
    EXPECT_TRUE(reader->HasNew());
    const CKWRecord some = reader->GetNext();
    EXPECT_FALSE(reader->HasNew());
    EXPECT_EQ(some.GetTrace(0).count, 300U) << "both have got as far";
    EXPECT_EQ(some.GetTrace(1).count, 150U);
    EXPECT_EQ(writer.Reserve(0).size(), 1200U) << "what is left";
    ASSERT_TRUE(stream.Fill(1, t_Points(300, 4)));
    ASSERT_EQ(writer.Publish({}, infos, true), eKW_ACC_OK);
    EXPECT_EQ(reader->GetNext().GetTrace(1).count, 200U) << "now the first one is behind";
    ASSERT_TRUE(stream.Fill(1, t_Points(50, 4)));
    ASSERT_TRUE(stream.Fill(0, t_Points(600, 3)));
    infos[0].flags = eKW_TRACE_BELOW_RANGE;
    ASSERT_EQ(writer.Publish({}, infos), eKW_ACC_OK);
    EXPECT_EQ(reader->GetLatest().GetTrace(0).count, 1000U);
    EXPECT_EQ(reader->GetLatest().GetTrace(0).flags, eKW_TRACE_BELOW_RANGE);
    EXPECT_EQ(reader->GetLatest().GetInfo().number, 1U) << "it is one record";
    EXPECT_EQ(some.GetTrace(0).count, 300U);
    EXPECT_EQ(some.GetSamples(1).size(), 300U);
    EXPECT_EQ(PointsOf(none).size(), 0U);
    EXPECT_EQ(writer.Publish({}, infos), eKW_ACC_NOTHING_TO_ACT_ON) << "it has ended";
    ASSERT_TRUE(stream.Fill(0, t_Points(10, 1)));
    ASSERT_EQ(writer.Publish({}, {infos.data(), 1}), eKW_ACC_WARNING) << "shorter than said";
    EXPECT_EQ(reader->GetNext().GetTrace(0).count, 10U);
    EXPECT_EQ(reader->GetMissed(), 0U);
}

TEST(Records, ThatHaveGrownComeAgainBeforeTheNextOne)
{
    CTestStream stream;
    const auto reader = stream.Reader();
    stream.Configure({kShort}, 3);
    const KW_TraceInfo info = CTestStream::Info(eKW_SAMPLES_INT16, 100);
    ASSERT_TRUE(stream.Publish(Numbered(1)));
    ASSERT_TRUE(stream.Fill(0, t_Points(40, 2)));
    ASSERT_EQ(stream.Writer().Publish({}, {&info, 1}, true), eKW_ACC_OK);
    EXPECT_EQ(stream.Reader()->GetNext().GetInfo().number, 2U) << "nothing older";
    EXPECT_EQ(reader->GetNext().GetInfo().number, 1U);
    EXPECT_EQ(reader->GetNext().GetTrace(0).count, 40U);
    ASSERT_TRUE(stream.Fill(0, t_Points(60, 2)));
    ASSERT_EQ(stream.Writer().Publish({}, {&info, 1}), eKW_ACC_OK);
    ASSERT_TRUE(stream.Publish(Numbered(3)));
    EXPECT_EQ(PointsOf(reader->GetNext()), Numbered(2)) << "its end";
    EXPECT_EQ(PointsOf(reader->GetNext()), Numbered(3));
    EXPECT_FALSE(reader->HasNew());
    EXPECT_FALSE(reader->GetNext());
    EXPECT_EQ(reader->GetMissed(), 0U);
}

TEST(Records, AreConfiguredAnewWhileSomeAreHeld)
{
    CTestStream stream(64 * 1024);
    const auto reader = stream.Reader();
    std::vector<CKWRecord> held;
    std::vector<t_Points> expected;
    for (UINT32 i = 0; i < 300; ++i)
    {
        const UINT32 length = 100 + i * 7919 % 9000;
        ASSERT_TRUE(
            KW_IsAccepted(stream.Configure({{eKW_SAMPLES_INT16, length}}, 1 + i * 31 % 50)));
        EXPECT_EQ(static_cast<bool>(reader->GetLatest()), reader->GetAvailable() > 0);
        const t_Points points(length, static_cast<INT16>(i));
        if (stream.Publish(points))
        {
            ASSERT_TRUE(reader->HasNew());
            held.push_back(reader->GetNext());
            expected.push_back(points);
        }
        for (std::size_t k = 0; k < held.size(); ++k)
        {
            ASSERT_EQ(PointsOf(held[k]), expected[k]) << i;
        }
        if (held.size() > 3 || reader->GetMissed() > 20)
        {
            held.erase(held.begin() + i % held.size());
            expected.erase(expected.begin() + i % expected.size());
        }
    }
    EXPECT_LT(stream.Writer().GetDropped(), 200U);
}

TEST(Records, OfALengthThatLeavesNoRoomForTheNewestLetItGo)
{
    CTestStream stream(64 * 1024);
    const auto reader = stream.Reader();
    ASSERT_TRUE(KW_IsAccepted(stream.Configure({{eKW_SAMPLES_INT16, 14000}}, 5)));
    ASSERT_TRUE(stream.Publish(t_Points(14000, 1)));
    ASSERT_TRUE(KW_IsAccepted(stream.Configure({{eKW_SAMPLES_INT16, 1000}}, 5)));
    EXPECT_EQ(reader->GetLatest().GetTrace(0).count, 14000U) << "the newest stays";
    ASSERT_TRUE(KW_IsAccepted(stream.Configure({{eKW_SAMPLES_INT16, 13500}}, 5)));
    EXPECT_FALSE(reader->GetLatest());
    EXPECT_FALSE(reader->HasNew());
    EXPECT_EQ(reader->GetAvailable(), 0U);
    CKWRecord held;
    for (INT16 i = 2; i < 9; ++i)
    {
        ASSERT_TRUE(stream.Publish(t_Points(13500, i)));
        EXPECT_EQ(PointsOf(reader->GetNext()), t_Points(13500, i));
    }
    held = reader->GetLatest();
    ASSERT_TRUE(KW_IsAccepted(stream.Configure({{eKW_SAMPLES_INT16, 13400}}, 5)));
    EXPECT_TRUE(stream.Publish(t_Points(13400, 20))) << "beside the one that is held";
    EXPECT_FALSE(stream.Publish(t_Points(13400, 21))) << "no third one";
    EXPECT_EQ(PointsOf(held), t_Points(13500, 8));
    held = {};
    EXPECT_TRUE(stream.Publish(t_Points(13400, 22))) << "its room is cut when it is let go";
    EXPECT_TRUE(stream.Publish(t_Points(13400, 23)));
}

TEST(Records, KeepTheirHistoryWhileTheConfigurationStands)
{
    CTestStream stream;
    const auto reader = stream.Reader();
    EXPECT_EQ(stream.Configure({kShort}, 4), eKW_ACC_OK);
    for (INT16 i = 1; i <= 6; ++i)
    {
        ASSERT_TRUE(stream.Publish(Numbered(i)));
        EXPECT_EQ(stream.Configure({kShort}, 4), eKW_ACC_OK);
    }
    EXPECT_EQ(HistoryOf(*reader), (t_Points{6, 5, 4, 3}));
    EXPECT_EQ(stream.Configure({kShort}, 2), eKW_ACC_OK);
    EXPECT_EQ(HistoryOf(*reader), (t_Points{6}));
}

TEST(Records, OfBadArgumentsAreRefusedWithTheirCodes)
{
    CTestStream stream;
    auto& writer = stream.Writer();
    const std::vector<KW_TraceLayout> many(eKW_STREAM_TRACES + 1, kShort);
    EXPECT_TRUE(writer.Reserve(0).empty()) << "not configured";
    EXPECT_EQ(stream.Configure({}, 1), eKW_ACC_BAD_INDEX);
    EXPECT_EQ(stream.Configure(many, 1), eKW_ACC_BAD_INDEX);
    EXPECT_EQ(stream.Configure({{eKW_SAMPLES_COUNT, 1}}, 1), eKW_ACC_UNKNOWN_VALUE);
    EXPECT_EQ(stream.Configure({kShort}, 0), eKW_ACC_BELOW_MINIMUM);
    EXPECT_EQ(stream.Configure({kShort}, 5001), eKW_ACC_ABOVE_MAXIMUM);
    EXPECT_EQ(stream.Configure({{eKW_SAMPLES_FLOAT, UINT32_MAX}}, 1), eKW_ACC_ABOVE_MAXIMUM);
    EXPECT_EQ(stream.Configure({kShort}, 1, 1000), eKW_ACC_ABOVE_MAXIMUM);
    EXPECT_EQ(stream.Configure({kShort}, 5000), eKW_ACC_WARNING) << "1 MiB has not so much room";
    EXPECT_EQ(stream.Configure({kShort}, 5), eKW_ACC_OK);

    KW_TraceInfo info = CTestStream::Info(eKW_SAMPLES_INT16, 100);
    EXPECT_EQ(writer.Advance(0, 1), eKW_ACC_NOTHING_TO_ACT_ON);
    EXPECT_EQ(writer.Publish({}, {&info, 1}), eKW_ACC_NOTHING_TO_ACT_ON);
    ASSERT_TRUE(stream.Fill(0, Numbered(1)));
    EXPECT_EQ(writer.Advance(0, 1), eKW_ACC_ABOVE_MAXIMUM);
    EXPECT_EQ(writer.Advance(1, 1), eKW_ACC_BAD_INDEX);
    const std::array both = {info, info};
    EXPECT_EQ(writer.Publish({}, both), eKW_ACC_BAD_INDEX);
    const auto refused = [&](auto change)
    {
        KW_TraceInfo bad = info;
        change(bad);
        return writer.Publish({}, {&bad, 1});
    };
    EXPECT_EQ(refused([](auto& i) { i.format = eKW_SAMPLES_FLOAT; }), eKW_ACC_WRONG_KIND);
    EXPECT_EQ(refused([](auto& i) { i.count = 101; }), eKW_ACC_ABOVE_MAXIMUM);
    EXPECT_EQ(refused([](auto& i) { i.interval = 0; }), eKW_ACC_NOT_A_NUMBER);
    EXPECT_EQ(refused([](auto& i) { i.scale = 0; }), eKW_ACC_NOT_A_NUMBER);
    EXPECT_EQ(refused([](auto& i) { i.offset = std::nan(""); }), eKW_ACC_NOT_A_NUMBER);
    EXPECT_EQ(writer.Publish({}, {&info, 1}), eKW_ACC_OK) << "it was still being filled";

    ASSERT_FALSE(writer.Reserve(0).empty());
    writer.Discard();
    EXPECT_EQ(writer.GetDropped(), 1U);
    EXPECT_EQ(writer.Advance(0, 1), eKW_ACC_NOTHING_TO_ACT_ON);
}

TEST(Records, HaveOneWriterAtATime)
{
    const auto stream = KW_MakeStream(1 << 20);
    auto writer = stream->MakeWriter();
    EXPECT_EQ(stream->MakeWriter(), nullptr);
    writer = nullptr;
    EXPECT_NE(stream->MakeWriter(), nullptr);
}

TEST(Records, WakeWhoIsArmedOnce)
{
    CTestStream stream;
    const auto reader = stream.Reader();
    const auto isReadable = [](int descriptor)
    {
        pollfd polled{descriptor, POLLIN, 0};
        return poll(&polled, 1, 0) == 1;
    };
    stream.Configure({kShort}, 4);
    EXPECT_FALSE(reader->Wait(0));
    EXPECT_FALSE(reader->Wait(20));
    const int descriptor = reader->Arm();
    ASSERT_GE(descriptor, 0);
    EXPECT_FALSE(isReadable(descriptor));
    stream.Writer().Wake();
    EXPECT_TRUE(isReadable(descriptor)) << "woken without a reason";
    EXPECT_EQ(reader->Arm(), descriptor);
    EXPECT_FALSE(isReadable(descriptor)) << "no load while nothing happens";
    stream.Publish(Numbered(1));
    EXPECT_FALSE(isReadable(descriptor)) << "publishing wakes nobody";
    stream.Writer().Wake();
    EXPECT_TRUE(isReadable(descriptor));
    EXPECT_EQ(reader->Arm(), -1) << "there is something new";
    EXPECT_TRUE(reader->Wait(-1));
    EXPECT_TRUE(reader->GetNext());
    EXPECT_EQ(reader->Arm(), descriptor);
    EXPECT_FALSE(isReadable(descriptor));
}

#ifdef KWI_COUNT_ALLOCATIONS
TEST(Records, TakeNoMemoryOnceTheStreamIsMade)
{
    CTestStream stream;
    const auto reader = stream.Reader();
    const std::vector<KW_TraceLayout> layout = {kShort};
    const t_Points points = Numbered(1);
    std::array<KW_MinMax, 20> columns;
    const KW_TraceInfo info = CTestStream::Info(eKW_SAMPLES_INT16, 100);
    const auto act = [&]
    {
        for (UINT32 i = 0; i < 50; ++i)
        {
            stream.Writer().Configure(layout, 5 + i / 25, 1 << 20);
            stream.Fill(0, points);
            stream.Writer().Publish({}, {&info, 1});
            stream.Writer().Wake();
            CKWRecord record = reader->GetLatest();
            record = reader->GetHistory(-2);
            const CKWRecord copy = record;
            copy.GetColumns(0, 3.5, 10, columns, eKW_ZEL_INTERPOLATION_MODE_SINX);
            reader->Arm();
        }
    };
    EXPECT_EQ(KW_CountAllocations(act), 0U);
}
#endif
