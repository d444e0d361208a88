// SPDX-License-Identifier: MIT
#pragma once

#include "OrderedJson.h"
#include "WebSocket.h"

#include <QByteArray>
#include <QJsonObject>
#include <QString>

/** Asks a service for the tree that it serves, one request after the other. Each has a connection
   of its own: a service that was started again answers the next one. */
class CHttpClient
{
public:
    /** `place` is "HOST" or "HOST:PORT" ("[::1]:5026" for IPv6), the port 5026 where none is said.
     */
    CHttpClient(const QString& place, QByteArray token);

    /** The document that answers; fails where none comes (CLostService), or the service refuses to
        answer. What the tree refuses is a document with a code. */
    ///@{
    COrderedJson Get(const QByteArray& target) const;
    COrderedJson Post(const char* target, const QJsonObject& body = {}) const;
    ///@}
    /** Goes on as a WebSocket; fails as they do. */
    CWebSocket Open(const QByteArray& target) const { return {m_host, m_port, target, m_token}; }

private:
    COrderedJson Ask(const QByteArray& method, const QByteArray& target,
                     const QByteArray& body) const;

    QByteArray m_host;
    QByteArray m_port;
    QByteArray m_token;
};
