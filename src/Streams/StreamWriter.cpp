// SPDX-License-Identifier: MIT
#include "Streams/StreamWriter.h"

#include "Streams/Pyramid.h"
#include "Streams/Traces.h"

#include <algorithm>

IKWStreamWriter::~IKWStreamWriter() = default;

namespace NStreams
{
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
    return RoomOf(m_slot->record->traces[trace]);
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

KW_ACCEPTANCE CStreamWriter::Describe(const KW_RecordInfo& info,
                                      std::span<const KW_TraceInfo> traces)
{
    const KW_ACCEPTANCE code = CheckTraces(*m_slot->record, traces);
    if (KW_IsAccepted(code))
    {
        DescribeRecord(*m_slot->record, info, traces);
    }
    return code;
}

CKWRecord CStreamWriter::GetDraft(const KW_RecordInfo& info, std::span<const KW_TraceInfo> traces)
{
    if (m_slot == nullptr || (!m_isShown && !KW_IsAccepted(Describe(info, traces))))
    {
        return {};
    }
    Share(*m_slot);
    return CKWRecord::t_Access::Make(*m_slot, ProgressOf(*m_slot->record));
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
    else if (const KW_ACCEPTANCE code = Describe(info, traces); !KW_IsAccepted(code))
    {
        return code;
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

void CStreamWriter::Clear()
{
    m_pool.Clear(m_isShown);
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
