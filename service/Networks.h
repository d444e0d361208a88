// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>
#include <boost/asio/ip/address.hpp>
#include <vector>

/**
 * Networks whose hosts may connect, written as "192.168.1.0/24", "fd00::/8", or an address alone.
 * This machine's own loopback addresses always belong to them.
 */
class CNetworks
{
public:
    /** False and what is wrong with which one; those before it are kept. */
    bool Add(const QStringList& networks, QString& error);
    bool Contains(const boost::asio::ip::address& address) const;
    bool IsEmpty() const { return m_networks.empty(); }

    /** An IPv4 address that a socket of IPv6 shows is that IPv4 address. */
    static boost::asio::ip::address Plain(const boost::asio::ip::address& address);
    static bool IsLoopback(const boost::asio::ip::address& address);

private:
    struct t_Network
    {
        boost::asio::ip::address address;
        int bits; ///< of the address that must be the same
    };
    static bool Parse(const QString& text, t_Network& network, QString& error);
    static bool IsWithin(const boost::asio::ip::address& address, const t_Network& network);

    std::vector<t_Network> m_networks;
};
