// SPDX-License-Identifier: MIT
#include "Streams/Waiting.h"

#include <memory>
#include <new>
#include <sys/eventfd.h>
#include <unistd.h>

namespace NStreams
{
/* The reader stores "armed" and then looks at the head; the writer touches the head and then looks
   at "armed". All four are sequentially consistent, so that one of the two sees the other. */

void t_Waiter::Arm()
{
    // Always: a writer that was slow may have written after the last time.
    eventfd_t count = 0;
    eventfd_read(descriptor, &count);
    isArmed.store(true, std::memory_order_seq_cst);
}

CWaiters::~CWaiters()
{
    for (t_Waiter* waiter = m_first.load(std::memory_order_acquire); waiter != nullptr;)
    {
        const std::unique_ptr<t_Waiter> last(waiter);
        close(last->descriptor);
        waiter = last->next;
    }
}

t_Waiter* CWaiters::Join()
{
    for (t_Waiter* waiter = m_first.load(std::memory_order_acquire); waiter != nullptr;
         waiter = waiter->next)
    {
        if (!waiter->isTaken.exchange(true, std::memory_order_acq_rel))
        {
            return waiter;
        }
    }
    std::unique_ptr<t_Waiter> made(new (std::nothrow) t_Waiter);
    if (made != nullptr)
    {
        made->descriptor = eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC);
    }
    if (made == nullptr || made->descriptor < 0)
    {
        return nullptr;
    }
    made->next = m_first.load(std::memory_order_relaxed);
    while (!m_first.compare_exchange_weak(made->next, made.get(), std::memory_order_seq_cst))
    {
    }
    return made.release();
}

void CWaiters::Leave(t_Waiter& waiter)
{
    waiter.Disarm();
    waiter.isTaken.store(false, std::memory_order_release);
}

void CWaiters::Wake()
{
    for (t_Waiter* waiter = m_first.load(std::memory_order_seq_cst); waiter != nullptr;
         waiter = waiter->next)
    {
        if (waiter->isArmed.load(std::memory_order_seq_cst) &&
            waiter->isArmed.exchange(false, std::memory_order_seq_cst))
        {
            eventfd_write(waiter->descriptor, 1);
        }
    }
}
} // namespace NStreams
