// SPDX-License-Identifier: MIT
#include "JsonHub.h"

void CJsonHub::Add(const std::shared_ptr<CSubscriber>& subscriber)
{
    m_subscribers.Add(subscriber);
    if (!m_isLooking && !m_isStopped)
    {
        m_isLooking = true;
        Look();
    }
}

void CJsonHub::Stop()
{
    m_isStopped = true;
    m_timer.cancel();
}

void CJsonHub::LookLater()
{
    m_timer.expires_after(m_bounds.poll);
    m_timer.async_wait(
        [this](const boost::system::error_code& error)
        {
            if (!error && !m_isStopped)
            {
                Look();
            }
        });
}

void CJsonHub::Look()
{
    // Whatever happens, the next look comes: a look may run out of memory.
    LookLater();
    const auto now = std::chrono::steady_clock::now();
    m_needed = m_subscribers.Count() == 0 ? m_needed : now;
    if (now - m_needed > m_bounds.memory)
    {
        m_changes.Rest();
        m_timer.cancel();
        m_isLooking = false;
        return;
    }
    if (m_changes.Look())
    {
        m_subscribers.Wake();
    }
}
