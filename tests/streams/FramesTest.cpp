// SPDX-License-Identifier: MIT
// Frames of a bus in streams: beside the samples they were decoded from, or in a stream of their
// own, whole and in order for each reader.
#include "Streams/Frames.h"
#include "streams/TestStream.h"

#include <atomic>
#include <thread>

namespace
{
/** A frame that can be told from all others, and from a torn one. */
KW_Frame FrameOf(UINT64 number)
{
    KW_Frame frame;
    frame.time = static_cast<double>(number);
    frame.identifier = static_cast<UINT32>(number);
    frame.identifierLength = 29;
    frame.length = static_cast<UINT8>(number % (KW_Frame::kLongest + 1));
    frame.bytes.fill(static_cast<UINT8>(number * 7));
    return frame;
}

bool IsWhole(const KW_Frame& frame)
{
    const auto number = static_cast<UINT64>(frame.time);
    const KW_Frame expected = FrameOf(number);
    return frame.identifier == expected.identifier && frame.length == expected.length &&
           frame.bytes == expected.bytes;
}

KW_TraceInfo FrameTrace(std::size_t count)
{
    KW_TraceInfo info;
    info.channel = eKW_ZEL_CHANNEL_S1;
    info.format = eKW_SAMPLES_FRAMES;
    info.count = static_cast<UINT32>(count);
    return info;
}

/** A stream of records of frames only. */
class CFrameStream : public CTestStream
{
public:
    explicit CFrameStream(UINT32 frames, UINT32 depth = 8) : CTestStream(1U << 20U)
    {
        EXPECT_EQ(Configure({{eKW_SAMPLES_FRAMES, frames}}, depth), eKW_ACC_OK);
    }
    bool Put(const std::vector<KW_Frame>& frames)
    {
        return Fill(0, frames, static_cast<UINT32>(frames.size()));
    }
    bool PublishFrames(const std::vector<KW_Frame>& frames, UINT64 source)
    {
        const KW_TraceInfo trace = FrameTrace(frames.size());
        KW_RecordInfo info;
        info.source = source;
        return Put(frames) && Writer().Publish(info, {&trace, 1}) == eKW_ACC_OK;
    }
};
} // namespace

TEST(Frames, StandBesideTheSamplesTheyWereDecodedFrom)
{
    CTestStream stream;
    const auto reader = stream.Reader();
    stream.Configure({{eKW_SAMPLES_INT16, 100}, {eKW_SAMPLES_FRAMES, 10}}, 2);
    const std::vector<KW_Frame> frames = {FrameOf(1), FrameOf(64), FrameOf(129)};
    ASSERT_TRUE(stream.Fill(0, std::vector<INT16>(100, 7)));
    ASSERT_TRUE(stream.Fill(1, frames, 3));
    const std::array infos = {CTestStream::Info(eKW_SAMPLES_INT16, 100), FrameTrace(3)};
    ASSERT_EQ(stream.Writer().Publish({}, infos), eKW_ACC_OK);
    const CKWRecord record = reader->GetNext();
    const auto found = KW_GetFrames(record, 1);
    ASSERT_EQ(found.size(), 3U);
    for (std::size_t i = 0; i < found.size(); ++i)
    {
        EXPECT_EQ(found[i].time, frames[i].time);
        EXPECT_TRUE(IsWhole(found[i]));
        EXPECT_EQ(found[i].GetPayload().size(), frames[i].length);
    }
    EXPECT_EQ(PointsOf(record), std::vector<INT16>(100, 7));
    EXPECT_TRUE(KW_GetFrames(record, 0).empty()) << "samples were taken for frames";
    EXPECT_TRUE(KW_GetFrames(record, 2).empty());
    EXPECT_TRUE(KW_GetFrames({}).empty());
    std::array<KW_MinMax, 4> columns{};
    std::array<KW_LineStates, 4> lines{};
    EXPECT_EQ(record.GetColumns(1, 0, 3, columns), eKW_ACC_WRONG_KIND);
    EXPECT_EQ(record.GetLines(1, 0, 3, lines), eKW_ACC_WRONG_KIND);
}

TEST(Frames, PayloadNeverGoesBeyondTheFrame)
{
    KW_Frame frame = FrameOf(1);
    frame.length = 255;
    EXPECT_EQ(frame.GetPayload().size(), KW_Frame::kLongest);
    frame.flags = eKW_FRAME_REMOTE;
    EXPECT_TRUE(frame.GetPayload().empty());
}

TEST(Frames, LogThatGrowsShowsEachReaderWhatThereIs)
{
    CFrameStream stream(1000);
    const auto reader = stream.Reader();
    const KW_TraceInfo trace = FrameTrace(1000);
    UINT64 number = 0;
    for (const std::size_t count : {1U, 299U, 0U, 700U})
    {
        std::vector<KW_Frame> frames;
        for (std::size_t i = 0; i < count; ++i)
        {
            frames.push_back(FrameOf(number++));
        }
        ASSERT_TRUE(count == 0 || stream.Put(frames));
        const CKWRecord before = reader->GetLatest();
        const std::size_t shownBefore = KW_GetFrames(before).size();
        ASSERT_EQ(stream.Writer().Publish({}, {&trace, 1}, true), eKW_ACC_OK);
        const CKWRecord record = reader->GetLatest();
        EXPECT_EQ(KW_GetFrames(record).size(), number);
        EXPECT_EQ(KW_GetFrames(before).size(), shownBefore) << "a value grew";
        EXPECT_TRUE(IsWhole(KW_GetFrames(record).back()));
    }
}

TEST(Frames, OutliveWriterStreamAndReader)
{
    CKWRecord kept;
    {
        CFrameStream stream(10);
        const auto reader = stream.Reader();
        ASSERT_TRUE(stream.PublishFrames({FrameOf(5)}, 33));
        stream.End();
        kept = reader->GetNext();
    }
    ASSERT_EQ(KW_GetFrames(kept).size(), 1U);
    EXPECT_TRUE(IsWhole(KW_GetFrames(kept)[0]));
    EXPECT_EQ(kept.GetInfo().source, 33U);
}

/** A decoder that is fed without end, and readers of each kind: none waits, none sees a torn frame,
    and what one did not get is counted. */
TEST(Frames, ReadersInThreadsGetWholeFramesOrCountThem)
{
    constexpr UINT64 kRecords = 20000;
    CFrameStream stream(16);
    std::atomic<bool> isDone{false};
    std::atomic<UINT64> torn{0};
    std::atomic<UINT64> uncounted{0};
    const auto read = [&](std::unique_ptr<IKWStreamReader> reader, bool takesAll)
    {
        UINT64 fetched = 0;
        UINT64 before = 0;
        for (bool wasDone = false;;)
        {
            wasDone = isDone.load();
            const bool isNew = reader->HasNew();
            const CKWRecord record = takesAll ? reader->GetNext() : reader->GetLatest();
            const auto frames = KW_GetFrames(record);
            const UINT64 number = record.GetInfo().number;
            if (number != before && record) // which GetLatest answers again
            {
                ++fetched;
                torn += number < before || record.GetInfo().source != number * 3 ? 1 : 0;
                torn += frames.size() != number % 16 + 1 ? 1 : 0;
                before = number;
            }
            for (const KW_Frame& frame : frames)
            {
                torn += IsWhole(frame) ? 0 : 1;
            }
            if (wasDone && !isNew)
            {
                break;
            }
        }
        uncounted += fetched + reader->GetMissed() == kRecords ? 0 : 1;
    };
    std::vector<std::thread> readers;
    for (int i = 0; i < 4; ++i)
    {
        readers.emplace_back(read, stream.Reader(), i % 2 == 0);
    }
    for (UINT64 record = 1; record <= kRecords; ++record)
    {
        std::vector<KW_Frame> frames;
        for (UINT64 i = 0; i <= record % 16; ++i)
        {
            frames.push_back(FrameOf(record * 16 + i));
        }
        stream.PublishFrames(frames, record * 3);
    }
    isDone = true;
    for (std::thread& reader : readers)
    {
        reader.join();
    }
    EXPECT_EQ(torn.load(), 0U);
    EXPECT_EQ(uncounted.load(), 0U);
}
