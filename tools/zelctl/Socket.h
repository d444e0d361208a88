// SPDX-License-Identifier: MIT
#pragma once

#include "Failure.h"

#include <QByteArray>

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
    CSocket(CSocket&& other) noexcept;
    CSocket(const CSocket&) = delete;
    CSocket& operator=(const CSocket&) = delete;

    /** False where the other side takes nothing any more. */
    bool Send(const QByteArray& bytes) const;
    /** Appends what has come; waits for it up to a minute, or until an interrupt. How many bytes: 0
       where the other side has closed, less where nothing comes any more, and `errno` says why. */
    int Receive(QByteArray& bytes) const;

    /** A failure that says whom the connection was with. */
    CLostService Lost(const QString& why) const;
    /** The same for the error of a system's call. */
    CLostService LostBy(int error) const;

private:
    QByteArray m_host;
    QByteArray m_port;
    int m_number = -1;
};
