// SPDX-License-Identifier: MIT
#pragma once

#include "RemoteTasks.h"
#include "ServiceLimits.h"
#include "Subscribers.h"
#include "WavePictures.h"

#include <boost/asio/io_context.hpp>
#include <boost/asio/steady_timer.hpp>
#include <memory>
#include <vector>

/** Somebody who draws. */
struct t_WaveViewer
{
    t_WaveWish wish;
    CWavePictures::t_Message picture; ///< the newest that was made for it
};

/**
 * Has pictures made for all viewers, twenty times a second at most, as long as there are viewers:
 * on a thread beside, so that no record is too long for the network, and the next ones when those
 * are ready. A viewer has the newest picture and no others. On the network thread.
 */
class CWaveHub : public std::enable_shared_from_this<CWaveHub>
{
public:
    using t_Message = CWavePictures::t_Message;

    CWaveHub(boost::asio::io_context& network, const std::shared_ptr<CRemoteTasks>& tasks,
             const std::shared_ptr<IKWFunctionRootBase>& root, const t_WaveSources& sources,
             const t_HttpBounds& bounds);

    /** What the viewer's socket wants to know of; null where there are too many viewers. */
    std::shared_ptr<t_WaveViewer> Add(const std::shared_ptr<CSubscriber>& subscriber);
    /** How it stands, as the answer to a wish. */
    QByteArray Standing() const;
    const t_Message& Masks() const { return m_masks; }
    int MostColumns() const { return m_bounds.columns; }
    void Stop();

private:
    struct t_Work
    {
        std::vector<t_WaveWish> wishes;
        std::vector<t_Message> pictures;
        t_Message masks;
    };
    void LookLater();
    void Look();
    void Show(const t_Work& work);

    boost::asio::io_context& m_network;
    const std::shared_ptr<CRemoteTasks> m_tasks;
    const std::shared_ptr<CWavePictures> m_pictures;
    const t_HttpBounds m_bounds;
    boost::asio::steady_timer m_timer;
    CSubscribers m_subscribers;
    std::vector<std::weak_ptr<t_WaveViewer>> m_viewers;
    t_Message m_masks;
    bool m_isLooking = false;
    bool m_isResting = true; ///< no record is held
    bool m_isStopped = false;
};
