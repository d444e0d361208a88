// SPDX-License-Identifier: MIT
#include "HttpConnection.h"

#include "HttpGuard.h"
#include "KWBrackets.h"
#include "WebSocketConnection.h"

#include <array>
#include <boost/asio/post.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/core/tcp_stream.hpp>
#include <boost/beast/http.hpp>
#include <boost/beast/websocket/rfc6455.hpp>
#include <optional>

namespace beast = boost::beast;
namespace http = beast::http;
namespace websocket = beast::websocket;

namespace
{
/**
 * One client's socket. Requests are answered one after the other; what takes its time runs on a
 * thread of its own meanwhile. A request that is refused by its head is not read: the answer is
 * sent, and what still comes is thrown away for a while, so that the client sees the answer.
 */
class CHttpConnection : public CHttpClient, public std::enable_shared_from_this<CHttpConnection>
{
public:
    CHttpConnection(std::shared_ptr<t_HttpShared> shared, boost::asio::ip::tcp::socket socket)
        : m_shared(std::move(shared)), m_stream(std::move(socket))
    {
    }

    bool IsOpen() const override { return m_stream.socket().is_open(); }
    void Close() override
    {
        m_stream.expires_never();
        m_stream.close();
    }
    void Read();

private:
    using t_Error = beast::error_code;
    using t_Step = void (CHttpConnection::*)(const t_Error&);

    /** What goes on with a step when something has ended. */
    auto Then(t_Step step)
    {
        return [self = shared_from_this(), step](const t_Error& error, std::size_t)
        { (self.get()->*step)(error); };
    }

    void OnHead(const t_Error& error);
    void ReadBody(const t_Error& error);
    void OnBody(const t_Error& error);
    void Execute(t_JsonRequest request);
    /** Answers with a file of the panel, without looking at a body. */
    void SendPanel();
    void Send(const t_JsonAnswer& answer);
    /** Sends the response, whose body is there. */
    void Send();
    void OnSent(const t_Error& error);
    void Drain(const t_Error& error);
    /** Answers a request that is not read to its end. */
    void Refuse(int status, const char* why);
    int CheckHead() const;
    bool IsPanel() const;
    bool IsTopic() const;
    std::string_view Header(http::field field) const;

    const std::shared_ptr<t_HttpShared> m_shared;
    beast::tcp_stream m_stream;
    beast::flat_buffer m_buffer{128U << 10U};
    std::optional<http::request_parser<http::string_body>> m_parser;
    http::response<http::string_body> m_response;
    std::array<char, 16384> m_rest{};
    bool m_isLast = false; ///< the connection ends behind the answer
};

int StatusOf(const boost::system::error_code& error)
{
    return error == http::error::body_limit ? 413 : error == http::error::header_limit ? 431 : 400;
}

void CHttpConnection::Read()
{
    m_parser.emplace();
    m_parser->header_limit(static_cast<std::uint32_t>(m_shared->bounds.header));
    m_parser->body_limit(m_shared->bounds.body);
    m_stream.expires_after(m_shared->bounds.request);
    http::async_read_header(m_stream, m_buffer, *m_parser, Then(&CHttpConnection::OnHead));
}

std::string_view CHttpConnection::Header(http::field field) const
{
    const auto value = m_parser->get()[field];
    return {value.data(), value.size()};
}

int CHttpConnection::CheckHead() const
{
    return NHttp::Check({Header(http::field::host), Header(http::field::origin),
                         Header(http::field::authorization),
                         Header(http::field::sec_websocket_protocol)},
                        IsPanel() ? nullptr : m_shared->token);
}

bool CHttpConnection::IsPanel() const
{
    const auto& head = m_parser->get();
    const auto target = head.target();
    return (head.method() == http::verb::get || head.method() == http::verb::head) &&
           CPanelFiles::Has({target.data(), target.size()});
}

bool CHttpConnection::IsTopic() const
{
    const auto target = m_parser->get().target();
    return target == "/changes" || target == "/waves";
}

void CHttpConnection::OnHead(const t_Error& error)
{
    if (error && error.category() == http::make_error_code(http::error::bad_method).category() &&
        error != http::error::end_of_stream && error != http::error::partial_message)
    {
        Refuse(StatusOf(error), "the request can not be read");
        return;
    }
    if (error)
    {
        Close();
        return;
    }
    if (const int status = CheckHead(); status != 200)
    {
        Refuse(status, status == 401 ? "the token is wanted"
                                     : "the request comes from another host's page");
        return;
    }
    if (IsPanel())
    {
        SendPanel();
        return;
    }
    if (websocket::is_upgrade(m_parser->get()) && IsTopic())
    {
        m_stream.expires_never();
        StartWebSocket(m_shared, m_stream.release_socket(), m_parser->release());
        return;
    }
    if (Header(http::field::expect) == "100-continue")
    {
        static constexpr std::string_view kContinue = "HTTP/1.1 100 Continue\r\n\r\n";
        boost::asio::async_write(m_stream, boost::asio::buffer(kContinue.data(), kContinue.size()),
                                 Then(&CHttpConnection::ReadBody));
        return;
    }
    ReadBody({});
}

void CHttpConnection::ReadBody(const t_Error& error)
{
    if (error)
    {
        Close();
        return;
    }
    http::async_read(m_stream, m_buffer, *m_parser, Then(&CHttpConnection::OnBody));
}

void CHttpConnection::OnBody(const t_Error& error)
{
    if (error == http::error::body_limit)
    {
        Refuse(StatusOf(error), "the body is too long");
        return;
    }
    if (error)
    {
        Close();
        return;
    }
    m_stream.expires_never();
    const auto& head = m_parser->get();
    const auto method = head.method_string();
    const auto target = head.target();
    m_isLast = !head.keep_alive() || head.method() == http::verb::head;
    Execute({QByteArray(method.data(), static_cast<int>(method.size())),
             QByteArray(target.data(), static_cast<int>(target.size())),
             QByteArray::fromStdString(head.body())});
}

void CHttpConnection::Execute(t_JsonRequest request)
{
    const auto service = m_shared->service;
    if (service->IsQuick(request))
    {
        const CKWClientOrigin remote(eCLIENT_REMOTE);
        Send(service->Answer(request));
        return;
    }
    const auto answer = std::make_shared<t_JsonAnswer>(t_JsonAnswer{503, QByteArray()});
    const auto task = m_shared->tasks->Start(
        [service, request = std::move(request), answer]
        {
            const CKWClientOrigin remote(eCLIENT_REMOTE);
            *answer = service->Answer(request);
            return t_RemoteError{};
        },
        [&network = m_shared->network, self = weak_from_this(), answer]
        {
            boost::asio::post(network,
                              [self, answer]
                              {
                                  if (const auto connection = self.lock())
                                  {
                                      connection->Send(*answer);
                                  }
                              });
        });
    if (!task)
    {
        Send(CJsonService::Refuse(503, eKW_ACC_TIMEOUT,
                                  QStringLiteral("too many requests take their time")));
    }
}

void CHttpConnection::Refuse(int status, const char* why)
{
    m_isLast = true;
    const KW_ACCEPTANCE code = status == 413 || status == 431 ? eKW_ACC_TOO_LONG
                               : status == 400                ? eKW_ACC_BAD_TEXT
                                                              : eKW_ACC_NOT_AVAILABLE;
    Send(CJsonService::Refuse(status, code, QString::fromLatin1(why)));
}

void CHttpConnection::SendPanel()
{
    const auto& head = m_parser->get();
    const auto target = head.target();
    t_PanelAnswer answer = m_shared->panel.Answer({{target.data(), target.size()},
                                                   Header(http::field::accept_encoding),
                                                   Header(http::field::if_none_match)});
    m_isLast = !head.keep_alive() || head.method() == http::verb::head || !m_parser->is_done();
    if (answer.status == 404)
    {
        Send(CJsonService::Refuse(404, eKW_ACC_NOT_FOUND,
                                  QStringLiteral("the folder of the panel has no such file")));
        return;
    }
    m_response = {};
    m_response.result(static_cast<unsigned>(answer.status));
    m_response.set(http::field::cache_control, "no-cache"); // asks each time whether it changed
    m_response.set(http::field::etag, answer.tag);
    m_response.set(http::field::vary, "Accept-Encoding");
    m_response.set("Content-Security-Policy", CPanelFiles::Policy());
    m_response.set("Cross-Origin-Opener-Policy", "same-origin");
    m_response.set("Referrer-Policy", "no-referrer");
    m_response.set("X-Frame-Options", "DENY");
    if (answer.status == 200)
    {
        m_response.set(http::field::content_type, answer.type);
        if (answer.isZipped)
        {
            m_response.set(http::field::content_encoding, "gzip");
        }
        m_response.body() = std::move(answer.body);
    }
    Send();
}

void CHttpConnection::Send(const t_JsonAnswer& answer)
{
    m_response = {};
    m_response.result(static_cast<unsigned>(answer.status));
    m_response.set(http::field::content_type, "application/json");
    m_response.set(http::field::cache_control, "no-store");
    if (answer.status == 426)
    {
        m_response.set(http::field::upgrade, "websocket");
    }
    if (answer.status == 401)
    {
        m_response.set(http::field::www_authenticate, "Bearer");
    }
    m_response.body().assign(answer.body.constData(), static_cast<std::size_t>(answer.body.size()));
    Send();
}

void CHttpConnection::Send()
{
    m_response.set("X-Content-Type-Options", "nosniff");
    m_response.set("Cross-Origin-Resource-Policy", "same-origin");
    if (m_response.result() != http::status::not_modified)
    {
        m_response.prepare_payload();
    }
    if (m_parser->is_header_done() && m_parser->get().method() == http::verb::head)
    {
        m_response.body().clear(); // its length is told
    }
    m_response.keep_alive(!m_isLast);
    m_stream.expires_after(m_shared->bounds.answer);
    http::async_write(m_stream, m_response, Then(&CHttpConnection::OnSent));
}

void CHttpConnection::OnSent(const t_Error& error)
{
    m_response = {}; // a large answer
    if (error)
    {
        Close();
        return;
    }
    if (!m_isLast)
    {
        Read();
        return;
    }
    t_Error ignored;
    m_stream.socket().shutdown(boost::asio::ip::tcp::socket::shutdown_send, ignored);
    m_stream.expires_after(m_shared->bounds.linger);
    Drain({});
}

void CHttpConnection::Drain(const t_Error& error)
{
    if (error)
    {
        Close();
        return;
    }
    m_stream.async_read_some(boost::asio::buffer(m_rest), Then(&CHttpConnection::Drain));
}
} // namespace

void StartHttp(const std::shared_ptr<t_HttpShared>& shared, boost::asio::ip::tcp::socket socket)
{
    boost::system::error_code ignored;
    socket.set_option(boost::asio::ip::tcp::no_delay(true), ignored);
    socket.set_option(boost::asio::socket_base::keep_alive(true), ignored);
    const auto connection = std::make_shared<CHttpConnection>(shared, std::move(socket));
    shared->clients.push_back(connection);
    connection->Read();
}
