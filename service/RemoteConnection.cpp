// SPDX-License-Identifier: MIT
#include "RemoteConnection.h"

#include <algorithm>
#include <boost/asio/buffer.hpp>
#include <boost/asio/error.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/write.hpp>

namespace
{
constexpr std::array kMethods{"GET ",     "HEAD ",    "POST ",  "PUT ",   "DELETE ",
                              "CONNECT ", "OPTIONS ", "TRACE ", "PATCH ", "PRI "};
constexpr int kLongestMethod = 8;
} // namespace

void CRemoteConnection::Start(const std::shared_ptr<IKWFunctionRootBase>& root,
                              const std::shared_ptr<CRemoteTasks>& tasks,
                              const t_RemoteOptions& options)
{
    boost::system::error_code ignored;
    m_socket.set_option(boost::asio::ip::tcp::no_delay(true), ignored);
    m_socket.set_option(boost::asio::socket_base::keep_alive(true), ignored);
    m_socket.non_blocking(true, ignored);
    m_session = std::make_unique<CRemoteSession>(
        root, tasks, options,
        [&network = m_network, self = weak_from_this()]
        {
            boost::asio::post(network,
                              [self]
                              {
                                  if (const auto connection = self.lock())
                                  {
                                      connection->Continue();
                                  }
                              });
        });
    Read();
}

void CRemoteConnection::Close()
{
    boost::system::error_code ignored;
    m_timer.cancel();
    m_socket.close(ignored);
    if (std::exchange(m_session, nullptr))
    {
        m_closed();
    }
}

void CRemoteConnection::Read()
{
    if (m_isReading || m_hasEnded || !m_session || !m_session->WantsInput())
    {
        return;
    }
    m_isReading = true;
    m_socket.async_read_some(
        boost::asio::buffer(m_input),
        [self = shared_from_this()](const boost::system::error_code& error, std::size_t count)
        {
            self->m_isReading = false;
            if (error == boost::asio::error::eof && self->m_session)
            {
                self->m_hasEnded = true;
                self->GoOn();
                return;
            }
            if (error || !self->m_session || self->IsHttp(self->m_input.data(), count))
            {
                self->Close();
                return;
            }
            self->OnRead(count);
        });
}

void CRemoteConnection::OnRead(std::size_t count)
{
    m_session->Receive(m_input.data(), count);
    GoOn();
}

void CRemoteConnection::GoOn()
{
    Write();
    Read();
    if (m_session && !m_isWriting && m_session->HasMore() && !std::exchange(m_isQueued, true))
    {
        boost::asio::post(m_network,
                          [self = shared_from_this()]
                          {
                              self->m_isQueued = false;
                              self->Continue();
                          });
    }
    if (m_session && m_hasEnded && !m_isWriting && !m_isQueued && !m_session->IsWaiting())
    {
        Close();
    }
}

bool CRemoteConnection::IsHttp(const char* bytes, std::size_t count)
{
    if (m_begin.size() < kLongestMethod)
    {
        const auto missing = static_cast<std::size_t>(kLongestMethod - m_begin.size());
        m_begin.append(bytes, static_cast<int>(std::min(count, missing)));
        return std::any_of(kMethods.begin(), kMethods.end(),
                           [this](const char* method) { return m_begin.startsWith(method); });
    }
    return false;
}

void CRemoteConnection::Write()
{
    if (m_isWriting || !m_session)
    {
        return;
    }
    m_output = m_session->TakeAnswers();
    if (m_output.isEmpty())
    {
        return;
    }
    // Mostly the system takes it at once.
    boost::system::error_code refused;
    const std::size_t taken = m_socket.write_some(
        boost::asio::buffer(m_output.constData(), static_cast<std::size_t>(m_output.size())),
        refused);
    if (refused && refused != boost::asio::error::would_block)
    {
        Close();
        return;
    }
    m_output.remove(0, static_cast<int>(taken));
    if (!m_output.isEmpty())
    {
        WriteRest();
    }
}

void CRemoteConnection::WriteRest()
{
    m_isWriting = true;
    m_timer.expires_after(m_patience);
    m_timer.async_wait(
        [self = shared_from_this()](const boost::system::error_code& error)
        {
            if (!error)
            {
                self->Close();
            }
        });
    boost::asio::async_write(
        m_socket,
        boost::asio::buffer(m_output.constData(), static_cast<std::size_t>(m_output.size())),
        [self = shared_from_this()](const boost::system::error_code& error, std::size_t)
        {
            self->m_isWriting = false;
            self->m_timer.cancel();
            if (error)
            {
                self->Close();
                return;
            }
            self->GoOn();
        });
}

void CRemoteConnection::Continue()
{
    if (m_session)
    {
        m_session->Continue();
        GoOn();
    }
}
