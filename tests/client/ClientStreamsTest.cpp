// SPDX-License-Identifier: MIT
// A stream as the shared library exports it.
#include "Streams/Stream.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>

TEST(ClientStreams, CarryRecordsFromWriterToReader)
{
    const auto stream = KW_MakeStream(1 << 20);
    const auto writer = stream->MakeWriter();
    const auto reader = stream->MakeReader();
    const KW_TraceLayout layout{eKW_SAMPLES_INT16, 1000};
    ASSERT_EQ(writer->Configure({&layout, 1}, 10, 1 << 20), eKW_ACC_OK);
    std::array<INT16, 1000> points{};
    points[500] = 40;
    std::memcpy(writer->Reserve(0).data(), points.data(), sizeof points);
    ASSERT_EQ(writer->Advance(0, 1000), eKW_ACC_OK);
    KW_TraceInfo info;
    info.channel = eKW_ZEL_CHANNEL_C2;
    info.count = 1000;
    info.scale = 0.5;
    ASSERT_EQ(writer->Publish({}, {&info, 1}), eKW_ACC_OK);
    ASSERT_TRUE(reader->Wait(-1));
    const CKWRecord record = reader->GetLatest();
    const CKWRecord copy = record;
    std::array<KW_MinMax, 10> columns;
    ASSERT_EQ(copy.GetColumns(0, 0, 1000, columns), eKW_ACC_OK);
    EXPECT_EQ(columns[3].maximum, 0);
    EXPECT_EQ(columns[4].maximum, 20) << "the point between two columns belongs to both";
    EXPECT_EQ(columns[5].maximum, 20);
    EXPECT_EQ(copy.GetTrace(0).channel, eKW_ZEL_CHANNEL_C2);
    EXPECT_EQ(copy.GetSamples(0).size(), sizeof points);
}
