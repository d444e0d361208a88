// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <memory>

/** The client's side of a WebSocket whose messages are texts. */
class CWebSocket
{
public:
    /** Asks for one; `token` may be empty. Fails (CLostService) where none is given. */
    CWebSocket(const QByteArray& host, const QByteArray& port, const QByteArray& target,
               const QByteArray& token);
    ~CWebSocket();
    CWebSocket(CWebSocket&& other) noexcept;
    CWebSocket(const CWebSocket&) = delete;
    CWebSocket& operator=(const CWebSocket&) = delete;

    void Send(const QByteArray& text);
    /** Waits for the next message. Fails (CLostService) where none comes. */
    QByteArray Take();

private:
    struct t_Stream;
    std::unique_ptr<t_Stream> m_stream;
};
