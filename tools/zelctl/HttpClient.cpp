// SPDX-License-Identifier: MIT
#include "HttpClient.h"

#include "SocketStream.h"

#include <QJsonDocument>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http.hpp>

namespace http = boost::beast::http;

namespace
{
using t_Error = boost::system::error_code;

constexpr std::uint64_t kLongestAnswer = 256U << 20U; ///< a hundred times the largest of a service
constexpr std::uint32_t kLongestHead = 64U << 10U;
constexpr unsigned kVersion = 11;

/** Host and port are parted by the last ":", unless it is within an address of IPv6. */
int PortSign(const QString& place)
{
    const auto sign = place.lastIndexOf(QLatin1Char(':'));
    const bool isAddress = place.count(QLatin1Char(':')) > 1 && !place.startsWith(QLatin1Char('['));
    return isAddress || sign < place.indexOf(QLatin1Char(']')) ? -1 : static_cast<int>(sign);
}

/** What a request that was not answered fails with. */
CLostService Failed(const CSocket& socket, const t_Error& error)
{
    if (error.category() == boost::system::system_category())
    {
        return socket.LostBy(error.value());
    }
    if (error == http::error::partial_message || error == http::error::need_more)
    {
        return socket.Lost(QStringLiteral("the connection was lost in the middle of an answer"));
    }
    return socket.Lost(error == http::error::end_of_stream
                           ? QStringLiteral("it hung up; is it the port of JSON (5026)?")
                           : QStringLiteral("what came is no answer of the service; is it the "
                                            "port of JSON (5026)?"));
}
} // namespace

CHttpClient::CHttpClient(const QString& place, QByteArray token) : m_token(std::move(token))
{
    const int sign = PortSign(place);
    QString host = sign < 0 ? place : place.left(sign);
    if (host.startsWith(QLatin1Char('[')))
    {
        host = host.mid(1).chopped(1);
    }
    m_host = host.toUtf8();
    m_port = sign < 0 ? QByteArray("5026") : place.mid(sign + 1).toUtf8();
}

COrderedJson CHttpClient::Get(const QByteArray& target) const
{
    return Ask("GET", target, {});
}

COrderedJson CHttpClient::Post(const char* target, const QJsonObject& body) const
{
    return Ask("POST", target, QJsonDocument(body).toJson(QJsonDocument::Compact));
}

COrderedJson CHttpClient::Ask(const QByteArray& method, const QByteArray& target,
                              const QByteArray& body) const
{
    CSocketStream stream(m_host, m_port);
    http::request<http::string_body> request(http::string_to_verb(method.toStdString()),
                                             target.toStdString(), kVersion, body.toStdString());
    request.set(http::field::host, "localhost");
    request.set(http::field::content_type, "application/json");
    request.keep_alive(false);
    request.prepare_payload();
    if (!m_token.isEmpty())
    {
        request.set(http::field::authorization, ("Bearer " + m_token).toStdString());
    }
    // Who refuses a request may have hung up before all of it was sent: the answer counts.
    t_Error unsent;
    http::write(stream, request, unsent);
    boost::beast::flat_buffer bytes;
    http::response_parser<http::string_body> parser;
    parser.body_limit(kLongestAnswer);
    parser.header_limit(kLongestHead);
    t_Error error;
    http::read(stream, bytes, parser, error);
    const CSocket& socket = stream.GetSocket();
    if (error)
    {
        throw Failed(socket, unsent && !parser.got_some() ? unsent : error);
    }
    const http::response<http::string_body>& answer = parser.get();
    if (answer.result() == http::status::unauthorized)
    {
        throw CFailure(eSTATUS_USAGE,
                       m_token.isEmpty()
                           ? QStringLiteral("the service wants a token: --token-file FILE")
                           : QStringLiteral("the service does not take this token"));
    }
    auto document =
        COrderedJson::Parse({answer.body().data(), static_cast<int>(answer.body().size())});
    if (!document || !document->IsObject())
    {
        throw socket.Lost(QStringLiteral("what came is no answer of the service"));
    }
    if (answer.result() == http::status::payload_too_large ||
        answer.result() == http::status::misdirected_request)
    {
        throw CFailure(eSTATUS_USAGE, QStringLiteral("the service refuses to answer: %1")
                                          .arg((*document)["detail"].GetText()));
    }
    return std::move(*document);
}
