// SPDX-License-Identifier: MIT
#include "KWService.h"

#include "IKWProperties.h"
#include "KWEnumerationsOnOff.h"
#include "RemoteConnection.h"

#include <algorithm>
#include <boost/asio/post.hpp>
#include <new>
#include <thread>
#include <vector>

using boost::asio::ip::tcp;

/** The network thread and what it serves. */
class CKWService::CServer
{
public:
    CServer(std::shared_ptr<IKWFunctionRootBase> root, const KW_ServiceOptions& options)
        : m_root(std::move(root)), m_patience(options.writeSeconds),
          m_most(static_cast<std::size_t>(options.connections)), m_acceptor(m_network),
          m_tasks(std::make_shared<CRemoteTasks>())
    {
        m_options.readOnly = options.readOnly;
        m_options.manufacturer = options.manufacturer;
        if (Listen(options.port))
        {
            Accept();
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
    }

    UINT16 GetPort() const { return m_port; }
    QString GetError() const { return m_error; }

private:
    bool Listen(UINT16 port)
    {
        const tcp::endpoint endpoint(boost::asio::ip::address_v4::loopback(), port);
        boost::system::error_code error;
        m_acceptor.open(endpoint.protocol(), error);
        if (!error)
        {
            m_acceptor.set_option(tcp::acceptor::reuse_address(true), error);
        }
        if (!error)
        {
            m_acceptor.bind(endpoint, error);
        }
        if (!error)
        {
            m_acceptor.listen(tcp::acceptor::max_listen_connections, error);
        }
        if (error)
        {
            m_error = QString::fromLocal8Bit(error.message().c_str());
            return false;
        }
        m_port = m_acceptor.local_endpoint().port();
        return true;
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
        boost::system::error_code ignored;
        m_acceptor.close(ignored);
        m_pause.cancel();
        for (const auto& connection : m_connections)
        {
            connection->Close();
        }
        m_connections.clear();
    }

    void Accept()
    {
        m_acceptor.async_accept(
            [this](const boost::system::error_code& error, tcp::socket socket)
            {
                if (!m_acceptor.is_open())
                {
                    return;
                }
                if (error)
                {
                    AcceptLater();
                    return;
                }
                Welcome(std::move(socket));
                Accept();
            });
    }

    /** The process has no file descriptor left, or the like: trying at once would take all its
        time. */
    void AcceptLater()
    {
        m_pause.expires_after(std::chrono::milliseconds(100));
        m_pause.async_wait(
            [this](const boost::system::error_code& error)
            {
                if (!error && m_acceptor.is_open())
                {
                    Accept();
                }
            });
    }

    void Welcome(tcp::socket socket)
    {
        m_connections.erase(std::remove_if(m_connections.begin(), m_connections.end(),
                                           [](const auto& connection)
                                           { return !connection->IsOpen(); }),
                            m_connections.end());
        if (m_connections.size() >= m_most)
        {
            return; // closes it
        }
        m_connections.push_back(std::make_shared<CRemoteConnection>(
            m_network, std::move(socket), m_patience, [this] { ShowConnected(); }));
        m_connections.back()->Start(m_root, m_tasks, m_options);
        ShowConnected();
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
    const std::chrono::seconds m_patience;
    const std::size_t m_most;
    t_RemoteOptions m_options;
    boost::asio::io_context m_network;
    tcp::acceptor m_acceptor;
    boost::asio::steady_timer m_pause{m_network};
    const std::shared_ptr<CRemoteTasks> m_tasks;
    std::vector<std::shared_ptr<CRemoteConnection>> m_connections;
    std::thread m_thread;
    UINT16 m_port = 0;
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

QString CKWService::GetError() const
{
    return m_server->GetError();
}
