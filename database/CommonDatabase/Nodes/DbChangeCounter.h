// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>

/** Counts changes. Incremented under the tree's lock, read from any thread without it. */
class CDbChangeCounter
{
public:
    void IncChangeCounter()
    {
        // A single writer at a time: no read-modify-write instruction is needed.
        m_count.store(m_count.load(std::memory_order_relaxed) + 1, std::memory_order_release);
    }

    /** True when the count differs from `counter`, which then takes the present count. */
    bool HasChanged(long long& counter) const
    {
        const long long now = m_count.load(std::memory_order_acquire);
        const bool changed = now != counter;
        counter = now;
        return changed;
    }

    /** Never goes down; equal counts mean that nothing changed in between. */
    long long Get() const { return m_count.load(std::memory_order_acquire); }

private:
    /** Lock-free on every platform that is supported (DbPropNum.cpp checks): polling never waits.
     */
    std::atomic<long long> m_count{0};
};
