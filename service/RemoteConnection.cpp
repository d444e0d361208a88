// SPDX-License-Identifier: MIT
#include "RemoteConnection.h"

#include <boost/asio/buffer.hpp>
#include <boost/asio/error.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/write.hpp>
#include <netinet/tcp.h>
#include <sys/socket.h>

namespace
{
/** A client whose machine was switched off, or whose cable was pulled, says nothing more. */
void KeepAlive(boost::asio::ip::tcp::socket& socket)
{
    struct t_Option
    {
        int name;
        int value;
    };
    constexpr t_Option kOptions[] = {{TCP_KEEPIDLE, NServiceLimits::kAliveAfterSeconds},
                                     {TCP_KEEPINTVL, NServiceLimits::kAliveEverySeconds},
                                     {TCP_KEEPCNT, NServiceLimits::kAliveTries}};
    boost::system::error_code ignored;
    socket.set_option(boost::asio::socket_base::keep_alive(true), ignored);
    for (const t_Option& option : kOptions)
    {
        ::setsockopt(socket.native_handle(), IPPROTO_TCP, option.name, &option.value,
                     sizeof option.value);
    }
}
} // namespace

void CRemoteConnection::Start(const std::shared_ptr<IKWFunctionRootBase>& root,
                              const std::shared_ptr<CRemoteTasks>& tasks,
                              const t_RemoteOptions& options)
{
    boost::system::error_code ignored;
    m_socket.set_option(boost::asio::ip::tcp::no_delay(true), ignored);
    KeepAlive(m_socket);
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
    m_writeTimer.cancel();
    m_messageTimer.cancel();
    m_socket.close(ignored);
    if (std::exchange(m_session, nullptr))
    {
        m_events.closed();
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
            if (error || !self->m_session || self->Pass(count) == CRemoteGuard::eVERDICT::Http)
            {
                self->Close();
                return;
            }
            self->WatchMessage();
            self->GoOn();
        });
}

CRemoteGuard::eVERDICT CRemoteConnection::Pass(std::size_t count)
{
    if (!m_guard)
    {
        m_session->Receive(m_input.data(), count);
        return CRemoteGuard::eVERDICT::Remote;
    }
    const CRemoteGuard::eVERDICT verdict = m_guard->Look(m_input.data(), count);
    if (verdict == CRemoteGuard::eVERDICT::Remote)
    {
        const QByteArray bytes = m_guard->Take();
        m_guard.reset();
        m_session->Receive(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    }
    return verdict;
}

void CRemoteConnection::WatchMessage()
{
    const std::size_t begun =
        m_guard || m_session->IsInMessage() ? m_session->EndedMessages() + 1 : 0;
    if (begun != std::exchange(m_watched, begun))
    {
        m_messageTimer.cancel();
        if (begun != 0)
        {
            AwaitMessage();
        }
    }
}

void CRemoteConnection::AwaitMessage()
{
    m_messageTimer.expires_after(m_patience.message);
    m_messageTimer.async_wait(
        [self = shared_from_this()](const boost::system::error_code& error)
        {
            if (error || self->m_watched == 0 || !self->m_session)
            {
                return;
            }
            // What the service itself does not read is not the client's fault.
            self->m_isReading ? self->Close() : self->AwaitMessage();
        });
}

void CRemoteConnection::Observe(const t_RemoteConditions& conditions)
{
    if (m_session)
    {
        m_session->Observe(conditions);
    }
}

void CRemoteConnection::GoOn()
{
    if (m_session && m_session->WantsConditions() && !std::exchange(m_watches, true))
    {
        m_events.watches();
    }
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
    m_writeTimer.expires_after(m_patience.write);
    m_writeTimer.async_wait(
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
            self->m_writeTimer.cancel();
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
