// SPDX-License-Identifier: MIT
#pragma once

#include "Networks.h"

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/steady_timer.hpp>
#include <functional>
#include <list>

/** Accepts connections at one port of several addresses, from hosts that may connect. */
class CListener
{
public:
    /** `accepted` is called in the network's thread with each new socket. */
    CListener(boost::asio::io_context& network,
              std::function<void(boost::asio::ip::tcp::socket)> accepted)
        : m_network(network), m_accepted(std::move(accepted))
    {
    }

    /** Who may connect; everybody who reaches the addresses before it is called. Others are closed
        unread. */
    void Allow(CNetworks networks) { m_allowed = std::move(networks), m_isGuarded = true; }
    /** Binds all addresses, or none: then an error that names the address. Port 0 takes a free one,
        the same for all. */
    bool Listen(const QStringList& addresses, unsigned short port, QString& error);
    /** Begins to accept. */
    void Start();
    void Stop();
    /** 0 while it does not listen. */
    unsigned short GetPort() const { return m_port; }

    /** Whether all addresses are of this machine alone; those that are none count as such. */
    static bool IsLocal(const QStringList& addresses);

private:
    struct t_Place
    {
        t_Place(boost::asio::io_context& network) : acceptor(network), pause(network) {}
        boost::asio::ip::tcp::acceptor acceptor;
        boost::asio::steady_timer pause;
    };

    bool Bind(const QString& address, QString& error);
    void Accept(t_Place& place);
    void AcceptLater(t_Place& place);
    bool IsWelcome(const boost::asio::ip::tcp::socket& socket) const;

    boost::asio::io_context& m_network;
    const std::function<void(boost::asio::ip::tcp::socket)> m_accepted;
    CNetworks m_allowed;
    bool m_isGuarded = false;
    std::list<t_Place> m_places;
    unsigned short m_port = 0;
};
