// SPDX-License-Identifier: MIT
#include "WebSocketTopics.h"

#include "HttpServer.h"

#include <utility>

namespace
{
/** Changes of the tree. */
class CChangesTopic : public CWebSocketTopic
{
public:
    explicit CChangesTopic(t_HttpShared& shared) : m_shared(shared) {}

    void Join(const std::shared_ptr<CSubscriber>& subscriber) override
    {
        m_shared.hub.Add(subscriber);
    }
    QByteArray Receive(const QByteArray& message) override
    {
        return m_shared.hub.Changes().Subscribe(m_subscription, message, m_shared.bounds.paths);
    }
    t_WebSocketMessage Take() override
    {
        return {m_shared.hub.Changes().Take(m_subscription), false};
    }

private:
    t_HttpShared& m_shared;
    t_Subscription m_subscription;
};

/** Pictures of traces. */
class CWavesTopic : public CWebSocketTopic
{
public:
    explicit CWavesTopic(t_HttpShared& shared) : m_waves(shared.waves) {}

    void Join(const std::shared_ptr<CSubscriber>& subscriber) override
    {
        m_viewer = m_waves->Add(subscriber);
    }
    QByteArray Receive(const QByteArray& message) override
    {
        QString wrong;
        const auto wish = NJson::ReadWaveWish(message, m_waves->MostColumns(), wrong);
        if (!m_viewer)
        {
            return CJsonService::Refuse(503, eKW_ACC_CONTAINER_FULL,
                                        QStringLiteral("too many draw already"))
                .body;
        }
        if (!wish)
        {
            return CJsonService::Refuse(400, eKW_ACC_BAD_TEXT, wrong).body;
        }
        m_viewer->wish = *wish;
        m_viewer->picture = nullptr; // it is of another wish
        return m_waves->Standing();
    }
    t_WebSocketMessage Take() override
    {
        if (!m_viewer || m_viewer->wish.IsEmpty())
        {
            return {};
        }
        if (m_waves->Masks() && std::exchange(m_masks, m_waves->Masks()) != m_waves->Masks())
        {
            return {m_masks, false};
        }
        const bool isNew = m_viewer->picture && m_viewer->picture != m_picture;
        m_picture = m_viewer->picture ? m_viewer->picture : m_picture;
        return {isNew ? m_picture : nullptr, true};
    }

private:
    const std::shared_ptr<CWaveHub> m_waves;
    std::shared_ptr<t_WaveViewer> m_viewer;
    CWaveHub::t_Message m_masks;   ///< that it was told last
    CWaveHub::t_Message m_picture; ///< likewise
};
} // namespace

CWebSocketTopic::~CWebSocketTopic() = default;

std::unique_ptr<CWebSocketTopic> NWebSocket::MakeTopic(std::string_view target,
                                                       t_HttpShared& shared)
{
    if (target == "/changes")
    {
        return std::make_unique<CChangesTopic>(shared);
    }
    return target == "/waves" ? std::make_unique<CWavesTopic>(shared) : nullptr;
}
