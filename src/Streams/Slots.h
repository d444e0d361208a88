// SPDX-License-Identifier: MIT
#pragma once

#include "Streams/Stream.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <memory>

/** Memory that records stand in, and the words by which writer, readers and holders share it. */
namespace NStreams
{
struct t_Owner;

/** A place for a trace in a record. Set when the record's room is cut, but for `info`, which is
    the writer's until the record is published. */
struct t_Trace
{
    KW_TraceInfo info;
    std::atomic<UINT32> flags{0}; ///< those of `info`, and what a growing record adds
    KW_SAMPLE_FORMAT format = eKW_SAMPLES_INT16;
    UINT32 room = 0;              ///< points
    UINT32 advanced = 0;          ///< points that are final, of the writer's own
    std::byte* samples = nullptr; ///< `room` points, and behind them the levels of the pyramid
};

/** What stands in front of the samples of a record. */
struct t_Record
{
    KW_RecordInfo info;
    UINT32 placeCount = 0; ///< traces that there is room for
    UINT32 traceCount = 0; ///< of the published record
    UINT32 longest = 0;    ///< points of the longest trace of the whole record
    std::array<t_Trace, eKW_STREAM_TRACES> traces;

    /** Points of a trace in a view that has `progress` points of the longest. */
    UINT32 CountOf(UINT32 trace, UINT32 progress) const
    {
        const UINT32 count = trace < traceCount ? traces[trace].info.count : 0;
        return count == longest
                   ? std::min(progress, count) // a draft may have been longer than its record
                   : static_cast<UINT32>(UINT64{std::min(progress, longest)} * count / longest);
    }
};

constexpr UINT32 kPublished = 0x80000000U; ///< readers may take it, the writer may not write
constexpr UINT32 kClosed = 0x40000000U;    ///< the stream is gone; the last holder cleans up
constexpr UINT32 kHolders = 0x3FFFFFFFU;   ///< how many hold it

/**
 * A record's place. Who wants it counts itself up first (acquire), and looks then whether it is
 * published and still the record it came for; if not, it counts itself down again. The writer takes
 * it back only from the word kPublished alone (acquire): then nobody reads it, and nobody who comes
 * from now on will. Counting down releases, so that what holders read stands before what the
 * writer writes. Each is a read-modify-write of the one word, so that no fence is needed.
 */
struct alignas(64) t_Slot
{
    std::atomic<UINT32> word{0};
    std::atomic<bool> isFetched{false}; ///< since it was published
    std::atomic<UINT32> progress{0};    ///< points of the longest trace that are shown
    UINT64 sequence = 0;                ///< which publication; changes only while unpublished
    t_Owner* owner = nullptr;
    t_Record* record = nullptr; ///< null: a place without room
    UINT32 size = 0;            ///< bytes of its room, `record` included
    UINT32 cut = 0;             ///< which configuration it was cut for
};

/** The memory that slots stand in. Goes with the last who uses it. */
struct t_Owner
{
    explicit t_Owner(void (*goes)(t_Owner*)) : go(goes) {}

    void (*const go)(t_Owner*);
    std::atomic<UINT32> users{1};
};

/** Records of the history, and some that are being filled or held beyond it. */
constexpr UINT32 kSpareSlots = 8;
constexpr UINT32 kSlotCount = eKW_STREAM_RECORDS + kSpareSlots;

/** One block for samples, and the places in it. Used by the stream, and once it is gone by each
   slot that is held. */
struct t_Memory : t_Owner
{
    explicit t_Memory(UINT32 bytes);
    ~t_Memory();
    t_Memory(const t_Memory&) = delete;
    t_Memory& operator=(const t_Memory&) = delete;

    std::byte* const begin; ///< null: the system has no such block
    const UINT32 size;
    std::array<t_Slot, kSlotCount> slots;
};

/** Counts one more holder of a slot that the caller holds. */
inline void Share(t_Slot& slot)
{
    slot.word.fetch_add(1, std::memory_order_relaxed);
}

void CleanUp(t_Owner* owner);

inline void LetGo(t_Slot& slot)
{
    t_Owner* const owner = slot.owner; // of others as soon as it is let go
    const UINT32 before = slot.word.fetch_sub(1, std::memory_order_acq_rel);
    if ((before & ~kPublished) == (kClosed | 1U))
    {
        CleanUp(owner);
    }
}

/** Holds the publication `sequence`, when it is still there. */
inline bool Hold(t_Slot& slot, UINT64 sequence)
{
    const UINT32 before = slot.word.fetch_add(1, std::memory_order_acquire);
    if ((before & kPublished) != 0 && slot.sequence == sequence)
    {
        return true;
    }
    LetGo(slot);
    return false;
}

/** The writer takes a slot back; false while somebody holds it. */
inline bool TakeBack(t_Slot& slot)
{
    UINT32 expected = kPublished;
    return slot.word.compare_exchange_strong(expected, 0, std::memory_order_acq_rel,
                                             std::memory_order_relaxed);
}

/** The stream is gone: those who still hold records own the memory. */
void Close(t_Memory* memory);

struct t_Closing
{
    void operator()(t_Memory* memory) const { Close(memory); }
};
using t_MemoryPtr = std::unique_ptr<t_Memory, t_Closing>;
} // namespace NStreams

/** Who may make records. */
struct CKWRecord::t_Access
{
    /** Takes over a slot that the caller holds. */
    static CKWRecord Make(NStreams::t_Slot& slot, UINT32 progress)
    {
        CKWRecord record;
        record.m_slot = &slot;
        record.m_progress = progress;
        return record;
    }
    static UINT32 ProgressOf(const CKWRecord& record) { return record.m_progress; }
    static NStreams::t_Slot* SlotOf(const CKWRecord& record)
    {
        return static_cast<NStreams::t_Slot*>(record.m_slot);
    }
};

namespace NStreams
{
/** Whether this value alone holds its record. What others read of it stands before. */
inline bool HasOneHolder(const CKWRecord& record)
{
    const t_Slot* const slot = CKWRecord::t_Access::SlotOf(record);
    return slot != nullptr && (slot->word.load(std::memory_order_acquire) & kHolders) == 1;
}
} // namespace NStreams
