// SPDX-License-Identifier: MIT
#pragma once

#include "JsonHub.h"
#include "WaveHub.h"

#include <memory>
#include <string_view>

struct t_HttpShared;

/** A message on its way to a client; none where there are no bytes. */
struct t_WebSocketMessage
{
    std::shared_ptr<const QByteArray> bytes;
    bool isBinary = false;
};

/** What a WebSocket is about: one client's part of it. Nothing is queued: what a client has not
    taken is what the topic has newer than that. On the network thread. */
class CWebSocketTopic
{
public:
    virtual ~CWebSocketTopic();
    /** Begins to wake the subscriber. */
    virtual void Join(const std::shared_ptr<CSubscriber>& subscriber) = 0;
    /** Carries out a message of the client, and answers it. */
    virtual QByteArray Receive(const QByteArray& message) = 0;
    /** The next message that the client has not seen. */
    virtual t_WebSocketMessage Take() = 0;
};

namespace NWebSocket
{
/** What a target of HTTP is about, without its slash the name of its protocol; null for one that
    is no WebSocket. */
std::unique_ptr<CWebSocketTopic> MakeTopic(std::string_view target, t_HttpShared& shared);
} // namespace NWebSocket
