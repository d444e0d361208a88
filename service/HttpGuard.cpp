// SPDX-License-Identifier: MIT
#include "HttpGuard.h"

#include <algorithm>
#include <boost/asio/ip/address.hpp>
#include <boost/beast/http/rfc7230.hpp>
#include <string>

namespace
{
std::string Lower(std::string_view text)
{
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](char c)
                   { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return lower;
}

/** A host without its port and without the brackets of IPv6. */
std::string_view NameOf(std::string_view host)
{
    if (!host.empty() && host.front() == '[')
    {
        const auto end = host.find(']');
        return end == std::string_view::npos ? host : host.substr(1, end - 1);
    }
    return host.substr(0, host.rfind(':'));
}

bool IsThisMachine(std::string_view host)
{
    const std::string name = Lower(NameOf(host));
    boost::system::error_code wrong;
    boost::asio::ip::make_address(name, wrong);
    return !wrong || name == "localhost";
}

bool IsSameOrigin(const t_HttpSender& sender)
{
    const std::string origin = Lower(sender.origin);
    const std::string host = Lower(sender.host);
    // A proxy in front may speak TLS.
    return origin.empty() || origin == "http://" + host || origin == "https://" + host;
}

bool ShowsToken(std::string_view authorization, const CAccessToken& token)
{
    constexpr std::string_view kScheme = "bearer ";
    return Lower(authorization.substr(0, kScheme.size())) == kScheme &&
           token.Matches(authorization.substr(kScheme.size()));
}

bool ShowsTokenByProtocol(std::string_view protocols, const CAccessToken& token)
{
    constexpr std::string_view kPrefix = "bearer.";
    const boost::beast::http::token_list list({protocols.data(), protocols.size()});
    return std::any_of(
        list.begin(), list.end(),
        [&](const auto& protocol)
        {
            const std::string_view name(protocol.data(), protocol.size());
            if (name.substr(0, kPrefix.size()) != kPrefix)
            {
                return false;
            }
            const auto coded = name.substr(kPrefix.size());
            const QByteArray shown =
                QByteArray::fromBase64(QByteArray(coded.data(), static_cast<int>(coded.size())),
                                       QByteArray::Base64UrlEncoding);
            return token.Matches({shown.constData(), static_cast<std::size_t>(shown.size())});
        });
}
} // namespace

int NHttp::Check(const t_HttpSender& sender, const CAccessToken* token)
{
    if (!IsThisMachine(sender.host))
    {
        return 421;
    }
    if (!IsSameOrigin(sender))
    {
        return 403;
    }
    const bool isLetIn = token == nullptr || ShowsToken(sender.authorization, *token) ||
                         ShowsTokenByProtocol(sender.protocols, *token);
    return isLetIn ? 200 : 401;
}
