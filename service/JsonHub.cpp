// SPDX-License-Identifier: MIT
#include "JsonHub.h"

#include <algorithm>

namespace
{
bool HasGone(const std::weak_ptr<CJsonSubscriber>& weak)
{
    const auto subscriber = weak.lock();
    return !subscriber || !subscriber->IsListening();
}
} // namespace

CJsonSubscriber::~CJsonSubscriber() = default;

void CJsonHub::Add(const std::shared_ptr<CJsonSubscriber>& subscriber)
{
    m_subscribers.push_back(subscriber);
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
    m_subscribers.erase(std::remove_if(m_subscribers.begin(), m_subscribers.end(), HasGone),
                        m_subscribers.end());
    const auto now = std::chrono::steady_clock::now();
    m_needed = m_subscribers.empty() ? m_needed : now;
    if (now - m_needed > m_bounds.memory)
    {
        m_changes.Rest();
        m_timer.cancel();
        m_isLooking = false;
        return;
    }
    if (!m_changes.Look())
    {
        return;
    }
    for (const auto& weak : std::vector<std::weak_ptr<CJsonSubscriber>>(m_subscribers))
    {
        if (const auto subscriber = weak.lock())
        {
            subscriber->Wake();
        }
    }
}
