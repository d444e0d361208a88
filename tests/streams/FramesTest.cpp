// SPDX-License-Identifier: MIT
// Frames of a bus in streams, beside the samples they were decoded from.
#include "Streams/Frames.h"
#include "streams/TestStream.h"

#include <array>

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
    KW_RecordInfo info;
    info.source = 33;
    ASSERT_EQ(stream.Writer().Publish(info, infos), eKW_ACC_OK);
    const CKWRecord record = reader->GetNext();
    EXPECT_EQ(record.GetInfo().source, 33U);
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
