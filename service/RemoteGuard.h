// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

/**
 * Looks at the first bytes of a connection, before anything is carried out, and tells a client of
 * remote control from one of HTTP. A web page can let a browser connect to any port, chooses the
 * method and what follows the first line, and must not be able to send commands.
 */
class CRemoteGuard
{
public:
    enum class eVERDICT
    {
        Undecided, ///< more bytes are wanted
        Remote,
        Http ///< also for a first word longer than any of remote control
    };

    /** Keeps the bytes until it has decided. */
    eVERDICT Look(const char* bytes, std::size_t count);
    /** All bytes so far, once. */
    QByteArray Take() { return std::exchange(m_bytes, QByteArray()); }

private:
    QByteArray m_bytes;
};
