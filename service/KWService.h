// SPDX-License-Identifier: MIT
#pragma once

#include "IKWFunctionRootBase.h"

#include <QString>
#include <memory>

/** How a tree is served. */
struct KW_ServiceOptions
{
    UINT16 port = 5025;    ///< of remote control; 0 takes any free one
    int connections = 64;  ///< that are open at once; further ones are closed
    int writeSeconds = 30; ///< for which a client may leave answers unread
    bool readOnly = false; ///< clients can write nothing and run no action
    QString manufacturer = QStringLiteral("KWI"); ///< first field of *IDN?
};

/**
 * Serves a tree to other processes of this machine: remote control by TCP, on the loopback address
 * alone. Runs from its construction to its destruction on a thread of its own, beside whatever the
 * application does; clients get at the tree as any other thread does.
 *
 *     CKWService service(GetZELRoot(), {});
 *     if (service.GetPort() == 0) … service.GetError()
 */
class KW_EXPORT CKWService
{
public:
    CKWService(std::shared_ptr<IKWFunctionRootBase> root, const KW_ServiceOptions& options);
    /** Closes all connections and waits for operations that clients have started. */
    ~CKWService();
    CKWService(const CKWService&) = delete;
    CKWService& operator=(const CKWService&) = delete;

    /** The port that it listens to; 0 when it could not. */
    UINT16 GetPort() const;
    /** Why it does not listen; empty when it does. */
    QString GetError() const;

private:
    class CServer;
    std::unique_ptr<CServer> m_server;
};
