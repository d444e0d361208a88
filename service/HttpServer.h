// SPDX-License-Identifier: MIT
#pragma once

#include "AccessToken.h"
#include "JsonHub.h"
#include "JsonService.h"
#include "Listener.h"
#include "PanelFiles.h"
#include "RemoteTasks.h"
#include "WaveHub.h"

#include <memory>
#include <vector>

/** A client of the server, on the network thread. */
class CHttpClient
{
public:
    virtual ~CHttpClient();
    virtual bool IsOpen() const = 0;
    virtual void Close() = 0;
};

/** What is served beside the tree. */
struct t_HttpContents
{
    QString panelFolder; ///< of CPanelFiles
    t_WaveSources waves; ///< of CWavePictures
};

/** What all connections of the server share. Outlives them. */
struct t_HttpShared
{
    t_HttpShared(boost::asio::io_context& usedNetwork,
                 const std::shared_ptr<IKWFunctionRootBase>& root, const t_JsonOptions& options,
                 const CAccessToken* usedToken, const t_HttpContents& contents);

    boost::asio::io_context& network;
    std::shared_ptr<const CJsonService> service;
    std::shared_ptr<CRemoteTasks> tasks; ///< for requests that take their time
    const CAccessToken* token;           ///< that clients must show; none is wanted without it
    const CPanelFiles panel;
    t_HttpBounds bounds;
    CJsonHub hub;
    const std::shared_ptr<CWaveHub> waves;
    std::vector<std::shared_ptr<CHttpClient>> clients;
};

/** Serves the tree in JSON by HTTP and WebSocket. All but Join on the network thread. */
class CHttpServer
{
public:
    /** The token is kept by the caller; null where none is wanted. */
    CHttpServer(boost::asio::io_context& network, const std::shared_ptr<IKWFunctionRootBase>& root,
                const t_JsonOptions& options, const CAccessToken* token,
                const t_HttpContents& contents);

    /** As CListener::Listen. */
    bool Listen(const QStringList& addresses, unsigned short port, QString& error)
    {
        return m_listener.Listen(addresses, port, error);
    }
    void Start() { m_listener.Start(); }
    /** Closes all connections. */
    void Stop();
    /** Waits for the requests that run. */
    void Join() { m_shared->tasks->Join(); }
    unsigned short GetPort() const { return m_listener.GetPort(); }

private:
    void Welcome(boost::asio::ip::tcp::socket socket);

    const std::shared_ptr<t_HttpShared> m_shared;
    CListener m_listener;
};
