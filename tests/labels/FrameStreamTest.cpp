// SPDX-License-Identifier: MIT
// Frames that a stream carries are decoded by whoever reads them: a log, a stream and a label list
// together.
#include "LabelList/FrameLog.h"
#include "LabelList/LabelListDecoder.h"
#include "LabelList/LabelListFile.h"
#include "Streams/Frames.h"
#include "Streams/Stream.h"

#include <cmath>
#include <cstring>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <vector>

namespace
{
/** The frames of a log of candump, times against its first frame. */
std::vector<KW_Frame> ReadLog(const char* name)
{
    std::vector<KW_Frame> frames;
    std::ifstream file(name);
    CFrameLogReader reader;
    KW_LoggedFrame logged;
    INT64 first = 0;
    for (std::string line; std::getline(file, line);)
    {
        if (reader.Read(line, logged) != CFrameLogReader::e_Line::Frame)
        {
            continue;
        }
        first = frames.empty() ? logged.nanoseconds : first;
        KW_Frame frame;
        frame.time = static_cast<double>(logged.nanoseconds - first) * 1e-9;
        frame.identifier = logged.identifier;
        frame.identifierLength = logged.isExtended ? 29 : 11;
        frame.flags = logged.isRemote ? UINT32{eKW_FRAME_REMOTE} : 0;
        frame.length = static_cast<UINT8>(logged.length);
        frame.bytes = logged.bytes;
        frames.push_back(frame);
    }
    return frames;
}
} // namespace

TEST(FrameStream, FramesOfALogAreDecodedByWhoeverReadsThem)
{
    KW_LabelList list;
    std::vector<KW_LabelReport> reports;
    ASSERT_TRUE(KW_IsAccepted(
        KW_ReadLabelFile(QStringLiteral(KWI_LABEL_EXAMPLES "/vehicle.dbc"), list, reports)));
    const std::vector<KW_Frame> log = ReadLog(KWI_LABEL_EXAMPLES "/drive.log");
    ASSERT_GT(log.size(), 10U);
    const auto stream = KW_MakeStream(1U << 20U);
    const auto writer = stream->MakeWriter();
    const auto reader = stream->MakeReader();
    const auto count = static_cast<UINT32>(log.size());
    const KW_TraceLayout layout{eKW_SAMPLES_FRAMES, count};
    ASSERT_EQ(writer->Configure({&layout, 1}, 2, 1U << 20U), eKW_ACC_OK);
    std::memcpy(writer->Reserve(0).data(), log.data(), log.size() * sizeof(KW_Frame));
    writer->Advance(0, count);
    KW_TraceInfo trace;
    trace.format = eKW_SAMPLES_FRAMES;
    trace.count = count;
    ASSERT_EQ(writer->Publish({}, {&trace, 1}), eKW_ACC_OK);
    const CLabelListDecoder decoder(list);
    const CKWRecord record = reader->GetLatest();
    std::array<CLabelListDecoder::t_Value, 64> values;
    std::map<std::pair<std::string, INT64>, double> found; // by signal and ms
    for (const KW_Frame& frame : KW_GetFrames(record))
    {
        const auto* const message = decoder.Find(frame.identifierLength, frame.identifier);
        const std::size_t decoded =
            message == nullptr ? 0
                               : CLabelListDecoder::Decode(*message, frame.GetPayload(), values);
        for (std::size_t i = 0; i < decoded; ++i)
        {
            found[{values[i].signal->name, std::llround(frame.time * 1e3)}] = values[i].value;
        }
    }
    const auto valueOf = [&](const char* signal, INT64 time)
    {
        const auto entry = found.find({signal, time});
        return entry != found.end() ? entry->second : std::nan("");
    };
    EXPECT_EQ(valueOf("EngineSpeed", 10), 212.5);
    EXPECT_EQ(valueOf("EngineSpeed", 50), 1204.0);
    EXPECT_DOUBLE_EQ(valueOf("BoostPressure", 50), 104.32);
    EXPECT_EQ(valueOf("Distance", 4), 48213.25);
    EXPECT_EQ(valueOf("Gear", 63), -1.0);
}
