// SPDX-License-Identifier: MIT
#include "HttpServer.h"

#include "HttpConnection.h"

#include <algorithm>

CHttpClient::~CHttpClient() = default;

t_HttpShared::t_HttpShared(boost::asio::io_context& usedNetwork,
                           const std::shared_ptr<IKWFunctionRootBase>& root,
                           const t_JsonOptions& options, const CAccessToken* usedToken,
                           const t_HttpContents& contents)
    : network(usedNetwork), service(std::make_shared<CJsonService>(root, options)),
      tasks(std::make_shared<CRemoteTasks>(options.bounds.tasks)), token(usedToken),
      panel(contents.panelFolder), bounds(options.bounds), hub(usedNetwork, root, options.bounds),
      waves(std::make_shared<CWaveHub>(usedNetwork, tasks, root, contents.waves, options.bounds))
{
}

CHttpServer::CHttpServer(boost::asio::io_context& network,
                         const std::shared_ptr<IKWFunctionRootBase>& root,
                         const t_JsonOptions& options, const CAccessToken* token,
                         const t_HttpContents& contents)
    : m_shared(std::make_shared<t_HttpShared>(network, root, options, token, contents)),
      m_listener(network,
                 [this](boost::asio::ip::tcp::socket socket) { Welcome(std::move(socket)); })
{
}

void CHttpServer::Stop()
{
    m_listener.Stop();
    m_shared->hub.Stop();
    m_shared->waves->Stop();
    for (const auto& client : std::exchange(m_shared->clients, {}))
    {
        client->Close();
    }
}

void CHttpServer::Welcome(boost::asio::ip::tcp::socket socket)
{
    auto& clients = m_shared->clients;
    clients.erase(std::remove_if(clients.begin(), clients.end(),
                                 [](const auto& client) { return !client->IsOpen(); }),
                  clients.end());
    if (clients.size() < m_shared->bounds.connections)
    {
        StartHttp(m_shared, std::move(socket)); // otherwise it is closed
    }
}
