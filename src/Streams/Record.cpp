// SPDX-License-Identifier: MIT
#include "Streams/Columns.h"
#include "Streams/Slots.h"

#include <cmath>

using NStreams::t_Record;
using NStreams::t_Slot;
using NStreams::t_Trace;

namespace
{
/** Where a stretch may begin and end: positions have room for a fraction there. */
constexpr double kFarthest = 1e15;

t_Slot& SlotOf(void* slot)
{
    return *static_cast<t_Slot*>(slot);
}

KW_ACCEPTANCE CheckStretch(double first, double count)
{
    const bool isOne = std::abs(first) <= kFarthest && count > 0 && count <= kFarthest;
    return isOne ? eKW_ACC_OK : eKW_ACC_NOT_A_NUMBER; // NaN compares false
}
} // namespace

CKWRecord::CKWRecord(const CKWRecord& other) noexcept
    : m_slot(other.m_slot), m_progress(other.m_progress)
{
    if (m_slot != nullptr)
    {
        NStreams::Share(SlotOf(m_slot));
    }
}

void CKWRecord::Release() noexcept
{
    NStreams::LetGo(SlotOf(m_slot));
}

KW_RecordInfo CKWRecord::GetInfo() const noexcept
{
    return m_slot != nullptr ? SlotOf(m_slot).record->info : KW_RecordInfo{};
}

UINT32 CKWRecord::GetTraceCount() const noexcept
{
    return m_slot != nullptr ? SlotOf(m_slot).record->traceCount : 0;
}

KW_TraceInfo CKWRecord::GetTrace(UINT32 trace) const noexcept
{
    if (trace >= GetTraceCount())
    {
        return {};
    }
    const t_Record& record = *SlotOf(m_slot).record;
    KW_TraceInfo info = record.traces[trace].info;
    info.count = record.CountOf(trace, m_progress);
    info.flags = record.traces[trace].flags.load(std::memory_order_relaxed);
    return info;
}

std::span<const std::byte> CKWRecord::GetSamples(UINT32 trace) const noexcept
{
    if (trace >= GetTraceCount())
    {
        return {};
    }
    const t_Record& record = *SlotOf(m_slot).record;
    const t_Trace& place = record.traces[trace];
    return {place.samples,
            std::size_t{record.CountOf(trace, m_progress)} * KW_GetPointSize(place.format)};
}

KW_ACCEPTANCE CKWRecord::GetColumns(UINT32 trace, double first, double count,
                                    std::span<KW_MinMax> columns,
                                    KW_ZEL_INTERPOLATION_MODE interpolation) const noexcept
{
    const KW_TraceInfo info = GetTrace(trace);
    if (trace >= GetTraceCount() || SlotOf(m_slot).record->traces[trace].info.count == 0)
    {
        return eKW_ACC_BAD_INDEX;
    }
    if (!KW_IsCurve(info.format))
    {
        return eKW_ACC_WRONG_KIND;
    }
    if (interpolation < eKW_ZEL_INTERPOLATION_MODE_SINX ||
        interpolation > eKW_ZEL_INTERPOLATION_MODE_SAMPLE_HOLD)
    {
        return eKW_ACC_UNKNOWN_VALUE;
    }
    const KW_ACCEPTANCE code = CheckStretch(first, count);
    if (KW_IsAccepted(code))
    {
        NStreams::FindColumns({SlotOf(m_slot).record->traces[trace], info.count, first, count},
                              columns, interpolation);
    }
    return code;
}

KW_ACCEPTANCE CKWRecord::GetLines(UINT32 trace, double first, double count,
                                  std::span<KW_LineStates> columns) const noexcept
{
    const KW_TraceInfo info = GetTrace(trace);
    if (trace >= GetTraceCount() || SlotOf(m_slot).record->traces[trace].info.count == 0)
    {
        return eKW_ACC_BAD_INDEX;
    }
    if (info.format != eKW_SAMPLES_LINES)
    {
        return eKW_ACC_WRONG_KIND;
    }
    const KW_ACCEPTANCE code = CheckStretch(first, count);
    if (KW_IsAccepted(code))
    {
        NStreams::FindLines({SlotOf(m_slot).record->traces[trace], info.count, first, count},
                            columns);
    }
    return code;
}
