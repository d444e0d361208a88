// SPDX-License-Identifier: MIT
#include "Streams/Traces.h"

#include "Streams/Pyramid.h"

#include <cmath>
#include <new>

namespace NStreams
{
namespace
{
bool HasNumbers(const KW_TraceInfo& info)
{
    return std::isfinite(info.interval) && info.interval > 0 && std::isfinite(info.start) &&
           std::isfinite(info.scale) && info.scale != 0 && std::isfinite(info.offset);
}
} // namespace

UINT64 BytesOfRecord(std::span<const KW_TraceLayout> layout)
{
    UINT64 bytes = kHeadBytes;
    for (const KW_TraceLayout& trace : layout)
    {
        bytes += BytesOfTrace(trace.format, trace.points);
    }
    return bytes;
}

t_Record* PlaceRecord(std::byte* begin, std::span<const KW_TraceLayout> layout)
{
    auto* const record = new (begin) t_Record;
    record->placeCount = static_cast<UINT32>(layout.size());
    std::byte* samples = begin + kHeadBytes;
    for (std::size_t i = 0; i < layout.size(); ++i)
    {
        t_Trace& trace = record->traces[i];
        trace.format = layout[i].format;
        trace.room = layout[i].points;
        trace.samples = samples;
        samples += BytesOfTrace(trace.format, trace.room);
    }
    return record;
}

KW_ACCEPTANCE CheckTraces(const t_Record& record, std::span<const KW_TraceInfo> traces)
{
    if (traces.size() > record.placeCount)
    {
        return eKW_ACC_BAD_INDEX;
    }
    for (std::size_t i = 0; i < traces.size(); ++i)
    {
        if (traces[i].count == 0)
        {
            continue;
        }
        if (traces[i].format != record.traces[i].format)
        {
            return eKW_ACC_WRONG_KIND;
        }
        if (traces[i].count > record.traces[i].room)
        {
            return eKW_ACC_ABOVE_MAXIMUM;
        }
        if (!HasNumbers(traces[i]))
        {
            return eKW_ACC_NOT_A_NUMBER;
        }
    }
    return eKW_ACC_OK;
}

void DescribeRecord(t_Record& record, const KW_RecordInfo& info,
                    std::span<const KW_TraceInfo> traces)
{
    const UINT64 number = record.info.number;
    record.info = info;
    record.info.number = number;
    record.traceCount = static_cast<UINT32>(traces.size());
    record.longest = 0;
    for (std::size_t i = 0; i < traces.size(); ++i)
    {
        record.traces[i].info = traces[i];
        record.traces[i].flags.store(traces[i].flags, std::memory_order_relaxed);
        record.longest = std::max(record.longest, traces[i].count);
    }
}

UINT32 ProgressOf(const t_Record& record)
{
    UINT32 progress = record.longest;
    for (UINT32 i = 0; i < record.traceCount; ++i)
    {
        const t_Trace& trace = record.traces[i];
        if (trace.advanced < trace.info.count)
        {
            const UINT64 share = UINT64{trace.advanced} * record.longest / trace.info.count;
            progress = std::min(progress, static_cast<UINT32>(share));
        }
    }
    return progress;
}

std::span<std::byte> RoomOf(const t_Trace& trace)
{
    const std::size_t size = KW_GetPointSize(trace.format);
    return {trace.samples + trace.advanced * size, (trace.room - trace.advanced) * size};
}
} // namespace NStreams
