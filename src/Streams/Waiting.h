// SPDX-License-Identifier: MIT
#pragma once

#include "KWTypes.h"

#include <atomic>

namespace NStreams
{
/** A reader's descriptor. Stays for a later reader when its own is gone, as the writer may be about
    to wake it. */
struct t_Waiter
{
    std::atomic<bool> isTaken{true};
    std::atomic<bool> isArmed{false};
    int descriptor = -1;
    t_Waiter* next = nullptr;

    /** Asks to be woken; after that the reader looks once more before it polls. */
    void Arm();
    void Disarm() { isArmed.store(false, std::memory_order_relaxed); }
};

/** All that may wait for a stream. They come at any time and never leave. */
class CWaiters
{
public:
    CWaiters() = default;
    ~CWaiters();
    CWaiters(const CWaiters&) = delete;
    CWaiters& operator=(const CWaiters&) = delete;

    /** Null when the system has no descriptor. */
    t_Waiter* Join();
    static void Leave(t_Waiter& waiter);
    /** One write for each that is armed. */
    void Wake();

private:
    std::atomic<t_Waiter*> m_first{nullptr};
};
} // namespace NStreams
