// SPDX-License-Identifier: MIT
#include "HttpClient.h"

#include <QJsonDocument>
#include <cerrno>

namespace
{
constexpr int kLongestAnswer = 256 << 20; ///< a hundred times the largest that a service gives
constexpr int kLongestHead = 64 << 10;
constexpr char kHttp[] = "HTTP/1.";
constexpr char kHeadEnd[] = "\r\n\r\n";

/** Whether what has come so far may be an answer of HTTP. */
bool IsHttp(const QByteArray& bytes)
{
    return QByteArray(kHttp).startsWith(bytes.left(static_cast<int>(sizeof kHttp) - 1));
}

/** Host and port are parted by the last ":", unless it is within an address of IPv6. */
int PortSign(const QString& place)
{
    const auto sign = place.lastIndexOf(QLatin1Char(':'));
    const bool isAddress = place.count(QLatin1Char(':')) > 1 && !place.startsWith(QLatin1Char('['));
    return isAddress || sign < place.indexOf(QLatin1Char(']')) ? -1 : static_cast<int>(sign);
}

/** A field of the head of an answer; empty where it has none. */
QByteArray FieldOf(const QByteArray& head, const char* name)
{
    const QByteArray wanted = QByteArray("\r\n") + name + ':';
    const auto at = head.toLower().indexOf(wanted);
    const auto begin = at + wanted.size();
    return at < 0 ? QByteArray() : head.mid(begin, head.indexOf("\r\n", begin) - begin).trimmed();
}

int StatusOf(const QByteArray& answer)
{
    return answer.mid(9, 3).toInt();
}

QString WhatIsWrong(const QByteArray& answer)
{
    return answer.isEmpty() ? QStringLiteral("it hung up; is it the port of JSON (5026)?")
                            : QStringLiteral("what came is no answer of the service; is it the "
                                             "port of JSON (5026)?");
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

QByteArray CHttpClient::HeadOf(const QByteArray& method, const QByteArray& target) const
{
    QByteArray head = method + ' ' + target + " HTTP/1.1\r\nHost: localhost\r\n";
    if (!m_token.isEmpty())
    {
        head += "Authorization: Bearer " + m_token + "\r\n";
    }
    return head;
}

COrderedJson CHttpClient::Ask(const QByteArray& method, const QByteArray& target,
                              const QByteArray& body) const
{
    const CSocket socket = Connect();
    // Who refuses a request may have hung up before all of it was sent: the answer counts.
    const bool isSent =
        socket.Send(HeadOf(method, target) +
                    "Connection: close\r\nContent-Type: application/json\r\nContent-Length: " +
                    QByteArray::number(body.size()) + kHeadEnd + body);
    QByteArray answer;
    int received = 1;
    while (received > 0 && IsHttp(answer) && answer.size() < kLongestAnswer)
    {
        received = socket.Receive(answer);
    }
    if (answer.isEmpty() && (!isSent || received < 0))
    {
        throw socket.LostBy(errno);
    }
    return Read(socket, answer);
}

COrderedJson CHttpClient::Read(const CSocket& socket, const QByteArray& answer) const
{
    if (!answer.startsWith(kHttp))
    {
        throw socket.Lost(WhatIsWrong(answer));
    }
    const auto end = answer.indexOf(kHeadEnd);
    const auto begin = end + static_cast<int>(sizeof kHeadEnd) - 1;
    const int length = FieldOf(answer.left(end + 2), "content-length").toInt();
    if (end < 0 || answer.size() - begin < length)
    {
        throw socket.Lost(QStringLiteral("the connection was lost in the middle of an answer"));
    }
    const int status = StatusOf(answer);
    if (status == 401)
    {
        throw CFailure(eSTATUS_USAGE,
                       m_token.isEmpty()
                           ? QStringLiteral("the service wants a token: --token-file FILE")
                           : QStringLiteral("the service does not take this token"));
    }
    auto document = COrderedJson::Parse(answer.mid(begin));
    if (!document || !document->IsObject())
    {
        throw socket.Lost(QStringLiteral("what came is no answer of the service"));
    }
    if (status == 413 || status == 421)
    {
        throw CFailure(eSTATUS_USAGE, QStringLiteral("the service refuses to answer: %1")
                                          .arg((*document)["detail"].GetText()));
    }
    return std::move(*document);
}

CWebSocket CHttpClient::Open(const QByteArray& target) const
{
    CSocket socket = Connect();
    const QByteArray key = CWebSocket::MakeKey();
    QByteArray answer;
    int received = socket.Send(HeadOf("GET", target) +
                               "Connection: Upgrade\r\nUpgrade: websocket\r\n"
                               "Sec-WebSocket-Version: 13\r\nSec-WebSocket-Key: " +
                               key + kHeadEnd)
                       ? 1
                       : -1;
    while (received > 0 && IsHttp(answer) && !answer.contains(kHeadEnd) &&
           answer.size() < kLongestHead)
    {
        received = socket.Receive(answer);
    }
    if (received < 0)
    {
        throw socket.LostBy(errno);
    }
    const auto end = answer.indexOf(kHeadEnd);
    const bool isAgreed =
        StatusOf(answer) == 101 &&
        FieldOf(answer.left(end + 2), "sec-websocket-accept") == CWebSocket::AnswerTo(key);
    if (end < 0 || !isAgreed)
    {
        throw socket.Lost(QStringLiteral("it tells of no changes"));
    }
    return {std::move(socket), answer.mid(end + static_cast<int>(sizeof kHeadEnd) - 1)};
}
