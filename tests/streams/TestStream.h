// SPDX-License-Identifier: MIT
#pragma once

#include "Streams/Stream.h"

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

/** A stream with its writer, and short ways to fill it. */
class CTestStream
{
public:
    explicit CTestStream(UINT64 bytes = 1U << 20U) : m_stream(KW_MakeStream(bytes)) {}

    IKWStreamWriter& Writer() { return *m_writer; }
    std::unique_ptr<IKWStreamReader> Reader() { return m_stream->MakeReader(); }
    KW_ACCEPTANCE Configure(std::vector<KW_TraceLayout> layout, UINT32 depth,
                            UINT64 bytes = eKW_STREAM_BYTES)
    {
        return m_writer->Configure(layout, depth, bytes);
    }
    void End()
    {
        m_writer = nullptr;
        m_stream = nullptr;
    }

    /** Publishes a record with one trace of 16-bit points. False when it was dropped. */
    bool Publish(const std::vector<INT16>& points, const KW_RecordInfo& info = {})
    {
        const KW_TraceInfo trace = Info(eKW_SAMPLES_INT16, points.size());
        return Fill(0, points) && m_writer->Publish(info, {&trace, 1}) == eKW_ACC_OK;
    }

    /** Writes points of a trace; false when the record is dropped. */
    template <class T>
    bool Fill(UINT32 trace, const std::vector<T>& entries, UINT32 points)
    {
        const auto room = m_writer->Reserve(trace);
        if (room.empty())
        {
            return false;
        }
        EXPECT_GE(room.size(), entries.size() * sizeof(T));
        std::memcpy(room.data(), entries.data(), entries.size() * sizeof(T));
        return m_writer->Advance(trace, points) == eKW_ACC_OK;
    }
    template <class T>
    bool Fill(UINT32 trace, const std::vector<T>& points)
    {
        return Fill(trace, points, static_cast<UINT32>(points.size()));
    }

    static KW_TraceInfo Info(KW_SAMPLE_FORMAT format, std::size_t count)
    {
        KW_TraceInfo info;
        info.channel = eKW_ZEL_CHANNEL_C1;
        info.format = format;
        info.count = static_cast<UINT32>(count);
        return info;
    }

private:
    std::shared_ptr<IKWStream> m_stream;
    std::unique_ptr<IKWStreamWriter> m_writer = m_stream->MakeWriter();
};

/** The 16-bit points of a trace. */
inline std::vector<INT16> PointsOf(const CKWRecord& record, UINT32 trace = 0)
{
    const auto bytes = record.GetSamples(trace);
    std::vector<INT16> points(bytes.size() / sizeof(INT16));
    if (!bytes.empty())
    {
        std::memcpy(points.data(), bytes.data(), bytes.size());
    }
    return points;
}
