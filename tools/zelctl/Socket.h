// SPDX-License-Identifier: MIT
#pragma once

#include "Failure.h"

#include <QByteArray>
#include <cstddef>

/** A service that can not be reached, or is no longer: it may be there again later. */
class CLostService : public CFailure
{
public:
    using CFailure::CFailure;
};

/** A connection by TCP, which is closed when its use ends. */
class CSocket
{
public:
    /** Fails (CLostService) where nobody answers. */
    CSocket(QByteArray host, QByteArray port);
    ~CSocket();
    CSocket(const CSocket&) = delete;
    CSocket& operator=(const CSocket&) = delete;

    /** How many bytes were sent, at least one. `error` is the system's, EAGAIN where the other side
        takes nothing for a minute. */
    std::size_t Send(const void* bytes, std::size_t count, int& error) const;
    /** Waits for bytes up to a minute, or until an interrupt. How many have come: 0 where the other
        side has closed. `error` is the system's, EAGAIN where nothing comes, EINTR. */
    std::size_t Receive(void* room, std::size_t count, int& error) const;

    /** A failure that says whom the connection was with. */
    CLostService Lost(const QString& why) const;
    /** The same for the error of a system's call. */
    CLostService LostBy(int error) const;

private:
    QByteArray m_host;
    QByteArray m_port;
    int m_number = -1;
};
