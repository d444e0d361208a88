// SPDX-License-Identifier: MIT
#include "KWService.h"

#include "AccessToken.h"
#include "HttpServer.h"
#include "IKWProperties.h"
#include "KWEnumerationsOnOff.h"
#include "Listener.h"
#include "RemoteConnection.h"
#include "ServiceLimits.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <boost/asio/post.hpp>
#include <new>
#include <optional>
#include <thread>
#include <vector>

using boost::asio::ip::tcp;

/** The network thread and what it serves. */
class CKWService::CServer
{
public:
    CServer(std::shared_ptr<IKWFunctionRootBase> root, const KW_ServiceOptions& options)
        : m_root(std::move(root)), m_patience{std::chrono::seconds(options.writeSeconds),
                                              std::chrono::seconds(options.messageSeconds)},
          m_most(static_cast<std::size_t>(options.connections)),
          m_listener(m_network, [this](tcp::socket socket) { Welcome(std::move(socket)); }),
          m_tasks(std::make_shared<CRemoteTasks>(NServiceLimits::kTasks))
    {
        m_options.readOnly = options.readOnly;
        m_options.manufacturer = options.manufacturer;
        if (ReadToken(options) && AllowNetworks(options) &&
            m_listener.Listen(options.addresses, options.port, m_error) && ListenToHttp(options))
        {
            m_listener.Start();
            if (m_http)
            {
                m_http->Start();
            }
            m_thread = std::thread([this] { Run(); });
        }
    }

    ~CServer()
    {
        boost::asio::post(m_network, [this] { Stop(); });
        if (m_thread.joinable())
        {
            m_thread.join();
        }
        // What runs still tells the network that it has ended.
        m_tasks->Join();
        if (m_http)
        {
            m_http->Join();
        }
    }

    UINT16 GetPort() const { return m_error.isEmpty() ? m_listener.GetPort() : UINT16{0}; }
    UINT16 GetHttpPort() const
    {
        return m_error.isEmpty() && m_http ? m_http->GetPort() : UINT16{0};
    }
    QString GetError() const { return m_error; }

private:
    bool ReadToken(const KW_ServiceOptions& options)
    {
        if (options.tokenFile.isEmpty())
        {
            return true;
        }
        const QString folder = QDir(m_root->GetSettingsFolder()).canonicalPath();
        const QString file = QFileInfo(options.tokenFile).canonicalFilePath();
        if (!folder.isEmpty() && file.startsWith(folder + QLatin1Char('/')))
        {
            m_error = QStringLiteral("token file %1: it lies in the settings folder, where clients "
                                     "read and write files")
                          .arg(options.tokenFile);
            return false;
        }
        m_token = CAccessToken::Read(options.tokenFile, m_error);
        return m_token.has_value();
    }

    bool AllowNetworks(const KW_ServiceOptions& options)
    {
        CNetworks networks;
        if (!networks.Add(options.networks, m_error))
        {
            return false;
        }
        if (networks.IsEmpty() && !CListener::IsLocal(options.addresses))
        {
            m_error = QStringLiteral("remote control at other addresses than loopback needs the "
                                     "networks that may use it, such as 192.168.1.0/24");
            return false;
        }
        m_listener.Allow(std::move(networks));
        return true;
    }

    bool ListenToHttp(const KW_ServiceOptions& options)
    {
        if (!options.http)
        {
            return true;
        }
        t_JsonOptions json;
        json.readOnly = options.readOnly;
        json.bounds.connections = m_most;
        json.bounds.answer = m_patience.write;
        m_http = std::make_unique<CHttpServer>(
            m_network, m_root, json, m_token ? &*m_token : nullptr,
            t_HttpContents{options.panelFolder, {options.acquisition, options.spectra}});
        const QStringList local{QStringLiteral("127.0.0.1")};
        return m_http->Listen(m_token ? options.addresses : local, options.httpPort, m_error);
    }

    void Run()
    {
        for (bool isDone = false; !isDone;)
        {
            try
            {
                m_network.run();
                isDone = true;
            }
            catch (const std::bad_alloc&)
            {
                // One client's request was too much: the others go on.
            }
        }
    }

    void Stop()
    {
        m_listener.Stop();
        if (m_http)
        {
            m_http->Stop();
        }
        m_poll.cancel();
        for (const auto& connection : m_connections)
        {
            connection->Close();
        }
        m_connections.clear();
    }

    void Welcome(tcp::socket socket)
    {
        ForgetClosed();
        if (m_connections.size() >= m_most)
        {
            return; // closes it
        }
        m_connections.push_back(std::make_shared<CRemoteConnection>(
            m_network, std::move(socket), m_patience,
            CRemoteConnection::t_Events{[this] { ShowConnected(); }, [this] { Watch(); }}));
        m_connections.back()->Start(m_root, m_tasks, m_options);
        ShowConnected();
    }

    void ForgetClosed()
    {
        m_connections.erase(std::remove_if(m_connections.begin(), m_connections.end(),
                                           [](const auto& connection)
                                           { return !connection->IsOpen(); }),
                            m_connections.end());
    }

    /** What is the case for a moment alone would be seen by nobody who asks later. */
    void Watch()
    {
        if (!std::exchange(m_isWatching, true))
        {
            Poll();
        }
    }

    void Poll()
    {
        m_poll.expires_after(std::chrono::milliseconds(NServiceLimits::kPollMilliseconds));
        m_poll.async_wait([this](const boost::system::error_code& error)
                          { error || !Observe() ? void(m_isWatching = false) : Poll(); });
    }

    /** Whether somebody still watches. */
    bool Observe()
    {
        const bool hasChanged = m_top->HasChanged(m_seen);
        const t_RemoteConditions conditions =
            hasChanged ? m_conditions.Read() : t_RemoteConditions{};
        bool isWatched = false;
        for (const auto& connection : m_connections)
        {
            if (connection->Watches())
            {
                isWatched = true;
                hasChanged ? connection->Observe(conditions) : void();
            }
        }
        return isWatched;
    }

    void ShowConnected()
    {
        const bool isConnected =
            std::any_of(m_connections.begin(), m_connections.end(),
                        [](const auto& connection) { return connection->IsOpen(); });
        const auto shown = std::dynamic_pointer_cast<IDbProperty>(
            m_root->GetDbObject()->Find(QStringLiteral("Setup/RemoteControl/Connected")));
        const auto handle =
            shown ? std::dynamic_pointer_cast<IKWEnumProperty<KW_ONOFF>>(shown->GetHandle())
                  : nullptr;
        if (handle)
        {
            handle->SetResult(isConnected ? eKW_ONOFF_ON : eKW_ONOFF_OFF);
        }
    }

    const std::shared_ptr<IKWFunctionRootBase> m_root;
    const CRemoteConnection::t_Patience m_patience;
    const std::size_t m_most;
    t_RemoteOptions m_options;
    boost::asio::io_context m_network;
    CListener m_listener;
    std::optional<CAccessToken> m_token; ///< of clients of HTTP
    std::unique_ptr<CHttpServer> m_http; ///< null where it is not wanted
    const std::shared_ptr<CRemoteTasks> m_tasks;
    const std::shared_ptr<IDbGroup> m_top = m_root->GetDbObject();
    const CRemoteConditions m_conditions{*m_top};
    boost::asio::steady_timer m_poll{m_network};
    long long m_seen = 0;
    bool m_isWatching = false;
    std::vector<std::shared_ptr<CRemoteConnection>> m_connections;
    std::thread m_thread;
    QString m_error;
};

CKWService::CKWService(std::shared_ptr<IKWFunctionRootBase> root, const KW_ServiceOptions& options)
    : m_server(std::make_unique<CServer>(std::move(root), options))
{
}

CKWService::~CKWService() = default;

UINT16 CKWService::GetPort() const
{
    return m_server->GetPort();
}

UINT16 CKWService::GetHttpPort() const
{
    return m_server->GetHttpPort();
}

QString CKWService::GetError() const
{
    return m_server->GetError();
}
