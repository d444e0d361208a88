// SPDX-License-Identifier: MIT
#include "Streams/StreamReader.h"

#include <algorithm>
#include <chrono>
#include <poll.h>

IKWStreamReader::~IKWStreamReader() = default;

namespace NStreams
{
namespace
{
/** Takes over a slot that is held. */
CKWRecord RecordOf(t_Slot& slot)
{
    if (!slot.isFetched.load(std::memory_order_relaxed))
    {
        slot.isFetched.store(true, std::memory_order_relaxed);
    }
    return CKWRecord::t_Access::Make(slot, slot.progress.load(std::memory_order_acquire));
}
} // namespace

CStreamReader::CStreamReader(t_SharedPtr shared, t_Waiter& waiter)
    : m_shared(std::move(shared)), m_pool(m_shared->pool), m_waiter(waiter),
      m_next(std::max(m_pool.Tail(), m_pool.Head())),
      m_droppedBefore(m_shared->dropped.load(std::memory_order_relaxed))
{
}

CStreamReader::~CStreamReader()
{
    CWaiters::Leave(m_waiter);
}

bool CStreamReader::HasNew()
{
    const UINT64 tail = m_pool.Tail();
    const UINT64 head = m_pool.Head();
    if (head >= m_next)
    {
        return tail <= head; // or the history was cleared
    }
    return m_last > 0 && tail <= m_last && HasGrown(m_last);
}

/** Whether the last record that was fetched has more points now. */
bool CStreamReader::HasGrown(UINT64 last) const
{
    return m_pool.SlotOf(last).progress.load(std::memory_order_acquire) != m_progress;
}

/** Publications before `next` are gone or not wanted. */
void CStreamReader::PassOver(UINT64 next)
{
    if (next > m_next)
    {
        m_passedOver += next - m_next;
        m_next = next;
    }
}

CKWRecord CStreamReader::Fetched(t_Slot& slot, UINT64 sequence)
{
    CKWRecord record = RecordOf(slot);
    m_last = sequence;
    m_next = sequence + 1;
    m_progress = CKWRecord::t_Access::ProgressOf(record);
    return record;
}

// A slot that can not be held was taken back meanwhile: then the history begins later, or has a
// newer head, and the loops look again. Tail is asked for first, so that it is not beyond Head + 1.

CKWRecord CStreamReader::GetLatest()
{
    for (;;)
    {
        const UINT64 tail = m_pool.Tail();
        const UINT64 head = m_pool.Head();
        if (tail > head)
        {
            PassOver(tail);
            return {};
        }
        t_Slot& slot = m_pool.SlotOf(head);
        if (Hold(slot, head))
        {
            PassOver(head);
            return Fetched(slot, head);
        }
    }
}

CKWRecord CStreamReader::GetNext()
{
    for (;;)
    {
        const UINT64 tail = m_pool.Tail();
        const UINT64 head = m_pool.Head();
        PassOver(tail);
        if (tail > head)
        {
            return {};
        }
        const bool hasGrown = m_last >= tail && m_last + 1 == m_next && HasGrown(m_last);
        if (!hasGrown && m_next > head)
        {
            return {};
        }
        const UINT64 wanted = hasGrown ? m_last : m_next;
        t_Slot& slot = m_pool.SlotOf(wanted);
        if (Hold(slot, wanted))
        {
            return Fetched(slot, wanted);
        }
    }
}

CKWRecord CStreamReader::GetHistory(INT32 trace)
{
    for (;;)
    {
        const UINT64 tail = m_pool.Tail();
        const UINT64 head = m_pool.Head();
        const auto back = static_cast<UINT64>(-INT64{trace});
        if (trace > 0 || head < tail + back)
        {
            return {};
        }
        t_Slot& slot = m_pool.SlotOf(head - back);
        if (Hold(slot, head - back))
        {
            return RecordOf(slot);
        }
    }
}

UINT32 CStreamReader::GetAvailable() const
{
    const UINT64 tail = m_pool.Tail();
    return static_cast<UINT32>(m_pool.Head() + 1 - tail);
}

UINT64 CStreamReader::GetMissed() const
{
    return m_passedOver + m_shared->dropped.load(std::memory_order_relaxed) - m_droppedBefore;
}

int CStreamReader::Arm()
{
    if (HasNew())
    {
        return -1;
    }
    m_waiter.Arm();
    m_pool.LookAtHead();
    if (HasNew())
    {
        m_waiter.Disarm();
        return -1;
    }
    return m_waiter.descriptor;
}

bool CStreamReader::Wait(INT32 limit)
{
    using t_Clock = std::chrono::steady_clock;
    const auto end = t_Clock::now() + std::chrono::milliseconds(std::max(limit, 0));
    for (INT64 left = limit; left != 0 || limit < 0;)
    {
        pollfd polled{Arm(), POLLIN, 0};
        if (polled.fd < 0)
        {
            return true;
        }
        poll(&polled, 1, limit < 0 ? -1 : static_cast<int>(left));
        // Rounded up, or the last millisecond would be spent in polls that return at once.
        left = std::max<INT64>(
            std::chrono::ceil<std::chrono::milliseconds>(end - t_Clock::now()).count(), 0);
    }
    m_waiter.Disarm();
    return HasNew();
}
} // namespace NStreams
