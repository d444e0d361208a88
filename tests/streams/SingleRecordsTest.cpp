// SPDX-License-Identifier: MIT
// Records of their own memory, and drafts of records that are being filled.
#include "streams/TestStream.h"

#ifdef KWI_COUNT_ALLOCATIONS
#include "faults/Allocations.h"
#endif

#include <array>
#include <cmath>
#include <limits>

namespace
{
constexpr KW_TraceLayout kHundredPoints{eKW_SAMPLES_INT16, 100};

template <class T>
std::span<const std::byte> BytesOf(const std::vector<T>& points)
{
    return std::as_bytes(std::span(points));
}

std::vector<INT16> Ramp(INT16 first, INT16 count)
{
    std::vector<INT16> points;
    for (INT16 i = 0; i < count; ++i)
    {
        points.push_back(static_cast<INT16>(first + i));
    }
    return points;
}

KW_MinMax WholeOf(const CKWRecord& record, UINT32 trace)
{
    KW_MinMax whole;
    EXPECT_EQ(record.GetColumns(trace, 0, record.GetTrace(trace).count, {&whole, 1}), eKW_ACC_OK);
    return whole;
}
} // namespace

TEST(SingleRecords, HoldSamplesOfEveryFormatLikeThoseOfStreams)
{
    const auto ints = Ramp(-500, 1000);
    const std::vector<float> floats(70, 1.5F);
    const auto pairs = Ramp(100, 400);
    const std::vector<UINT8> lines(300, 0x81);
    std::array traces = {CTestStream::Info(eKW_SAMPLES_INT16, 1000), KW_TraceInfo{},
                         CTestStream::Info(eKW_SAMPLES_FLOAT, 70),
                         CTestStream::Info(eKW_SAMPLES_MINMAX, 200),
                         CTestStream::Info(eKW_SAMPLES_LINES, 300)};
    traces[0].scale = -0.5;
    traces[0].flags = eKW_TRACE_ABOVE_RANGE;
    const std::array samples = {BytesOf(ints), std::span<const std::byte>{}, BytesOf(floats),
                                BytesOf(pairs), BytesOf(lines)};
    KW_ACCEPTANCE code = eKW_ACC_INTERNAL;
    CKWRecord record = KW_MakeRecord({77, 5, 6, eKW_MASK_FAILED}, traces, samples, &code);
    ASSERT_EQ(code, eKW_ACC_OK);
    EXPECT_EQ(record.GetInfo().number, 77U) << "nobody else counts it";
    EXPECT_EQ(record.GetInfo().maskResult, eKW_MASK_FAILED);
    EXPECT_EQ(record.GetTraceCount(), 5U);
    EXPECT_EQ(record.GetTrace(0).flags, eKW_TRACE_ABOVE_RANGE);
    EXPECT_EQ(record.GetTrace(1).count, 0U);
    const CKWRecord copy = record;
    record = {};
    for (UINT32 i = 0; i < samples.size(); ++i)
    {
        const auto bytes = copy.GetSamples(i);
        ASSERT_EQ(bytes.size(), samples[i].size());
        EXPECT_TRUE(std::equal(bytes.begin(), bytes.end(), samples[i].begin())) << i;
    }
    EXPECT_EQ(WholeOf(copy, 0).maximum, 250.0) << "from the pyramid";
    EXPECT_EQ(WholeOf(copy, 0).minimum, -249.5);
    EXPECT_EQ(WholeOf(copy, 2).maximum, 1.5);
    EXPECT_EQ(WholeOf(copy, 3).maximum, 499.0);
    KW_LineStates states;
    ASSERT_EQ(copy.GetLines(4, 0, 300, {&states, 1}), eKW_ACC_OK);
    EXPECT_EQ(states.always, 0x81);
}

TEST(SingleRecords, AreRefusedWithTheirCodes)
{
    const auto points = Ramp(0, 100);
    const auto codeOf = [&](auto change)
    {
        std::vector traces = {CTestStream::Info(eKW_SAMPLES_INT16, 100)};
        std::vector samples = {BytesOf(points)};
        change(traces, samples);
        KW_ACCEPTANCE code = eKW_ACC_INTERNAL;
        const CKWRecord record = KW_MakeRecord({}, traces, samples, &code);
        EXPECT_EQ(static_cast<bool>(record), code == eKW_ACC_OK);
        return code;
    };
    EXPECT_EQ(codeOf([](auto&, auto&) {}), eKW_ACC_OK);
    EXPECT_EQ(codeOf([](auto& t, auto& s) { t.clear(), s.clear(); }), eKW_ACC_OK) << "a mere info";
    EXPECT_EQ(codeOf([](auto& t, auto& s) { t.resize(17), s.resize(17); }), eKW_ACC_BAD_INDEX);
    EXPECT_EQ(codeOf([](auto&, auto& s) { s.clear(); }), eKW_ACC_BAD_INDEX);
    EXPECT_EQ(codeOf([](auto&, auto& s) { s[0] = s[0].first(198); }), eKW_ACC_BAD_INDEX);
    EXPECT_EQ(codeOf([](auto& t, auto&) { t[0].format = eKW_SAMPLES_COUNT; }),
              eKW_ACC_UNKNOWN_VALUE);
    EXPECT_EQ(codeOf([](auto& t, auto&) { t[0].scale = 0; }), eKW_ACC_NOT_A_NUMBER);
    EXPECT_EQ(codeOf([](auto& t, auto&) { t[0].start = std::nan(""); }), eKW_ACC_NOT_A_NUMBER);
    EXPECT_EQ(codeOf([](auto& t, auto&) { t[0].count = UINT32_MAX; }), eKW_ACC_ABOVE_MAXIMUM);
}

TEST(SingleRecords, AreMadeInPiecesAndNeverBeforeTheyAreWhole)
{
    const std::array traces = {CTestStream::Info(eKW_SAMPLES_INT16, 1000), KW_TraceInfo{}};
    CKWRecordMaker maker({}, traces);
    ASSERT_EQ(maker.GetCode(), eKW_ACC_OK);
    EXPECT_EQ(maker.Advance(1, 1), eKW_ACC_BAD_INDEX);
    EXPECT_EQ(maker.Advance(2, 1), eKW_ACC_BAD_INDEX);
    EXPECT_TRUE(maker.Reserve(1).empty());
    const auto points = Ramp(-300, 1000);
    for (const UINT32 piece : {999U, 1U})
    {
        EXPECT_FALSE(maker.Make()) << "points are missing";
        const auto room = maker.Reserve(0);
        const auto done = 2000 - room.size();
        std::memcpy(room.data(), BytesOf(points).data() + done, 2 * piece);
        EXPECT_EQ(maker.Advance(0, piece + 2), eKW_ACC_ABOVE_MAXIMUM);
        EXPECT_EQ(maker.Advance(0, piece), eKW_ACC_OK);
    }
    const CKWRecord record = maker.Make();
    EXPECT_EQ(PointsOf(record), points);
    EXPECT_FALSE(maker.Make()) << "once";
    EXPECT_TRUE(maker.Reserve(0).empty()) << "nobody writes what others have";
}

#ifdef KWI_COUNT_ALLOCATIONS
TEST(SingleRecords, TakeMemoryOnce)
{
    const auto points = Ramp(0, 100);
    const std::array traces = {CTestStream::Info(eKW_SAMPLES_INT16, 100)};
    const std::array samples = {BytesOf(points)};
    EXPECT_LE(KW_CountAllocations([&] { KW_MakeRecord({}, traces, samples); }), 1U);
}
#endif

TEST(Drafts, ShowWhatIsBeingFilledToNobodyElse)
{
    CTestStream stream;
    const auto reader = stream.Reader();
    stream.Configure({kHundredPoints}, 2);
    KW_TraceInfo info = CTestStream::Info(eKW_SAMPLES_INT16, 100);
    EXPECT_FALSE(stream.Writer().GetDraft({}, {&info, 1})) << "nothing is being filled";
    for (INT16 i = 0; i < 30; ++i)
    {
        ASSERT_TRUE(stream.Fill(0, Ramp(i, 100)));
        CKWRecord draft = stream.Writer().GetDraft({}, {&info, 1});
        EXPECT_EQ(PointsOf(draft), Ramp(i, 100));
        EXPECT_EQ(WholeOf(draft, 0).maximum, 99.0 + i);
        EXPECT_EQ(draft.GetInfo().number, 1U + static_cast<UINT64>(i));
        EXPECT_EQ(reader->HasNew(), i > 0);
        draft = {};
        ASSERT_EQ(stream.Writer().Publish({0, 0, 0, eKW_MASK_PASSED}, {&info, 1}), eKW_ACC_OK);
    }
    EXPECT_EQ(reader->GetLatest().GetInfo().maskResult, eKW_MASK_PASSED);
    EXPECT_EQ(stream.Writer().GetLost(), 28U) << "a draft is not a record that was fetched";
    EXPECT_EQ(stream.Writer().GetDropped(), 0U);
    ASSERT_TRUE(stream.Fill(0, Ramp(0, 40)));
    EXPECT_EQ(stream.Writer().GetDraft({}, {&info, 1}).GetTrace(0).count, 40U);
    info.scale = 0;
    EXPECT_FALSE(stream.Writer().GetDraft({}, {&info, 1}));
}

TEST(Drafts, ThatAreKeptHoldTheirRoom)
{
    CTestStream stream(32768);
    const auto reader = stream.Reader();
    stream.Configure({kHundredPoints}, 100);
    const KW_TraceInfo info = CTestStream::Info(eKW_SAMPLES_INT16, 100);
    ASSERT_TRUE(stream.Fill(0, Ramp(1000, 100)));
    const CKWRecord discarded = stream.Writer().GetDraft({}, {&info, 1});
    stream.Writer().Discard();
    ASSERT_TRUE(stream.Fill(0, Ramp(2000, 100)));
    CKWRecord published = stream.Writer().GetDraft({}, {&info, 1});
    stream.Writer().Publish({}, {&info, 1});
    for (INT16 i = 0; i < 100; ++i)
    {
        ASSERT_TRUE(stream.Publish(Ramp(i, 100)));
        ASSERT_EQ(reader->GetNext().GetInfo().number, 2U + static_cast<UINT64>(i));
    }
    stream.Configure({{eKW_SAMPLES_INT16, 70}}, 20);
    EXPECT_EQ(PointsOf(discarded), Ramp(1000, 100));
    EXPECT_EQ(PointsOf(published), Ramp(2000, 100));
    published = {};
    stream.End();
    EXPECT_EQ(PointsOf(discarded), Ramp(1000, 100)) << "outlives the stream";
}

TEST(Histories, EndForAllReadersWhenTheyAreCleared)
{
    CTestStream stream;
    const auto reader = stream.Reader();
    stream.Configure({kHundredPoints}, 4);
    for (INT16 i = 0; i < 3; ++i)
    {
        ASSERT_TRUE(stream.Publish(Ramp(i, 100)));
    }
    const CKWRecord held = reader->GetHistory(-1);
    stream.Writer().Clear();
    EXPECT_FALSE(reader->HasNew());
    EXPECT_FALSE(reader->GetLatest());
    EXPECT_FALSE(reader->GetHistory(0));
    EXPECT_EQ(reader->GetAvailable(), 0U);
    EXPECT_EQ(reader->GetMissed(), 3U);
    EXPECT_EQ(stream.Writer().GetLost(), 0U) << "nobody wants them";
    EXPECT_EQ(PointsOf(held), Ramp(1, 100));
    ASSERT_TRUE(stream.Publish(Ramp(9, 100)));
    EXPECT_EQ(PointsOf(reader->GetNext()), Ramp(9, 100));
    EXPECT_EQ(reader->GetAvailable(), 1U);
    ASSERT_TRUE(stream.Fill(0, Ramp(5, 30)));
    const KW_TraceInfo info = CTestStream::Info(eKW_SAMPLES_INT16, 100);
    ASSERT_EQ(stream.Writer().Publish({}, {&info, 1}, true), eKW_ACC_OK);
    stream.Writer().Clear();
    EXPECT_EQ(reader->GetAvailable(), 1U) << "the one that grows goes on";
    EXPECT_EQ(reader->GetLatest().GetTrace(0).count, 30U);
    ASSERT_EQ(stream.Writer().Publish({}, {&info, 1}), eKW_ACC_WARNING);
}
