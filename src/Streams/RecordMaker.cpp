// SPDX-License-Identifier: MIT
#include "Streams/Pyramid.h"
#include "Streams/Traces.h"

#include <cstdlib>
#include <cstring>
#include <new>

using namespace NStreams;

namespace
{
/** A slot of its own, and behind it the record: one block. It was never of a stream, so it is
   closed from the beginning, and goes with its last holder. */
struct t_Single : t_Owner
{
    t_Single() : t_Owner(Go)
    {
        slot.owner = this;
        slot.word.store(kPublished | kClosed | 1U, std::memory_order_relaxed);
    }

    static void Go(t_Owner* owner)
    {
        auto* const single = static_cast<t_Single*>(owner);
        single->~t_Single();
        std::free(single);
    }

    t_Slot slot;
};
constexpr UINT64 kSingleBytes = sizeof(t_Single);
static_assert(kSingleBytes % 64 == 0, "the record behind it would not be aligned");

/** Whether a record was made so, nobody else holds it, and it has so many bytes. */
bool HasMemory(const CKWRecord& record, UINT64 bytes)
{
    const t_Slot* const slot = CKWRecord::t_Access::SlotOf(record);
    return slot != nullptr && slot->owner->go == t_Single::Go && HasOneHolder(record) &&
           slot->size >= bytes;
}

struct t_Layout
{
    explicit t_Layout(std::span<const KW_TraceInfo> traces)
    {
        for (const KW_TraceInfo& trace : traces)
        {
            places[count++] = {trace.format, trace.count};
        }
    }
    std::span<const KW_TraceLayout> All() const { return std::span(places).first(count); }

    std::array<KW_TraceLayout, eKW_RECORD_TRACES> places{};
    std::size_t count = 0;
};

KW_ACCEPTANCE CheckLayout(std::span<const KW_TraceInfo> traces)
{
    if (traces.size() > eKW_RECORD_TRACES)
    {
        return eKW_ACC_BAD_INDEX;
    }
    for (const KW_TraceInfo& trace : traces)
    {
        if (trace.format < 0 || trace.format >= eKW_SAMPLES_COUNT)
        {
            return eKW_ACC_UNKNOWN_VALUE;
        }
    }
    return eKW_ACC_OK;
}

KW_ACCEPTANCE MakeSingle(const KW_RecordInfo& info, std::span<const KW_TraceInfo> traces,
                         CKWRecord& made)
{
    const t_Layout layout(traces);
    const UINT64 bytes = kSingleBytes + BytesOfRecord(layout.All());
    if (bytes > eKW_RECORD_BYTES)
    {
        return eKW_ACC_ABOVE_MAXIMUM;
    }
    if (!HasMemory(made, bytes))
    {
        made = {}; // first: both together may be more than there is
        void* const block = std::aligned_alloc(alignof(t_Single), static_cast<std::size_t>(bytes));
        if (block == nullptr)
        {
            return eKW_ACC_OPERATION_FAILED;
        }
        made = CKWRecord::t_Access::Make((new (block) t_Single)->slot, 0);
        CKWRecord::t_Access::SlotOf(made)->size = static_cast<UINT32>(bytes);
    }
    t_Slot& slot = *CKWRecord::t_Access::SlotOf(made);
    slot.record =
        PlaceRecord(reinterpret_cast<std::byte*>(static_cast<t_Single*>(slot.owner)) + kSingleBytes,
                    layout.All());
    const KW_ACCEPTANCE code = CheckTraces(*slot.record, traces);
    if (KW_IsAccepted(code))
    {
        DescribeRecord(*slot.record, info, traces);
        slot.record->info.number = info.number;
    }
    return code;
}

t_Record* RecordOf(const CKWRecord& record)
{
    const t_Slot* const slot = CKWRecord::t_Access::SlotOf(record);
    return slot != nullptr ? slot->record : nullptr;
}
} // namespace

CKWRecordMaker::CKWRecordMaker(const KW_RecordInfo& info, std::span<const KW_TraceInfo> traces,
                               CKWRecord memory) noexcept
    : m_record(std::move(memory)), m_code(CheckLayout(traces))
{
    m_code = KW_IsAccepted(m_code) ? MakeSingle(info, traces, m_record) : m_code;
    if (!KW_IsAccepted(m_code))
    {
        m_record = {};
    }
}

std::span<std::byte> CKWRecordMaker::Reserve(UINT32 trace) noexcept
{
    t_Record* const record = RecordOf(m_record);
    return record != nullptr && trace < record->traceCount ? RoomOf(record->traces[trace])
                                                           : std::span<std::byte>{};
}

KW_ACCEPTANCE CKWRecordMaker::Advance(UINT32 trace, UINT32 points) noexcept
{
    t_Record* const record = RecordOf(m_record);
    if (record == nullptr || trace >= record->traceCount || record->traces[trace].room == 0)
    {
        return eKW_ACC_BAD_INDEX;
    }
    t_Trace& place = record->traces[trace];
    if (points > place.room - place.advanced)
    {
        return eKW_ACC_ABOVE_MAXIMUM;
    }
    AdvanceTrace(place, points);
    return eKW_ACC_OK;
}

CKWRecord CKWRecordMaker::Make() noexcept
{
    t_Record* const record = RecordOf(m_record);
    if (record == nullptr || ProgressOf(*record) < record->longest)
    {
        return {};
    }
    t_Slot& slot = *CKWRecord::t_Access::SlotOf(m_record);
    Share(slot);
    m_record = {};
    return CKWRecord::t_Access::Make(slot, record->longest);
}

CKWRecord KW_MakeRecord(const KW_RecordInfo& info, std::span<const KW_TraceInfo> traces,
                        std::span<const std::span<const std::byte>> samples,
                        KW_ACCEPTANCE* code) noexcept
{
    CKWRecordMaker maker(info, traces);
    KW_ACCEPTANCE answer = maker.GetCode();
    if (KW_IsAccepted(answer) && samples.size() != traces.size())
    {
        answer = eKW_ACC_BAD_INDEX;
    }
    for (UINT32 i = 0; i < samples.size() && KW_IsAccepted(answer); ++i)
    {
        const std::span<std::byte> room = maker.Reserve(i);
        if (room.size() != samples[i].size())
        {
            answer = eKW_ACC_BAD_INDEX;
        }
        else if (!room.empty())
        {
            std::memcpy(room.data(), samples[i].data(), room.size());
            maker.Advance(i, traces[i].count);
        }
    }
    if (code != nullptr)
    {
        *code = answer;
    }
    return KW_IsAccepted(answer) ? maker.Make() : CKWRecord{};
}
