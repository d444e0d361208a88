// SPDX-License-Identifier: MIT
#include "HttpClient.h"

#include "Failure.h"

#include <QJsonDocument>
#include <array>
#include <cerrno>
#include <cstring>
#include <netdb.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

namespace
{
constexpr int kPatienceSeconds = 60; ///< an operation is answered when it has ended

constexpr int kLongestAnswer = 256 << 20; ///< a hundred times the largest that a service gives
constexpr char kHttp[] = "HTTP/1.";

/** Whether what has come so far may be an answer of HTTP. */
bool IsHttp(const QByteArray& bytes)
{
    return QByteArray(kHttp).startsWith(bytes.left(static_cast<int>(sizeof kHttp) - 1));
}

/** A connection that is closed when its use ends. */
class CSocket
{
public:
    ~CSocket() { Close(); }
    CSocket() = default;
    CSocket(const CSocket&) = delete;
    CSocket& operator=(const CSocket&) = delete;

    bool Connect(const addrinfo& address)
    {
        Close();
        m_number =
            ::socket(address.ai_family, address.ai_socktype | SOCK_CLOEXEC, address.ai_protocol);
        const timeval patience{kPatienceSeconds, 0};
        ::setsockopt(m_number, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
        ::setsockopt(m_number, SOL_SOCKET, SO_SNDTIMEO, &patience, sizeof patience);
        return m_number >= 0 && ::connect(m_number, address.ai_addr, address.ai_addrlen) == 0;
    }

    bool Send(const QByteArray& bytes) const
    {
        for (ssize_t sent = 0; sent < bytes.size();)
        {
            const ssize_t count =
                ::send(m_number, bytes.constData() + sent,
                       static_cast<std::size_t>(bytes.size() - sent), MSG_NOSIGNAL);
            if (count <= 0)
            {
                return false;
            }
            sent += count;
        }
        return true;
    }

    /** What comes until the other side closes, or until it can be no answer of HTTP; false where
        nothing comes any more, and `errno` says why. */
    bool ReceiveAll(QByteArray& bytes) const
    {
        std::array<char, 65536> room{};
        ssize_t count = 0;
        while (IsHttp(bytes) && bytes.size() < kLongestAnswer &&
               (count = ::recv(m_number, room.data(), room.size(), 0)) > 0)
        {
            bytes.append(room.data(), static_cast<int>(count));
        }
        return count >= 0;
    }

private:
    void Close()
    {
        if (m_number >= 0)
        {
            ::close(m_number);
        }
        m_number = -1;
    }

    int m_number = -1;
};

/** Host and port are parted by the last ":", unless it is within an address of IPv6. */
int PortSign(const QString& place)
{
    const auto sign = place.lastIndexOf(QLatin1Char(':'));
    const bool isAddress = place.count(QLatin1Char(':')) > 1 && !place.startsWith(QLatin1Char('['));
    return isAddress || sign < place.indexOf(QLatin1Char(']')) ? -1 : static_cast<int>(sign);
}

/** What `errno` says of an exchange that came to no end. */
const char* WhyNothingCame(int error)
{
    return error == EAGAIN || error == EWOULDBLOCK ? "nothing has come for a minute"
                                                   : std::strerror(error);
}

/** Length that the head of an answer announces; -1 where it does not. */
int LengthIn(const QByteArray& head)
{
    const QByteArray name = "\r\ncontent-length:";
    const auto at = head.toLower().indexOf(name);
    if (at < 0)
    {
        return -1;
    }
    const auto begin = at + name.size();
    return head.mid(begin, head.indexOf("\r\n", begin) - begin).trimmed().toInt();
}

CFailure Unreachable(const QByteArray& host, const QByteArray& port, const char* why)
{
    return CFailure(eSTATUS_USAGE, QStringLiteral("no answer from %1, port %2: %3")
                                       .arg(QString::fromUtf8(host), QString::fromUtf8(port),
                                            QString::fromLocal8Bit(why)));
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
    QByteArray request = method + ' ' + target +
                         " HTTP/1.1\r\nHost: localhost\r\nConnection: close\r\n"
                         "Content-Type: application/json\r\nContent-Length: " +
                         QByteArray::number(body.size()) + "\r\n";
    if (!m_token.isEmpty())
    {
        request += "Authorization: Bearer " + m_token + "\r\n";
    }
    const QByteArray answer = Exchange(request + "\r\n" + body);
    if (answer.isEmpty())
    {
        throw Unreachable(m_host, m_port, "it hung up; is it the port of JSON (5026)?");
    }
    if (!answer.startsWith(kHttp))
    {
        throw Unreachable(m_host, m_port,
                          "what came is no answer of the service; is it the port "
                          "of JSON (5026)?");
    }
    const auto end = answer.indexOf("\r\n\r\n");
    const int length = LengthIn(answer.left(static_cast<int>(end) + 2));
    if (end < 0 || answer.size() - end - 4 < length)
    {
        throw Unreachable(m_host, m_port, "the connection was lost in the middle of an answer");
    }
    const int status = answer.mid(9, 3).toInt();
    if (status == 401)
    {
        throw CFailure(eSTATUS_USAGE,
                       m_token.isEmpty()
                           ? QStringLiteral("the service wants a token: --token-file FILE")
                           : QStringLiteral("the service does not take this token"));
    }
    auto document = COrderedJson::Parse(answer.mid(static_cast<int>(end) + 4));
    if (!document || !document->IsObject())
    {
        throw Unreachable(m_host, m_port, "what came is no answer of the service");
    }
    if (status == 413 || status == 421)
    {
        throw CFailure(eSTATUS_USAGE, QStringLiteral("the service refuses to answer: %1")
                                          .arg((*document)["detail"].GetText()));
    }
    return std::move(*document);
}

QByteArray CHttpClient::Exchange(const QByteArray& request) const
{
    addrinfo hints = {};
    hints.ai_socktype = SOCK_STREAM;
    addrinfo* found = nullptr;
    const int error = ::getaddrinfo(m_host.constData(), m_port.constData(), &hints, &found);
    if (error != 0)
    {
        throw Unreachable(m_host, m_port, ::gai_strerror(error));
    }
    CSocket socket;
    bool isConnected = false;
    for (const addrinfo* address = found; address != nullptr && !isConnected;
         address = address->ai_next)
    {
        isConnected = socket.Connect(*address);
    }
    const int refused = errno;
    ::freeaddrinfo(found);
    QByteArray answer;
    if (!isConnected)
    {
        throw Unreachable(m_host, m_port, std::strerror(refused));
    }
    // Who refuses a request may have hung up before all of it was sent: the answer counts.
    const bool isSent = socket.Send(request);
    const bool isReceived = socket.ReceiveAll(answer);
    if (answer.isEmpty() && !(isSent && isReceived))
    {
        throw Unreachable(m_host, m_port, WhyNothingCame(errno));
    }
    return answer;
}
