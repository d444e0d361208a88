// SPDX-License-Identifier: MIT
#pragma once

#include "RemoteGuard.h"
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
 * reads nothing or leaves a message unfinished for too long, with one that has gone without a word,
 * and with one that speaks HTTP.
 */
class CRemoteConnection : public std::enable_shared_from_this<CRemoteConnection>
{
public:
    struct t_Patience
    {
        std::chrono::seconds write;   ///< for which answers may stay unread
        std::chrono::seconds message; ///< in which a message that has begun must end
    };

    /** What it tells its server. */
    struct t_Events
    {
        std::function<void()> closed;
        std::function<void()> watches; ///< conditions from now on
    };

    CRemoteConnection(boost::asio::io_context& network, boost::asio::ip::tcp::socket socket,
                      const t_Patience& patience, t_Events events)
        : m_network(network), m_socket(std::move(socket)), m_writeTimer(network),
          m_messageTimer(network), m_patience(patience), m_events(std::move(events))
    {
    }

    void Start(const std::shared_ptr<IKWFunctionRootBase>& root,
               const std::shared_ptr<CRemoteTasks>& tasks, const t_RemoteOptions& options);
    void Close();
    bool IsOpen() const { return m_socket.is_open(); }
    /** Whether Observe is to be called. */
    bool Watches() const { return m_watches && m_session; }
    void Observe(const t_RemoteConditions& conditions);

private:
    void Read();
    void OnRead(std::size_t count);
    void Write();
    void WriteRest();
    void Continue();
    /** Writes and reads what can be, and goes on behind others if there is more to do. */
    void GoOn();
    /** Hands the bytes to the session unless they are, or may be, those of an HTTP request. */
    CRemoteGuard::eVERDICT Pass(std::size_t count);
    void WatchMessage();
    void AwaitMessage();

    boost::asio::io_context& m_network;
    boost::asio::ip::tcp::socket m_socket;
    boost::asio::steady_timer m_writeTimer;
    boost::asio::steady_timer m_messageTimer;
    const t_Patience m_patience;
    const t_Events m_events;
    bool m_watches = false;
    std::unique_ptr<CRemoteSession> m_session;
    std::array<char, 16384> m_input{};
    std::optional<CRemoteGuard> m_guard{std::in_place}; ///< until it has decided
    std::size_t m_watched = 0; ///< number of the message that the timer runs for; 0 for none
    QByteArray m_output;
    bool m_isReading = false;
    bool m_hasEnded = false; ///< the client sends no more, and may still read
    bool m_isWriting = false;
    bool m_isQueued = false; ///< to go on
};
