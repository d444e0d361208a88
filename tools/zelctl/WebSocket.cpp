// SPDX-License-Identifier: MIT
#include "WebSocket.h"

#include "SocketStream.h"

#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/websocket.hpp>

namespace beast = boost::beast;
namespace websocket = boost::beast::websocket;

namespace
{
constexpr std::size_t kLongestMessage = 64U << 20U; ///< far beyond what a service keeps for one
} // namespace

struct CWebSocket::t_Stream
{
    t_Stream(const QByteArray& host, const QByteArray& port) : socket(host, port) {}

    /** Fails where there is an error. */
    void Check(const boost::system::error_code& error)
    {
        const CSocket& own = socket.next_layer().GetSocket();
        if (error == websocket::error::closed || error == boost::asio::error::eof)
        {
            throw own.Lost(QStringLiteral("it hung up"));
        }
        if (error.category() == boost::system::system_category() && error)
        {
            throw own.LostBy(error.value());
        }
        if (error)
        {
            throw own.Lost(QStringLiteral("what came is no answer of the service"));
        }
    }

    websocket::stream<CSocketStream> socket;
};

CWebSocket::CWebSocket(const QByteArray& host, const QByteArray& port, const QByteArray& target,
                       const QByteArray& token)
    : m_stream(std::make_unique<t_Stream>(host, port))
{
    if (!token.isEmpty())
    {
        m_stream->socket.set_option(websocket::stream_base::decorator(
            [token](websocket::request_type& request) {
                request.set(beast::http::field::authorization, ("Bearer " + token).toStdString());
            }));
    }
    m_stream->socket.read_message_max(kLongestMessage);
    boost::system::error_code error;
    m_stream->socket.handshake("localhost", target.toStdString(), error);
    if (error && error.category() != boost::system::system_category())
    {
        throw m_stream->socket.next_layer().GetSocket().Lost(
            QStringLiteral("it tells of no changes"));
    }
    m_stream->Check(error);
}

CWebSocket::~CWebSocket() = default;
CWebSocket::CWebSocket(CWebSocket&& other) noexcept = default;

void CWebSocket::Send(const QByteArray& text)
{
    boost::system::error_code error;
    m_stream->socket.write(
        boost::asio::buffer(text.constData(), static_cast<std::size_t>(text.size())), error);
    m_stream->Check(error);
}

QByteArray CWebSocket::Take()
{
    beast::flat_buffer message;
    boost::system::error_code error;
    m_stream->socket.read(message, error);
    m_stream->Check(error);
    return {static_cast<const char*>(message.data().data()), static_cast<int>(message.size())};
}
