// SPDX-License-Identifier: MIT
#include "Listener.h"

#include "ServiceLimits.h"

#include <algorithm>
#include <boost/asio/ip/v6_only.hpp>

using boost::asio::ip::tcp;

bool CListener::IsLocal(const QStringList& addresses)
{
    return std::all_of(addresses.begin(), addresses.end(),
                       [](const QString& text)
                       {
                           boost::system::error_code wrong;
                           const auto address =
                               boost::asio::ip::make_address(text.toStdString(), wrong);
                           return wrong || CNetworks::IsLoopback(address);
                       });
}

bool CListener::Listen(const QStringList& addresses, unsigned short port, QString& error)
{
    m_port = port;
    if (addresses.isEmpty() || addresses.size() > NServiceLimits::kAddresses)
    {
        error = QStringLiteral("1 to %1 addresses are wanted").arg(NServiceLimits::kAddresses);
    }
    for (const QString& address : addresses)
    {
        if (error.isEmpty())
        {
            Bind(address, error);
        }
    }
    if (!error.isEmpty())
    {
        m_places.clear();
        m_port = 0;
    }
    return error.isEmpty();
}

bool CListener::Bind(const QString& text, QString& error)
{
    boost::system::error_code wrong;
    const auto address = boost::asio::ip::make_address(text.toStdString(), wrong);
    if (wrong)
    {
        error = QStringLiteral("address \"%1\": an IPv4 or IPv6 address is wanted").arg(text);
        return false;
    }
    tcp::acceptor& acceptor = m_places.emplace_back(m_network).acceptor;
    const tcp::endpoint endpoint(address, m_port);
    acceptor.open(endpoint.protocol(), wrong);
    if (!wrong && address.is_v6())
    {
        // "::" alone would take the port of "0.0.0.0" as well.
        acceptor.set_option(boost::asio::ip::v6_only(true), wrong);
    }
    if (!wrong)
    {
        acceptor.set_option(tcp::acceptor::reuse_address(true), wrong);
    }
    if (!wrong)
    {
        acceptor.bind(endpoint, wrong);
    }
    if (!wrong)
    {
        acceptor.listen(tcp::acceptor::max_listen_connections, wrong);
    }
    if (wrong)
    {
        error = QStringLiteral("address %1, port %2: %3")
                    .arg(text)
                    .arg(m_port)
                    .arg(QString::fromLocal8Bit(wrong.message().c_str()));
        return false;
    }
    m_port = acceptor.local_endpoint().port();
    return true;
}

void CListener::Start()
{
    for (t_Place& place : m_places)
    {
        Accept(place);
    }
}

void CListener::Stop()
{
    boost::system::error_code ignored;
    for (t_Place& place : m_places)
    {
        place.acceptor.close(ignored);
        place.pause.cancel();
    }
}

void CListener::Accept(t_Place& place)
{
    place.acceptor.async_accept(
        [this, &place](const boost::system::error_code& error, tcp::socket socket)
        {
            if (!place.acceptor.is_open())
            {
                return;
            }
            if (error)
            {
                AcceptLater(place);
                return;
            }
            if (IsWelcome(socket))
            {
                m_accepted(std::move(socket));
            }
            Accept(place);
        });
}

/** The process has no file descriptor left, or the like: trying at once would take all its time. */
void CListener::AcceptLater(t_Place& place)
{
    place.pause.expires_after(std::chrono::milliseconds(NServiceLimits::kPauseMilliseconds));
    place.pause.async_wait(
        [this, &place](const boost::system::error_code& error)
        {
            if (!error && place.acceptor.is_open())
            {
                Accept(place);
            }
        });
}

bool CListener::IsWelcome(const tcp::socket& socket) const
{
    boost::system::error_code gone;
    const auto peer = socket.remote_endpoint(gone);
    return !gone && (!m_isGuarded || m_allowed.Contains(peer.address()));
}
