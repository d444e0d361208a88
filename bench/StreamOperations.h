// SPDX-License-Identifier: MIT
#pragma once

#include "IKWFunctionZEL.h"
#include "Streams/Acquisition.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstring>
#include <random>
#include <vector>

// Operations on streams; Operations.h says what they are for.

inline std::vector<INT16> Noise(std::size_t count)
{
    std::mt19937 random(1);
    std::vector<INT16> points(count);
    for (INT16& point : points)
    {
        point = static_cast<INT16>(random() % 60000 - 30000);
    }
    return points;
}

/** A stream of records with one trace. */
class CBenchStream
{
public:
    CBenchStream(UINT32 points, UINT32 depth)
        : m_info{.channel = eKW_ZEL_CHANNEL_C1, .count = points}
    {
        const KW_TraceLayout layout{eKW_SAMPLES_INT16, points};
        m_writer->Configure({&layout, 1}, depth, eKW_STREAM_BYTES);
    }

    /** Filled in pieces that stay in the cache until they are advanced. */
    void Write(const std::vector<INT16>& points)
    {
        constexpr std::size_t kPiece = 8192;
        for (std::size_t done = 0; done < points.size(); done += kPiece)
        {
            const std::size_t piece = std::min(kPiece, points.size() - done);
            std::memcpy(m_writer->Reserve(0).data(), &points[done], piece * sizeof(INT16));
            m_writer->Advance(0, static_cast<UINT32>(piece));
        }
    }
    void Publish() { m_writer->Publish({}, {&m_info, 1}); }

    IKWStreamWriter& Writer() { return *m_writer; }
    std::unique_ptr<IKWStreamReader> Reader() { return m_stream->MakeReader(); }

private:
    KW_TraceInfo m_info;
    std::shared_ptr<IKWStream> m_stream = KW_MakeStream(16U << 20U);
    std::unique_ptr<IKWStreamWriter> m_writer = m_stream->MakeWriter();
};

/** A record whose points stand already. */
class COpPublish
{
public:
    bool operator()()
    {
        benchmark::DoNotOptimize(m_stream.Writer().Reserve(0).data());
        m_stream.Publish();
        return true;
    }

private:
    CBenchStream m_stream{200, 100};
};

class COpPublishPoints
{
public:
    bool operator()()
    {
        m_stream.Write(m_points);
        m_stream.Publish();
        return true;
    }

private:
    CBenchStream m_stream{200, 100};
    const std::vector<INT16> m_points = Noise(200);
};

/** A reader of a stream that has one record. */
class COpReading
{
public:
    explicit COpReading(UINT32 points = 200) : m_stream(points, 2)
    {
        m_stream.Write(Noise(points));
        m_stream.Publish();
        m_record = m_reader->GetLatest();
    }

protected:
    CBenchStream m_stream;
    const std::unique_ptr<IKWStreamReader> m_reader = m_stream.Reader();
    CKWRecord m_record;
};

class COpGetLatest : COpReading
{
public:
    bool operator()() { return static_cast<bool>(m_reader->GetLatest()); }
};

class COpHasNew : COpReading
{
public:
    bool operator()() { return m_reader->HasNew(); }
};

class COpColumns : COpReading
{
public:
    static constexpr UINT32 kPoints = 1000000;

    COpColumns() : COpReading(kPoints) {}
    bool operator()()
    {
        m_record.GetColumns(0, 0, kPoints, m_columns);
        benchmark::DoNotOptimize(m_columns.data());
        return true;
    }

private:
    std::vector<KW_MinMax> m_columns = std::vector<KW_MinMax>(1250);
};

/** What the thread that acquires does before each record, while the settings stand. */
class COpArm
{
public:
    COpArm() { m_acquisition->Arm(); }
    KW_ACCEPTANCE operator()() { return m_acquisition->Arm(); }

private:
    const std::shared_ptr<IKWAcquisition> m_acquisition =
        KW_MakeAcquisition(GetZELRoot(), 16U << 20U);
};
