// SPDX-License-Identifier: MIT
#include "WebSocketConnection.h"

#include "WebSocketTopics.h"

#include <boost/asio/steady_timer.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/core/tcp_stream.hpp>
#include <boost/beast/http/string_body.hpp>
#include <boost/beast/websocket.hpp>

namespace beast = boost::beast;
namespace websocket = beast::websocket;

namespace
{
/**
 * A subscriber. A message of its client is answered before the next one is read; changes go out
 * while nothing else does. So nothing waits here: what a slow client has not seen is what the
 * changes have behind its number. Who takes nothing for too long is dropped.
 */
class CWebSocketConnection : public CHttpClient,
                             public CSubscriber,
                             public std::enable_shared_from_this<CWebSocketConnection>
{
public:
    using t_Request = beast::http::request<beast::http::string_body>;

    CWebSocketConnection(std::shared_ptr<t_HttpShared> shared, boost::asio::ip::tcp::socket socket,
                         t_Request request, std::unique_ptr<CWebSocketTopic> topic)
        : m_shared(std::move(shared)), m_stream(std::move(socket)), m_timer(m_shared->network),
          m_request(std::move(request)), m_topic(std::move(topic))
    {
    }

    void Start();
    bool IsOpen() const override { return beast::get_lowest_layer(m_stream).socket().is_open(); }
    void Close() override;
    bool IsListening() const override { return IsOpen(); }
    void Wake() override { Pump(); }

private:
    void ChooseProtocol();
    void Read();
    void OnMessage();
    /** Sends what there is to send, one message after the other. */
    void Pump();
    void Send(t_WebSocketMessage message);
    void OnSent(const beast::error_code& error);

    const std::shared_ptr<t_HttpShared> m_shared;
    websocket::stream<beast::tcp_stream> m_stream;
    boost::asio::steady_timer m_timer;
    const t_Request m_request;
    beast::flat_buffer m_input;
    const std::unique_ptr<CWebSocketTopic> m_topic;
    QByteArray m_reply; ///< to the last message, while it is not sent
    std::shared_ptr<const QByteArray> m_sending;
};

void CWebSocketConnection::Start()
{
    websocket::stream_base::timeout times{};
    times.handshake_timeout = m_shared->bounds.request;
    times.idle_timeout = m_shared->bounds.silence;
    times.keep_alive_pings = true;
    m_stream.set_option(times);
    m_stream.read_message_max(m_shared->bounds.message);
    ChooseProtocol();
    m_stream.async_accept(m_request,
                          [self = shared_from_this()](const beast::error_code& error)
                          {
                              if (error)
                              {
                                  self->Close();
                                  return;
                              }
                              self->m_topic->Join(self);
                              self->Read();
                          });
}

/** A page that offers protocols, one of them its token, goes on only when one is chosen. */
void CWebSocketConnection::ChooseProtocol()
{
    const auto target = m_request.target();
    const std::string protocol(target.substr(1));
    beast::http::token_list offered(m_request[beast::http::field::sec_websocket_protocol]);
    if (offered.exists(protocol))
    {
        m_stream.set_option(websocket::stream_base::decorator(
            [protocol](websocket::response_type& response)
            { response.set(beast::http::field::sec_websocket_protocol, protocol); }));
    }
}

void CWebSocketConnection::Close()
{
    m_timer.cancel();
    beast::get_lowest_layer(m_stream).close();
}

void CWebSocketConnection::Read()
{
    m_stream.async_read(m_input,
                        [self = shared_from_this()](const beast::error_code& error, std::size_t)
                        {
                            if (error)
                            {
                                self->Close();
                                return;
                            }
                            self->OnMessage();
                        });
}

void CWebSocketConnection::OnMessage()
{
    const auto bytes = m_input.cdata();
    const QByteArray message(static_cast<const char*>(bytes.data()),
                             static_cast<int>(bytes.size()));
    m_input.consume(m_input.size());
    m_reply = m_topic->Receive(message);
    Pump();
}

void CWebSocketConnection::Pump()
{
    if (m_sending || !IsOpen())
    {
        return;
    }
    if (!m_reply.isEmpty())
    {
        Send({std::make_shared<const QByteArray>(std::exchange(m_reply, QByteArray())), false});
        Read();
        return;
    }
    if (t_WebSocketMessage next = m_topic->Take(); next.bytes)
    {
        Send(std::move(next));
    }
}

void CWebSocketConnection::Send(t_WebSocketMessage message)
{
    m_stream.binary(message.isBinary);
    m_sending = std::move(message.bytes);
    m_timer.expires_after(m_shared->bounds.answer);
    m_timer.async_wait(
        [self = weak_from_this()](const beast::error_code& error)
        {
            const auto connection = error ? nullptr : self.lock();
            if (connection)
            {
                connection->Close();
            }
        });
    m_stream.async_write(
        boost::asio::buffer(m_sending->constData(), static_cast<std::size_t>(m_sending->size())),
        [self = shared_from_this()](const beast::error_code& error, std::size_t)
        { self->OnSent(error); });
}

void CWebSocketConnection::OnSent(const beast::error_code& error)
{
    m_sending = nullptr;
    m_timer.cancel();
    if (error)
    {
        Close();
        return;
    }
    Pump();
}
} // namespace

void StartWebSocket(const std::shared_ptr<t_HttpShared>& shared,
                    boost::asio::ip::tcp::socket socket, CWebSocketConnection::t_Request request)
{
    const auto target = request.target();
    auto topic = NWebSocket::MakeTopic({target.data(), target.size()}, *shared);
    const auto connection = std::make_shared<CWebSocketConnection>(
        shared, std::move(socket), std::move(request), std::move(topic));
    shared->clients.push_back(connection);
    connection->Start();
}
