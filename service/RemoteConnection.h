// SPDX-License-Identifier: MIT
#pragma once

#include "RemoteSession.h"

#include <array>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/steady_timer.hpp>
#include <chrono>
#include <memory>

/**
 * One client's socket and session, on the network thread. Reads while the session wants input,
 * writes one piece of answers after the other, and ends with the first failure, with a client that
 * reads nothing for too long, and with one that speaks HTTP: a web page must not be able to send
 * commands.
 */
class CRemoteConnection : public std::enable_shared_from_this<CRemoteConnection>
{
public:
    CRemoteConnection(boost::asio::io_context& network, boost::asio::ip::tcp::socket socket,
                      std::chrono::seconds patience, std::function<void()> closed)
        : m_network(network), m_socket(std::move(socket)), m_timer(network), m_patience(patience),
          m_closed(std::move(closed))
    {
    }

    void Start(const std::shared_ptr<IKWFunctionRootBase>& root,
               const std::shared_ptr<CRemoteTasks>& tasks, const t_RemoteOptions& options);
    void Close();
    bool IsOpen() const { return m_socket.is_open(); }

private:
    void Read();
    void OnRead(std::size_t count);
    void Write();
    void WriteRest();
    void Continue();
    /** Writes and reads what can be, and goes on behind others if there is more to do. */
    void GoOn();
    /** Whether the first bytes of the connection are those of an HTTP request. */
    bool IsHttp(const char* bytes, std::size_t count);

    boost::asio::io_context& m_network;
    boost::asio::ip::tcp::socket m_socket;
    boost::asio::steady_timer m_timer;
    const std::chrono::seconds m_patience;
    const std::function<void()> m_closed;
    std::unique_ptr<CRemoteSession> m_session;
    std::array<char, 16384> m_input{};
    QByteArray m_begin; ///< the first bytes
    QByteArray m_output;
    bool m_isReading = false;
    bool m_hasEnded = false; ///< the client sends no more, and may still read
    bool m_isWriting = false;
    bool m_isQueued = false; ///< to go on
};
