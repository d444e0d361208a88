// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <vector>

/** Somebody who wants to know of something new. */
class CSubscriber
{
public:
    virtual ~CSubscriber();
    /** Whether it still wants to know. */
    virtual bool IsListening() const = 0;
    /** There is something new; called on the network thread. */
    virtual void Wake() = 0;
};

/** Subscribers, as long as they live and listen. */
class CSubscribers
{
public:
    void Add(const std::shared_ptr<CSubscriber>& subscriber) { m_all.push_back(subscriber); }
    /** Forgets those that have gone, and tells how many are left. */
    std::size_t Count();
    void Wake() const;

private:
    std::vector<std::weak_ptr<CSubscriber>> m_all;
};
