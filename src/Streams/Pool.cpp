// SPDX-License-Identifier: MIT
#include "Streams/Pool.h"

#include "Streams/Traces.h"

#include <algorithm>
#include <new>

namespace NStreams
{
namespace
{
/** Held slots that are looked at for each record, while there is other room. */
constexpr std::size_t kLooks = 64;

bool IsSame(std::span<const KW_TraceLayout> a, std::span<const KW_TraceLayout> b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const KW_TraceLayout& one, const KW_TraceLayout& other)
                      { return one.format == other.format && one.points == other.points; });
}

} // namespace

CPool::CPool(UINT32 bytes) : m_memory(new (std::nothrow) t_Memory((bytes + 63) / 64 * 64))
{
    for (UINT32 i = kSlotCount; i > 0; --i)
    {
        m_spare.Add(static_cast<UINT16>(i - 1));
    }
}

bool CPool::MayConfigure(std::span<const KW_TraceLayout> layout, UINT64 bytes) const
{
    return BytesOfRecord(layout) <= std::min<UINT64>(bytes, m_memory->size) / 2;
}

bool CPool::IsConfigured(std::span<const KW_TraceLayout> layout, UINT32 depth, UINT64 bytes) const
{
    return m_cut > 0 && depth == m_depth && std::min<UINT64>(bytes, m_memory->size) == m_bytes &&
           IsSame(layout, std::span(m_layout).first(m_placeCount));
}

void CPool::Configure(std::span<const KW_TraceLayout> layout, UINT32 depth, UINT64 bytes)
{
    std::copy(layout.begin(), layout.end(), m_layout.begin());
    m_placeCount = static_cast<UINT32>(layout.size());
    m_depth = depth;
    m_bytes = std::min<UINT64>(bytes, m_memory->size);
    m_slotSize = static_cast<UINT32>(BytesOfRecord(layout));
    m_wanted = std::min(static_cast<UINT32>(m_bytes / m_slotSize), depth + kSpareSlots);
    m_cutSlots = 0;
    ++m_cut;
    while (Tail() < Head())
    {
        RetireOldest();
    }
    while (!m_free.IsEmpty())
    {
        Free(m_memory->slots[m_free.TakeLast()]);
    }
    Reclaim(m_held.Count());
    Cut();
    if (m_cutSlots < 2 && Tail() == Head())
    {
        RetireOldest(); // or what replaces it had no room beside it, for ever
        Cut();
    }
}

t_Slot* CPool::Take()
{
    if (m_hasGap)
    {
        Cut();
    }
    if (m_free.IsEmpty())
    {
        Reclaim(kLooks);
    }
    while (m_free.IsEmpty() && Tail() < Head())
    {
        RetireOldest();
        if (m_hasGap)
        {
            Cut();
        }
    }
    if (m_free.IsEmpty())
    {
        Reclaim(m_held.Count());
    }
    if (m_free.IsEmpty() && m_hasGap)
    {
        Cut();
    }
    if (m_free.IsEmpty())
    {
        return nullptr;
    }
    return &m_memory->slots[m_free.TakeLast()];
}

void CPool::GiveBack(t_Slot& slot)
{
    if ((slot.word.load(std::memory_order_relaxed) & kHolders) == 0)
    {
        m_free.Add(IndexOf(slot));
        return;
    }
    // Somebody holds a draft: it waits like any other that is held, as a record that none asks for.
    slot.sequence = 0;
    slot.word.fetch_or(kPublished, std::memory_order_release);
    m_held.Add(IndexOf(slot));
}

void CPool::Clear(bool keepsNewest)
{
    const UINT64 lost = Lost();
    while (Tail() + (keepsNewest ? 1 : 0) <= Head())
    {
        RetireOldest();
    }
    m_lost.store(lost, std::memory_order_relaxed);
}

void CPool::Show(t_Slot& slot)
{
    const UINT64 sequence = m_head.load(std::memory_order_relaxed) + 1;
    slot.sequence = sequence;
    slot.isFetched.store(false, std::memory_order_relaxed);
    m_places[sequence % kPlaces].store(IndexOf(slot), std::memory_order_relaxed);
    slot.word.fetch_or(kPublished, std::memory_order_release);
    m_head.store(sequence, std::memory_order_release);
    while (sequence - m_tail.load(std::memory_order_relaxed) >= m_depth)
    {
        RetireOldest();
    }
}

/** The oldest leaves the history. Readers see that before its slot is taken back, so that who
    misses it knows where the history begins now. */
void CPool::RetireOldest()
{
    const UINT64 oldest = m_tail.load(std::memory_order_relaxed);
    t_Slot& slot = SlotOf(oldest);
    m_tail.store(oldest + 1, std::memory_order_release);
    if (!TakeBack(slot))
    {
        m_held.Add(IndexOf(slot));
        return;
    }
    if (!slot.isFetched.load(std::memory_order_relaxed))
    {
        m_lost.store(Lost() + 1, std::memory_order_relaxed);
    }
    Free(slot);
}

/** Nobody has the slot any more. */
void CPool::Free(t_Slot& slot)
{
    if (slot.cut == m_cut)
    {
        m_free.Add(IndexOf(slot));
        return;
    }
    slot.record = nullptr;
    slot.size = 0;
    m_spare.Add(IndexOf(slot));
    m_hasGap = m_hasGap || m_cutSlots < m_wanted;
}

/** Looks at so many of the slots that were held, where it stopped the last time. */
void CPool::Reclaim(std::size_t most)
{
    for (std::size_t looks = std::min(most, m_held.Count()); looks > 0; --looks)
    {
        m_look = m_look < m_held.Count() ? m_look : 0;
        t_Slot& slot = m_memory->slots[m_held[m_look]];
        if (slot.word.load(std::memory_order_relaxed) == kPublished && TakeBack(slot))
        {
            Free(slot);
            const UINT16 last = m_held.TakeLast();
            if (m_look < m_held.Count())
            {
                m_held[m_look] = last;
            }
        }
        else
        {
            ++m_look;
        }
    }
}

/** Makes slots of the gaps between those that have room, until there are enough. */
void CPool::Cut()
{
    m_hasGap = false;
    m_sorted.Clear();
    for (const t_Slot& slot : m_memory->slots)
    {
        if (slot.record != nullptr)
        {
            m_sorted.Add(IndexOf(slot));
        }
    }
    const auto& all = m_memory->slots;
    const auto isBefore = [&all](UINT16 a, UINT16 b) { return all[a].record < all[b].record; };
    std::make_heap(m_sorted.begin(), m_sorted.end(), isBefore); // a fifth of the code of std::sort
    std::sort_heap(m_sorted.begin(), m_sorted.end(), isBefore);
    UINT32 offset = 0;
    for (const UINT16 index : m_sorted)
    {
        const t_Slot& slot = m_memory->slots[index];
        const auto begin =
            static_cast<UINT32>(reinterpret_cast<std::byte*>(slot.record) - m_memory->begin);
        for (; begin - offset >= m_slotSize && CutAt(offset); offset += m_slotSize)
        {
        }
        offset = begin + slot.size;
    }
    for (; m_memory->size - offset >= m_slotSize && CutAt(offset); offset += m_slotSize)
    {
    }
}

/** False when there are enough. */
bool CPool::CutAt(UINT32 offset)
{
    if (m_cutSlots >= m_wanted || m_spare.IsEmpty())
    {
        return false;
    }
    t_Slot& slot = m_memory->slots[m_spare.TakeLast()];
    slot.record = PlaceRecord(m_memory->begin + offset, std::span(m_layout).first(m_placeCount));
    slot.size = m_slotSize;
    slot.cut = m_cut;
    m_free.Add(IndexOf(slot));
    ++m_cutSlots;
    return true;
}
} // namespace NStreams
