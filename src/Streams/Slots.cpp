// SPDX-License-Identifier: MIT
#include "Streams/Slots.h"

#include <cstdlib>
#include <cstring>

namespace NStreams
{
t_Memory::t_Memory(UINT32 bytes)
    : t_Owner([](t_Owner* owner) { delete static_cast<t_Memory*>(owner); }),
      begin(static_cast<std::byte*>(std::aligned_alloc(alignof(t_Slot), bytes))), size(bytes)
{
    if (begin != nullptr)
    {
        // Touched now: the first touch of a page would cost the first records five times theirs.
        std::memset(begin, 0, bytes);
    }
    for (t_Slot& slot : slots)
    {
        slot.owner = this;
    }
}

t_Memory::~t_Memory()
{
    std::free(begin);
}

void CleanUp(t_Owner* owner)
{
    if (owner->users.fetch_sub(1, std::memory_order_acq_rel) == 1)
    {
        owner->go(owner);
    }
}

void Close(t_Memory* memory)
{
    for (t_Slot& slot : memory->slots)
    {
        // Counted before it is marked: its last holder may be letting go right now.
        memory->users.fetch_add(1, std::memory_order_relaxed);
        const UINT32 before = slot.word.fetch_or(kClosed, std::memory_order_acq_rel);
        if ((before & kHolders) == 0)
        {
            memory->users.fetch_sub(1, std::memory_order_relaxed);
        }
    }
    CleanUp(memory);
}
} // namespace NStreams
