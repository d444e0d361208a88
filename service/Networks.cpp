// SPDX-License-Identifier: MIT
#include "Networks.h"

#include "ServiceLimits.h"

#include <algorithm>

using boost::asio::ip::address;

namespace
{
/** Bytes of an address, those of the network first. */
std::vector<unsigned char> BytesOf(const address& of)
{
    if (of.is_v4())
    {
        const auto bytes = of.to_v4().to_bytes();
        return {bytes.begin(), bytes.end()};
    }
    const auto bytes = of.to_v6().to_bytes();
    return {bytes.begin(), bytes.end()};
}

bool BitOf(const std::vector<unsigned char>& bytes, int bit)
{
    return ((bytes[static_cast<std::size_t>(bit) / 8] >> (7 - bit % 8)) & 1) != 0;
}
} // namespace

address CNetworks::Plain(const address& of)
{
    return of.is_v6() && of.to_v6().is_v4_mapped()
               ? address(make_address_v4(boost::asio::ip::v4_mapped, of.to_v6()))
               : of;
}

bool CNetworks::IsLoopback(const address& of)
{
    return Plain(of).is_loopback();
}

bool CNetworks::Add(const QStringList& networks, QString& error)
{
    for (const QString& text : networks)
    {
        t_Network network;
        if (static_cast<int>(m_networks.size()) >= NServiceLimits::kNetworks)
        {
            error = QStringLiteral("more than %1 networks").arg(NServiceLimits::kNetworks);
            return false;
        }
        if (!Parse(text, network, error))
        {
            return false;
        }
        m_networks.push_back(network);
    }
    return true;
}

bool CNetworks::Parse(const QString& text, t_Network& network, QString& error)
{
    const QString host = text.section(QLatin1Char('/'), 0, 0);
    boost::system::error_code wrong;
    network.address = Plain(boost::asio::ip::make_address(host.toStdString(), wrong));
    if (wrong)
    {
        error = QStringLiteral("network \"%1\": no address such as 192.168.1.0/24").arg(text);
        return false;
    }
    const int most = network.address.is_v4() ? 32 : 128;
    bool isNumber = true;
    network.bits =
        text.contains(QLatin1Char('/')) ? text.section(QLatin1Char('/'), 1).toInt(&isNumber) : most;
    if (!isNumber || network.bits < 0 || network.bits > most)
    {
        error = QStringLiteral("network \"%1\": a prefix of 0 to %2 bits is wanted")
                    .arg(text)
                    .arg(most);
        return false;
    }
    const auto bytes = BytesOf(network.address);
    for (int bit = network.bits; bit < most; ++bit)
    {
        if (BitOf(bytes, bit))
        {
            error = QStringLiteral("network \"%1\": the address has bits behind its prefix; "
                                   "one host alone is /%2")
                        .arg(text)
                        .arg(most);
            return false;
        }
    }
    return true;
}

bool CNetworks::IsWithin(const address& of, const t_Network& network)
{
    if (of.is_v4() != network.address.is_v4())
    {
        return false;
    }
    const auto bytes = BytesOf(of);
    const auto wanted = BytesOf(network.address);
    for (int bit = 0; bit < network.bits; ++bit)
    {
        if (BitOf(bytes, bit) != BitOf(wanted, bit))
        {
            return false;
        }
    }
    return true;
}

bool CNetworks::Contains(const address& of) const
{
    const address plain = Plain(of);
    return plain.is_loopback() ||
           std::any_of(m_networks.begin(), m_networks.end(),
                       [&](const t_Network& network) { return IsWithin(plain, network); });
}
