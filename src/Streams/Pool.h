// SPDX-License-Identifier: MIT
#pragma once

#include "Streams/Slots.h"

#include <array>

/** The records of a stream: where they stand, and which readers may have. */
namespace NStreams
{
/** Slots by their number, with room for all of them. */
class CSlotList
{
public:
    bool IsEmpty() const { return m_count == 0; }
    std::size_t Count() const { return m_count; }
    void Add(UINT16 slot) { m_slots[m_count++] = slot; }
    UINT16 TakeLast() { return m_slots[--m_count]; }
    UINT16& operator[](std::size_t place) { return m_slots[place]; }
    UINT16* begin() { return m_slots.data(); }
    UINT16* end() { return m_slots.data() + m_count; }
    void Clear() { m_count = 0; }

private:
    std::array<UINT16, kSlotCount> m_slots;
    std::size_t m_count = 0;
};

/**
 * Publications are counted from 1; the history is those from `Tail` to `Head`, and a table says in
 * which slot each stands. Readers use Head, Tail, SlotOf and the slot's word only; all else is the
 * writer's.
 */
class CPool
{
public:
    /** IsGood is false when the system has no such memory. */
    explicit CPool(UINT32 bytes);
    bool IsGood() const { return m_memory != nullptr && m_memory->begin != nullptr; }

    /** For readers. Tail > Head: the history is empty. */
    ///@{
    UINT64 Head() const { return m_head.load(std::memory_order_acquire); }
    UINT64 Tail() const { return m_tail.load(std::memory_order_acquire); }
    t_Slot& SlotOf(UINT64 sequence) const
    {
        return m_memory->slots[m_places[sequence % kPlaces].load(std::memory_order_relaxed)];
    }
    ///@}

    /** Both in the one order of all that is sequentially consistent. */
    ///@{
    void LookAtHead() const { m_head.load(std::memory_order_seq_cst); }
    void TouchHead() { m_head.fetch_add(0, std::memory_order_seq_cst); }
    ///@}

    /** Whether two records of such traces have room. */
    bool MayConfigure(std::span<const KW_TraceLayout> layout, UINT64 bytes) const;
    bool IsConfigured(std::span<const KW_TraceLayout> layout, UINT32 depth, UINT64 bytes) const;
    /** As IKWStreamWriter has it; arguments are checked, nothing is being filled. */
    void Configure(std::span<const KW_TraceLayout> layout, UINT32 depth, UINT64 bytes);
    /** Points that there is room for in a place; 0 where there is none. */
    UINT32 RoomOf(UINT32 trace) const { return trace < m_placeCount ? m_layout[trace].points : 0; }
    /** Whether there is room for the whole history, and a record to fill.*/
    bool HasRoomForAll() const { return m_cutSlots > m_depth; }

    /** A slot to fill, of the present configuration; null when there is none. */
    t_Slot* Take();
    /** Gives back a slot that was not published. */
    void GiveBack(t_Slot& slot);
    /** Ends the history; what leaves it is not lost, it was not wanted. */
    void Clear(bool keepsNewest);
    /** Shows a slot that Take gave, and lets the history's oldest go. */
    void Show(t_Slot& slot);

    /** Records that left the history before anybody fetched them. */
    UINT64 Lost() const { return m_lost.load(std::memory_order_relaxed); }

private:
    static constexpr UINT32 kPlaces = 8192; ///< > kSlotCount, a power of two

    UINT16 IndexOf(const t_Slot& slot) const
    {
        return static_cast<UINT16>(&slot - m_memory->slots.data());
    }
    void RetireOldest();
    void Free(t_Slot& slot);
    void Reclaim(std::size_t most);
    void Cut();
    bool CutAt(UINT32 offset);

    std::atomic<UINT64> m_head{0};
    std::atomic<UINT64> m_tail{1};
    std::array<std::atomic<UINT16>, kPlaces> m_places{};
    t_MemoryPtr m_memory;
    std::atomic<UINT64> m_lost{0};

    // Of the writer's own.
    CSlotList m_free;       ///< slots to fill
    CSlotList m_spare;      ///< slots without room
    CSlotList m_held;       ///< left the history, but somebody holds them
    CSlotList m_sorted;     ///< for Cut
    std::size_t m_look = 0; ///< of m_held, to look at next
    std::array<KW_TraceLayout, eKW_STREAM_TRACES> m_layout{};
    UINT32 m_placeCount = 0;
    UINT32 m_depth = 0;
    UINT64 m_bytes = 0;
    UINT32 m_slotSize = 0;
    UINT32 m_wanted = 0;   ///< slots that depth and bytes ask for
    UINT32 m_cutSlots = 0; ///< slots of the present configuration
    UINT32 m_cut = 0;      ///< number of the configuration
    bool m_hasGap = false; ///< room came back that is not cut yet
};
} // namespace NStreams
