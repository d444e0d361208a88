// SPDX-License-Identifier: MIT
#include "WaveHub.h"

#include "JsonWriter.h"

#include <algorithm>
#include <boost/asio/post.hpp>

CWaveHub::CWaveHub(boost::asio::io_context& network, const std::shared_ptr<CRemoteTasks>& tasks,
                   const std::shared_ptr<IKWFunctionRootBase>& root, const t_WaveSources& sources,
                   const t_HttpBounds& bounds)
    : m_network(network), m_tasks(tasks),
      m_pictures(std::make_shared<CWavePictures>(root, sources)), m_bounds(bounds), m_timer(network)
{
}

std::shared_ptr<t_WaveViewer> CWaveHub::Add(const std::shared_ptr<CSubscriber>& subscriber)
{
    if (m_subscribers.Count() >= m_bounds.viewers)
    {
        return nullptr;
    }
    m_subscribers.Add(subscriber);
    auto viewer = std::make_shared<t_WaveViewer>();
    m_viewers.push_back(viewer);
    if (!m_isStopped && !std::exchange(m_isLooking, true))
    {
        LookLater();
    }
    return viewer;
}

QByteArray CWaveHub::Standing() const
{
    CJsonWriter json;
    json.BeginObject();
    json.Key("traces").Bool(m_pictures->HasTraces());
    json.Key("spectrum").Bool(m_pictures->HasSpectrum());
    json.EndObject();
    return json.GetText();
}

void CWaveHub::Stop()
{
    m_isStopped = true;
    m_timer.cancel();
}

void CWaveHub::LookLater()
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

void CWaveHub::Look()
{
    const auto work = std::make_shared<t_Work>();
    m_viewers.erase(std::remove_if(m_viewers.begin(), m_viewers.end(),
                                   [](const auto& weak) { return weak.expired(); }),
                    m_viewers.end());
    for (const auto& weak : m_viewers)
    {
        const auto viewer = weak.lock();
        if (!viewer->wish.IsEmpty() &&
            std::find(work->wishes.begin(), work->wishes.end(), viewer->wish) == work->wishes.end())
        {
            work->wishes.push_back(viewer->wish);
        }
    }
    const bool isOver = m_subscribers.Count() == 0;
    const bool wasResting = std::exchange(m_isResting, work->wishes.empty());
    if (wasResting && m_isResting && !isOver)
    {
        LookLater(); // nobody wants anything
        return;
    }
    const auto task = m_tasks->Start(
        [pictures = m_pictures, work]
        {
            if (work->wishes.empty())
            {
                pictures->Rest();
                return t_RemoteError{};
            }
            work->pictures = pictures->Make(work->wishes);
            work->masks = pictures->MakeMasks();
            return t_RemoteError{};
        },
        [self = weak_from_this(), &network = m_network, work, isOver]
        {
            boost::asio::post(network,
                              [self, work, isOver]
                              {
                                  const auto hub = self.lock();
                                  if (hub && !hub->m_isStopped)
                                  {
                                      hub->m_isLooking = !isOver || hub->m_subscribers.Count() > 0;
                                      hub->m_isLooking ? hub->LookLater() : void();
                                      hub->Show(*work);
                                  }
                              });
        });
    if (!task)
    {
        LookLater(); // others take all the threads
    }
}

void CWaveHub::Show(const t_Work& work)
{
    for (const auto& weak : m_viewers)
    {
        const auto viewer = weak.lock();
        const auto found = viewer ? std::find(work.wishes.begin(), work.wishes.end(), viewer->wish)
                                  : work.wishes.end();
        const auto place = static_cast<std::size_t>(found - work.wishes.begin());
        if (place < work.pictures.size())
        {
            viewer->picture = work.pictures[place];
        }
    }
    m_masks = work.masks ? work.masks : m_masks;
    m_subscribers.Wake();
}
