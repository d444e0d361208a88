// SPDX-License-Identifier: MIT
// Records as files: every format comes back bit for bit, and nothing that is damaged, cut off or of
// another kind comes back at all.
#include "Streams/RecordFile.h"

#include "Streams/RecordBytes.h"
#include "Streams/Stream.h"

#include <QCryptographicHash>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace
{
std::vector<std::byte> RandomBytes(std::mt19937& random, std::size_t size)
{
    std::vector<std::byte> bytes(size);
    for (std::byte& byte : bytes)
    {
        byte = static_cast<std::byte>(random());
    }
    return bytes;
}

/** A record with a trace of each format, one place without, and whatever bits as samples. */
CKWRecord MakeRandom(UINT32 seed, UINT32 points)
{
    std::mt19937 random(seed);
    std::array<KW_TraceInfo, 6> traces;
    std::vector<std::vector<std::byte>> samples;
    std::vector<std::span<const std::byte>> spans;
    for (UINT32 i = 0; i < traces.size(); ++i)
    {
        traces[i].channel = static_cast<KW_ZEL_CHANNEL>(i);
        traces[i].format = static_cast<KW_SAMPLE_FORMAT>(i % eKW_SAMPLES_COUNT);
        traces[i].unit = i == 2 ? eKW_UNIT_COUNT_TICKS : eKW_UNIT_LEVEL_A;
        traces[i].flags = i;
        traces[i].count = i == 5 ? 0 : points + i;
        traces[i].settlingPoints = i;
        traces[i].interval = i == 5 ? std::numeric_limits<double>::quiet_NaN() : 1e-9 * (i + 1);
        traces[i].start = -1e-3 / (i + 1);
        traces[i].scale = -0.1;
        traces[i].offset = 1e300;
        samples.push_back(RandomBytes(random, traces[i].count * KW_GetPointSize(traces[i].format)));
    }
    for (const auto& bytes : samples)
    {
        spans.emplace_back(bytes);
    }
    const KW_RecordInfo info{0xFEDCBA9876543210U, -1, std::numeric_limits<INT64>::min(),
                             eKW_MASK_FAILED, 77};
    return KW_MakeRecord(info, traces, spans);
}

QByteArray BytesOf(const CKWRecord& record)
{
    QByteArray bytes;
    KW_RecordReport report;
    EXPECT_EQ(KW_WriteRecordBytes(record, bytes, report), eKW_ACC_OK) << report.text.toStdString();
    return bytes;
}

/** As somebody writes it who counts on what stands elsewhere: size and digest fit. */
QByteArray Sealed(QByteArray bytes)
{
    NRecordBytes::PutLittle(bytes.data() + 24, static_cast<UINT64>(bytes.size()));
    bytes.chop(32);
    return bytes + QCryptographicHash::hash(bytes, QCryptographicHash::Sha256);
}

/** Bytes that are refused, with the place, and leave the record alone. */
KW_RecordReport Refusal(const QByteArray& bytes)
{
    static const CKWRecord kBefore = MakeRandom(7, 3);
    CKWRecord record = kBefore;
    KW_RecordReport report;
    EXPECT_EQ(KW_ReadRecordBytes(bytes, record, report), eKW_ACC_FILE_NOT_UNDERSTOOD);
    EXPECT_EQ(record.GetSamples(0).data(), kBefore.GetSamples(0).data());
    EXPECT_TRUE(report.hasPlace);
    EXPECT_FALSE(report.text.isEmpty());
    return report;
}

struct t_Wrong
{
    const char* name;
    int place;
    UINT64 value;
    int size;
    UINT64 reported; ///< place in the report
};

UINT64 BitsOf(double value)
{
    return std::bit_cast<UINT64>(value);
}

const t_Wrong kWrong[] = {
    {"NewerMajor", 8, 2, 2, 8},
    {"NoTrace", 16, 0, 4, 16},
    {"TooManyTraces", 16, 17, 4, 16},
    {"ShortHead", 12, 71, 4, 12},
    {"HeadBeyondTheFile", 12, 0xFFFFFFC0U, 4, 12},
    {"ShortEntries", 20, 32, 4, 12},
    {"EntriesBeyondTheFile", 20, 0x40000000U, 4, 12},
    {"MaskResult", 56, 3, 4, 56},
    {"Channel", 72, 1000, 4, 72},
    {"NegativeChannel", 72, 0xFFFFFFFFU, 4, 72},
    {"Format", 76, 5, 4, 76},
    {"Unit", 80, 0x7FFFFFFFU, 4, 80},
    {"CountBeyondTheFile", 88, 0x80000000U, 4, 128},
    {"IntervalZero", 96, 0, 8, 96},
    {"IntervalNotANumber", 96, BitsOf(NAN), 8, 96},
    {"StartInfinite", 104, BitsOf(INFINITY), 8, 104},
    {"ScaleZero", 112, BitsOf(-0.0), 8, 112},
    {"OffsetNotANumber", 120, BitsOf(NAN), 8, 120},
    {"SamplesInTheTable", 128, 64, 8, 128},
    {"SamplesBeyondTheFile", 128, 0xFFFFFFFFFFFFFFC0U, 8, 128},
    {"SamplesOfTwoTracesOverlap", 136 + 56, 512, 8, 136 + 56},
};
} // namespace

TEST(RecordFile, EveryFormatComesBackBitForBit)
{
    for (const UINT32 points : {1U, 63U, 64U, 1000U, 100000U})
    {
        const CKWRecord record = MakeRandom(points, points);
        const QByteArray bytes = BytesOf(record);
        CKWRecord read;
        KW_RecordReport report;
        ASSERT_EQ(KW_ReadRecordBytes(bytes, read, report), eKW_ACC_OK) << report.text.toStdString();
        EXPECT_EQ(BytesOf(read), bytes);
        EXPECT_EQ(read.GetInfo().number, 0xFEDCBA9876543210U);
        EXPECT_EQ(read.GetInfo().triggerTime, -1);
        EXPECT_EQ(read.GetInfo().settingsCounter, std::numeric_limits<INT64>::min());
        EXPECT_EQ(read.GetInfo().maskResult, eKW_MASK_FAILED);
        EXPECT_EQ(read.GetInfo().source, 77U);
        ASSERT_EQ(read.GetTraceCount(), record.GetTraceCount());
        for (UINT32 i = 0; i < 5; ++i)
        {
            const KW_TraceInfo trace = read.GetTrace(i);
            const auto samples = read.GetSamples(i);
            const auto expected = record.GetSamples(i);
            EXPECT_TRUE(
                std::equal(samples.begin(), samples.end(), expected.begin(), expected.end()));
            EXPECT_EQ(trace.channel, static_cast<KW_ZEL_CHANNEL>(i));
            EXPECT_EQ(trace.format, static_cast<KW_SAMPLE_FORMAT>(i));
            EXPECT_EQ(trace.unit, i == 2 ? eKW_UNIT_COUNT_TICKS : eKW_UNIT_LEVEL_A);
            EXPECT_EQ(trace.flags, i);
            EXPECT_EQ(trace.settlingPoints, i);
            EXPECT_EQ(trace.interval, 1e-9 * (i + 1));
            EXPECT_EQ(trace.start, -1e-3 / (i + 1));
            EXPECT_EQ(trace.scale, -0.1);
            EXPECT_EQ(trace.offset, 1e300);
        }
    }
}

TEST(RecordFile, BytesAreThoseThatTheDocumentDescribes)
{
    const std::array<INT16, 2> points = {1, -2};
    KW_TraceInfo trace;
    trace.channel = eKW_ZEL_CHANNEL_C2;
    trace.unit = eKW_UNIT_LEVEL_V;
    trace.count = 2;
    const std::span<const std::byte> samples = std::as_bytes(std::span(points));
    const QByteArray bytes =
        BytesOf(KW_MakeRecord({3, 4, 5, eKW_MASK_PASSED, 6}, {&trace, 1}, {&samples, 1}));
    QByteArray expected = QByteArray::fromHex("894b575245430d0a"
                                              "0100"
                                              "0000"
                                              "48000000"
                                              "01000000"
                                              "40000000"
                                              "e400000000000000"
                                              "0300000000000000"
                                              "0400000000000000"
                                              "0500000000000000"
                                              "01000000"
                                              "00000000"
                                              "0600000000000000"
                                              "01000000"
                                              "00000000"
                                              "1c000000"
                                              "00000000"
                                              "02000000"
                                              "00000000"
                                              "000000000000f03f"
                                              "0000000000000000"
                                              "000000000000f03f"
                                              "0000000000000000"
                                              "c000000000000000");
    expected += QByteArray(192 - expected.size(), '\0') + QByteArray::fromHex("0100feff");
    EXPECT_EQ(bytes.left(bytes.size() - 32).toHex(), expected.toHex());
    EXPECT_EQ(bytes.right(32), QCryptographicHash::hash(expected, QCryptographicHash::Sha256));
}

TEST(RecordFile, CutOffAnywhereOrWithAnyBitTurnedIsRefused)
{
    const QByteArray bytes = BytesOf(MakeRandom(1, 5));
    for (int i = 0; i < bytes.size(); ++i)
    {
        Refusal(bytes.left(i));
        for (int bit = 0; bit < 8; ++bit)
        {
            QByteArray spoilt = bytes;
            spoilt.data()[i] = static_cast<char>(bytes.at(i) ^ (1 << bit));
            Refusal(spoilt);
        }
    }
    EXPECT_EQ(Refusal(bytes + 'x').place, static_cast<UINT64>(bytes.size()));
}

class WrongRecordFile : public testing::TestWithParam<t_Wrong>
{
};

TEST_P(WrongRecordFile, WhoseDigestFitsIsRefusedWhereItIsWrong)
{
    QByteArray bytes = BytesOf(MakeRandom(1, 5));
    for (int i = 0; i < GetParam().size; ++i)
    {
        bytes.data()[GetParam().place + i] = static_cast<char>(GetParam().value >> (8 * i));
    }
    EXPECT_EQ(Refusal(Sealed(bytes)).place, GetParam().reported);
}

INSTANTIATE_TEST_SUITE_P(Fields, WrongRecordFile, testing::ValuesIn(kWrong),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(RecordFile, NewerMinorVersionWithLongerHeadAndEntriesIsRead)
{
    QByteArray bytes = BytesOf(MakeRandom(1, 5));
    bytes.data()[10] = 1;
    bytes.data()[12] = 80;
    bytes.data()[20] = 80;
    for (int i = 5; i >= 0; --i)
    {
        bytes.insert(136 + 64 * i, QByteArray(16, 'e'));
    }
    bytes.insert(72, QByteArray(8, 'h'));
    for (int i = 0; i < 6; ++i)
    {
        char* const place = bytes.data() + 80 + 80 * i + 56;
        NRecordBytes::PutLittle(place, NRecordBytes::GetLittle<UINT64>(place) + 104);
    }
    CKWRecord read;
    KW_RecordReport report;
    ASSERT_EQ(KW_ReadRecordBytes(Sealed(bytes), read, report), eKW_ACC_OK)
        << report.text.toStdString();
    EXPECT_EQ(BytesOf(read), BytesOf(MakeRandom(1, 5)));
}

TEST(RecordFile, StandsOnTheDiskWholeOrNotAtAll)
{
    const QTemporaryDir folder;
    const QString name = folder.filePath(QStringLiteral("capture.rec"));
    const CKWRecord record = MakeRandom(2, 100);
    KW_RecordReport report;
    ASSERT_EQ(KW_WriteRecordFile(name, record, report), eKW_ACC_OK);
    EXPECT_EQ(KW_WriteRecordFile(name, {}, report), eKW_ACC_NOTHING_TO_ACT_ON);
    CKWRecord read;
    ASSERT_EQ(KW_ReadRecordFile(name, read, report), eKW_ACC_OK) << report.text.toStdString();
    EXPECT_EQ(BytesOf(read), BytesOf(record)) << "a refused writing spoilt the older file";
    const QString inside = name + QStringLiteral("/x.rec");
    EXPECT_EQ(KW_WriteRecordFile(inside, record, report), eKW_ACC_FILE_NOT_WRITABLE);
    EXPECT_EQ(KW_ReadRecordFile(inside, read, report), eKW_ACC_FILE_NOT_READABLE);
    EXPECT_EQ(KW_ReadRecordFile(folder.path(), read, report), eKW_ACC_FILE_NOT_READABLE);
    EXPECT_FALSE(report.hasPlace);
    EXPECT_EQ(KW_FormatRecordReport(QStringLiteral("f"), {true, 24, QStringLiteral("bad")}),
              QStringLiteral("f: byte 24: bad"));
}

TEST(RecordFile, GrowingRecordIsWrittenAsItsValueShowsIt)
{
    const auto stream = KW_MakeStream(1U << 20U);
    const auto writer = stream->MakeWriter();
    const auto reader = stream->MakeReader();
    const KW_TraceLayout layout{eKW_SAMPLES_LINES, 100};
    ASSERT_EQ(writer->Configure({&layout, 1}, 2, 1U << 20U), eKW_ACC_OK);
    KW_TraceInfo trace;
    trace.format = eKW_SAMPLES_LINES;
    trace.count = 100;
    trace.settlingPoints = 50;
    writer->Reserve(0);
    writer->Advance(0, 10);
    ASSERT_EQ(writer->Publish({}, {&trace, 1}, true), eKW_ACC_OK);
    const QByteArray bytes = BytesOf(reader->GetLatest());
    CKWRecord read;
    KW_RecordReport report;
    ASSERT_EQ(KW_ReadRecordBytes(bytes, read, report), eKW_ACC_OK) << report.text.toStdString();
    EXPECT_EQ(read.GetTrace(0).count, 10U);
}

TEST(RecordFile, MachineOfTheOtherOrderOfBytesTurnsEachNumberRound)
{
    const auto swapped = [](const QByteArray& hex, KW_SAMPLE_FORMAT format)
    {
        const QByteArray bytes = QByteArray::fromHex(hex);
        QByteArray turned(bytes.size(), '\0');
        NRecordBytes::SwapSamples(bytes.constData(), turned.data(),
                                  static_cast<std::size_t>(bytes.size()), format);
        return turned.toHex();
    };
    EXPECT_EQ(swapped("01020304", eKW_SAMPLES_INT16), "02010403");
    EXPECT_EQ(swapped("01020304", eKW_SAMPLES_MINMAX), "02010403");
    EXPECT_EQ(swapped("0102030405060708", eKW_SAMPLES_FLOAT), "0403020108070605");
    EXPECT_EQ(swapped("010203", eKW_SAMPLES_LINES), "010203");
    const QByteArray payload(2 * 68, '7'); // the four bytes before it stay, too
    const QByteArray frame = "01020304050607081112131415161718212223243132333441424344" + payload;
    const QByteArray turned = "08070605040302011817161514131211242322213433323144434241" + payload;
    EXPECT_EQ(swapped(frame + frame, eKW_SAMPLES_FRAMES), turned + turned);
}
