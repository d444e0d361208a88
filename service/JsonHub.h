// SPDX-License-Identifier: MIT
#pragma once

#include "JsonChanges.h"
#include "Subscribers.h"

#include <boost/asio/io_context.hpp>
#include <boost/asio/steady_timer.hpp>
#include <memory>

/** Looks at the tree for all subscribers while there are any, and some time longer, so that one
   that lost its connection finds what it has missed. On the network thread. */
class CJsonHub
{
public:
    CJsonHub(boost::asio::io_context& network, std::shared_ptr<IKWFunctionRootBase> root,
             const t_HttpBounds& bounds)
        : m_bounds(bounds), m_changes(std::move(root), bounds.backlog), m_timer(network)
    {
    }

    /** As long as it lives and listens. From now on there are numbers. */
    void Add(const std::shared_ptr<CSubscriber>& subscriber);
    CJsonChanges& Changes() { return m_changes; }
    void Stop();

private:
    void LookLater();
    void Look();

    const t_HttpBounds m_bounds;
    CJsonChanges m_changes;
    boost::asio::steady_timer m_timer;
    CSubscribers m_subscribers;
    std::chrono::steady_clock::time_point m_needed; ///< when the last subscriber was there
    bool m_isLooking = false;
    bool m_isStopped = false;
};
