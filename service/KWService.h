// SPDX-License-Identifier: MIT
#pragma once

#include "IKWFunctionRootBase.h"

#include <QStringList>
#include <memory>

class IKWAcquisition;
class IKWStream;

/** How a tree is served: to this machine alone unless something else is said. */
struct KW_ServiceOptions
{
    /** IPv4 or IPv6 addresses to listen at, "0.0.0.0" and "::" for all. Others
        than loopback need `networks`. */
    QStringList addresses{QStringLiteral("127.0.0.1")};
    UINT16 port = 5025; ///< of remote control; 0 takes any free one
    /** Whose hosts may use remote control, beside this machine: "192.168.1.0/24", "fd00::/8" or one
        address. */
    QStringList networks;
    /** File with the token that clients of HTTP must show; where it is empty none is wanted, and
        HTTP listens at 127.0.0.1 alone, whatever `addresses` are. Mode 0600, of the user that the
        service runs as, outside of the settings folder. */
    QString tokenFile;
    bool http = true;       ///< the tree is served in JSON by HTTP and WebSocket, too
    UINT16 httpPort = 5026; ///< of HTTP; 0 takes any free one
    /** Folder with the files of the panel, read at each request, for those who change it; where it
       is empty the panel is that of the library. */
    QString panelFolder;
    /** What a panel draws: the record that the acquisition shows (Streams/Acquisition.h), and the
        newest record of the spectra, `start` and `interval` of whose traces are Hz and whose
        channels are those of the FFT. Without them it draws none. Delivering stays the
        application's. */
    ///@{
    std::shared_ptr<IKWAcquisition> acquisition;
    std::shared_ptr<IKWStream> spectra;
    ///@}
    int connections = 64;    ///< of each kind that are open at once; further ones are closed
    int writeSeconds = 30;   ///< for which a client may leave answers unread
    int messageSeconds = 60; ///< in which a message must end once it has begun
    bool readOnly = false;   ///< clients can write nothing and run no action
    QString manufacturer = QStringLiteral("KWI"); ///< first field of *IDN?
};

/**
 * Serves a tree to other processes: remote control by TCP, JSON by HTTP and WebSocket, and a panel
 * for browsers. Runs from
 * its construction to its destruction on a thread of its own, beside whatever the application does;
 * clients get at the tree as any other thread does. Files that they name lie in the tree's settings
 * folder.
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
    /** The port of HTTP; 0 when it does not listen. */
    UINT16 GetHttpPort() const;
    /** Why it does not listen, and what to do about it; empty when it does. */
    QString GetError() const;

private:
    class CServer;
    std::unique_ptr<CServer> m_server;
};
