// SPDX-License-Identifier: MIT
#include "Subscribers.h"

#include <algorithm>

namespace
{
bool HasGone(const std::weak_ptr<CSubscriber>& weak)
{
    const auto subscriber = weak.lock();
    return !subscriber || !subscriber->IsListening();
}
} // namespace

CSubscriber::~CSubscriber() = default;

std::size_t CSubscribers::Count()
{
    m_all.erase(std::remove_if(m_all.begin(), m_all.end(), HasGone), m_all.end());
    return m_all.size();
}

void CSubscribers::Wake() const
{
    // One that is woken may add others.
    for (const auto& weak : std::vector<std::weak_ptr<CSubscriber>>(m_all))
    {
        if (const auto subscriber = weak.lock())
        {
            subscriber->Wake();
        }
    }
}
