// SPDX-License-Identifier: MIT
#include "Socket.h"

#include "Interrupt.h"

#include <cerrno>
#include <cstring>
#include <memory>
#include <netdb.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>
#include <utility>

namespace
{
constexpr int kPatience = 60; ///< seconds: an operation is answered when it has ended

int Open(const addrinfo& address)
{
    const int number =
        ::socket(address.ai_family, address.ai_socktype | SOCK_CLOEXEC, address.ai_protocol);
    if (number < 0)
    {
        return -1;
    }
    const timeval patience{kPatience, 0};
    ::setsockopt(number, SOL_SOCKET, SO_SNDTIMEO, &patience, sizeof patience);
    if (::connect(number, address.ai_addr, address.ai_addrlen) == 0)
    {
        return number;
    }
    const int refused = errno;
    ::close(number);
    errno = refused;
    return -1;
}
} // namespace

CSocket::CSocket(QByteArray host, QByteArray port)
    : m_host(std::move(host)), m_port(std::move(port))
{
    addrinfo hints = {};
    hints.ai_socktype = SOCK_STREAM;
    addrinfo* found = nullptr;
    const int error = ::getaddrinfo(m_host.constData(), m_port.constData(), &hints, &found);
    if (error != 0)
    {
        throw Lost(QString::fromLocal8Bit(::gai_strerror(error)));
    }
    const std::unique_ptr<addrinfo, decltype(&::freeaddrinfo)> all(found, &::freeaddrinfo);
    for (const addrinfo* address = found; address != nullptr && m_number < 0;
         address = address->ai_next)
    {
        m_number = Open(*address);
    }
    if (m_number < 0)
    {
        throw LostBy(errno);
    }
}

CSocket::~CSocket()
{
    if (m_number >= 0)
    {
        ::close(m_number);
    }
}

std::size_t CSocket::Send(const void* bytes, std::size_t count, int& error) const
{
    const ssize_t sent = ::send(m_number, bytes, count, MSG_NOSIGNAL);
    error = sent < 0 ? errno : 0;
    return sent < 0 ? 0 : static_cast<std::size_t>(sent);
}

std::size_t CSocket::Receive(void* room, std::size_t count, int& error) const
{
    if (!CInterruptGuard::WaitFor(m_number, kPatience * 1000))
    {
        error = CInterruptGuard::IsInterrupted() ? EINTR : EAGAIN;
        return 0;
    }
    const ssize_t received = ::recv(m_number, room, count, 0);
    error = received < 0 ? errno : 0;
    return received < 0 ? 0 : static_cast<std::size_t>(received);
}

CLostService CSocket::Lost(const QString& why) const
{
    return {eSTATUS_USAGE, QStringLiteral("no answer from %1, port %2: %3")
                               .arg(QString::fromUtf8(m_host), QString::fromUtf8(m_port), why)};
}

CLostService CSocket::LostBy(int error) const
{
    return Lost(error == EAGAIN || error == EWOULDBLOCK
                    ? QStringLiteral("nothing has come for a minute")
                    : QString::fromLocal8Bit(std::strerror(error)));
}
