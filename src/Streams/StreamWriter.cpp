// SPDX-License-Identifier: MIT
#include "Streams/StreamWriter.h"

#include "Streams/Pyramid.h"

#include <algorithm>
#include <cmath>

IKWStreamWriter::~IKWStreamWriter() = default;

namespace NStreams
{
namespace
{
/** Points of the longest trace to which all traces have got. */
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

bool HasNumbers(const KW_TraceInfo& info)
{
    return std::isfinite(info.interval) && info.interval > 0 && std::isfinite(info.start) &&
           std::isfinite(info.scale) && info.scale != 0 && std::isfinite(info.offset);
}
} // namespace

CStreamWriter::CStreamWriter(t_SharedPtr shared)
    : m_shared(std::move(shared)), m_pool(m_shared->pool)
{
}

CStreamWriter::~CStreamWriter()
{
    Discard();
    m_shared->hasWriter.store(false, std::memory_order_release);
}

KW_ACCEPTANCE CStreamWriter::Configure(std::span<const KW_TraceLayout> traces, UINT32 depth,
                                       UINT64 bytes)
{
    if (traces.empty() || traces.size() > eKW_STREAM_TRACES)
    {
        return eKW_ACC_BAD_INDEX;
    }
    for (const KW_TraceLayout& trace : traces)
    {
        if (trace.format < 0 || trace.format >= eKW_SAMPLES_COUNT)
        {
            return eKW_ACC_UNKNOWN_VALUE;
        }
    }
    if (depth == 0)
    {
        return eKW_ACC_BELOW_MINIMUM;
    }
    if (depth > eKW_STREAM_RECORDS || !m_pool.MayConfigure(traces, bytes))
    {
        return eKW_ACC_ABOVE_MAXIMUM;
    }
    if (!m_pool.IsConfigured(traces, depth, bytes))
    {
        Discard();
        m_pool.Configure(traces, depth, bytes);
    }
    return m_pool.HasRoomForAll() ? eKW_ACC_OK : eKW_ACC_WARNING;
}

void CStreamWriter::Drop()
{
    m_shared->dropped.store(GetDropped() + 1, std::memory_order_relaxed);
}

/** The number is given first: who finds no room leaves a gap. */
bool CStreamWriter::Begin()
{
    const UINT64 number = m_shared->numbers.load(std::memory_order_relaxed) + 1;
    m_shared->numbers.store(number, std::memory_order_relaxed);
    m_slot = m_pool.Take();
    m_isDropped = m_slot == nullptr;
    if (m_isDropped)
    {
        Drop();
        m_refused = 0;
        return false;
    }
    t_Record& record = *m_slot->record;
    record.info.number = number;
    for (UINT32 i = 0; i < record.placeCount; ++i)
    {
        record.traces[i].advanced = 0;
    }
    return true;
}

std::span<std::byte> CStreamWriter::Reserve(UINT32 trace)
{
    if (m_pool.RoomOf(trace) == 0)
    {
        return {};
    }
    const UINT32 bit = 1U << trace;
    if (m_slot == nullptr && (!m_isDropped || (m_refused & bit) != 0))
    {
        Begin();
    }
    if (m_slot == nullptr)
    {
        m_refused |= bit;
        return {};
    }
    const t_Trace& place = m_slot->record->traces[trace];
    const UINT32 size = KW_GetPointSize(place.format);
    return {place.samples + std::size_t{place.advanced} * size,
            std::size_t{place.room - place.advanced} * size};
}

KW_ACCEPTANCE CStreamWriter::Advance(UINT32 trace, UINT32 points)
{
    if (m_slot == nullptr)
    {
        return eKW_ACC_NOTHING_TO_ACT_ON;
    }
    if (m_pool.RoomOf(trace) == 0)
    {
        return eKW_ACC_BAD_INDEX;
    }
    t_Trace& place = m_slot->record->traces[trace];
    if (points > place.room - place.advanced)
    {
        return eKW_ACC_ABOVE_MAXIMUM;
    }
    AdvanceTrace(place, points);
    return eKW_ACC_OK;
}

KW_ACCEPTANCE CStreamWriter::Check(std::span<const KW_TraceInfo> traces) const
{
    const t_Record& record = *m_slot->record;
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

void CStreamWriter::Describe(const KW_RecordInfo& info, std::span<const KW_TraceInfo> traces)
{
    t_Record& record = *m_slot->record;
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

void CStreamWriter::AddFlags(std::span<const KW_TraceInfo> traces)
{
    for (std::size_t i = 0; i < std::min<std::size_t>(traces.size(), eKW_STREAM_TRACES); ++i)
    {
        m_slot->record->traces[i].flags.fetch_or(traces[i].flags, std::memory_order_relaxed);
    }
}

KW_ACCEPTANCE CStreamWriter::Publish(const KW_RecordInfo& info,
                                     std::span<const KW_TraceInfo> traces, bool keep)
{
    if (m_slot == nullptr)
    {
        m_isDropped = false;
        return eKW_ACC_NOTHING_TO_ACT_ON;
    }
    if (m_isShown)
    {
        AddFlags(traces);
    }
    else if (const KW_ACCEPTANCE code = Check(traces); code != eKW_ACC_OK)
    {
        return code;
    }
    else
    {
        Describe(info, traces);
    }
    const t_Record& record = *m_slot->record;
    const UINT32 progress = ProgressOf(record);
    m_slot->progress.store(progress, std::memory_order_release);
    if (!m_isShown)
    {
        m_pool.Show(*m_slot);
    }
    m_isShown = keep;
    if (keep)
    {
        return eKW_ACC_OK;
    }
    m_slot = nullptr;
    return progress == record.longest ? eKW_ACC_OK : eKW_ACC_WARNING;
}

void CStreamWriter::Discard()
{
    if (m_slot != nullptr && !m_isShown)
    {
        Drop();
        m_pool.GiveBack(*m_slot);
    }
    m_slot = nullptr;
    m_isShown = false;
    m_isDropped = false;
}

void CStreamWriter::Wake()
{
    m_pool.TouchHead();
    m_shared->waiters.Wake();
}

UINT64 CStreamWriter::GetDropped() const
{
    return m_shared->dropped.load(std::memory_order_relaxed);
}

UINT64 CStreamWriter::GetLost() const
{
    return m_pool.Lost();
}
} // namespace NStreams
