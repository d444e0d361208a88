// SPDX-License-Identifier: MIT
#pragma once

#include "Socket.h"

#include <optional>

/** The client's side of a WebSocket (RFC 6455) whose messages are texts. */
class CWebSocket
{
public:
    /** What a client shows when it asks for one, and what the service answers to that. */
    ///@{
    static QByteArray MakeKey();
    static QByteArray AnswerTo(const QByteArray& key);
    ///@}

    /** Goes on with a connection whose service has agreed, and of which `bytes` have come since. */
    CWebSocket(CSocket socket, QByteArray bytes)
        : m_socket(std::move(socket)), m_bytes(std::move(bytes))
    {
    }

    void Send(const QByteArray& text);
    /** Waits for the next frame: a whole message, or nothing yet. Fails (CLostService) where none
        comes. */
    std::optional<QByteArray> Take();

private:
    struct t_Frame
    {
        int kind = 0;
        bool isLast = false; ///< of its message
        QByteArray payload;
    };

    void SendFrame(int kind, const QByteArray& payload);
    t_Frame TakeFrame();
    /** The next bytes; waits for them. */
    QByteArray TakeBytes(int count);

    CSocket m_socket;
    QByteArray m_bytes;   ///< that have come, from the beginning of a frame
    QByteArray m_message; ///< whose last frame has not come
};
