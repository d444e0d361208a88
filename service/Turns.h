// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>

/** One at a time, and nobody waits for ever. A condition instead of std::timed_mutex, whose waiting
    by the steady clock is unknown to thread checkers. */
class CTurns
{
public:
    /** Whether it is the caller's turn before the time is over; if so, End() must follow. */
    bool Begin(std::chrono::milliseconds most)
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        if (!m_ended.wait_for(lock, most, [this] { return !m_isTaken; }))
        {
            return false;
        }
        m_isTaken = true;
        return true;
    }
    void End()
    {
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            m_isTaken = false;
        }
        m_ended.notify_one();
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_ended;
    bool m_isTaken = false;
};

/** A turn while it lives; false where others took all the time. */
class CTurn
{
public:
    CTurn(CTurns& turns, std::chrono::milliseconds most)
        : m_turns(turns), m_isMine(turns.Begin(most))
    {
    }
    ~CTurn()
    {
        if (m_isMine)
        {
            m_turns.End();
        }
    }
    CTurn(const CTurn&) = delete;
    CTurn& operator=(const CTurn&) = delete;

    explicit operator bool() const { return m_isMine; }

private:
    CTurns& m_turns;
    bool m_isMine;
};
