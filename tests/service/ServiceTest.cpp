// SPDX-License-Identifier: MIT
// The service as its clients meet it: by a socket.

#include "IKWFunctionZEL.h"
#include "KWService.h"

#include <boost/asio/ip/tcp.hpp>
#include <chrono>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <thread>
#include <vector>

using boost::asio::ip::tcp;

namespace
{
class Service : public testing::Test
{
protected:
    static KW_ServiceOptions AnyPort()
    {
        KW_ServiceOptions options;
        options.port = 0;
        options.httpPort = 0;
        options.connections = 8;
        return options;
    }

    tcp::iostream Connect()
    {
        tcp::iostream stream;
        stream.expires_after(std::chrono::seconds(20));
        stream.connect(tcp::endpoint(boost::asio::ip::address_v4::loopback(), m_service.GetPort()));
        return stream;
    }

    /** The next line of the answers; empty when the connection has been closed. */
    static std::string Ask(tcp::iostream& stream, const std::string& message)
    {
        stream << message << std::flush;
        std::string answer;
        std::getline(stream, answer);
        return answer;
    }

    std::shared_ptr<IKWFunctionZEL> m_root = GetZELRoot();
    CKWService m_service{m_root, AnyPort()};
};

TEST_F(Service, TwoClientsSeeDifferentTrees)
{
    auto one = Connect();
    auto other = Connect();
    EXPECT_EQ(Ask(one, "HOR:SCAL 1ms;*OPC?\r\n"), "1");
    EXPECT_EQ(Ask(other, "HOR:SCAL?;:SETUP:REMCONT:CONN?\n"), "0.001;1");
}

TEST_F(Service, WebPageCanSendCommands)
{
    for (const char* const request : {"GET / HTTP/1.1\n", "POST /", "OPTIONS * HTTP/1.1\r\n"})
    {
        auto page = Connect();
        EXPECT_EQ(Ask(page, std::string(request) + "\nHOR:SCAL 1ms\n*OPC?\n"), "") << request;
    }
    auto client = Connect();
    EXPECT_EQ(Ask(client, "HOR:SCAL?\n"), "1E-07");
}

TEST_F(Service, DeadClientKeepsTheKeysOrHalfOfItsMessage)
{
    auto alive = Connect();
    {
        auto dead = Connect();
        EXPECT_EQ(Ask(dead, "SYST:RWL;*OPC?\n"), "1");
        EXPECT_EQ(m_root->GetControlMode(), eCONTROL_LOCAL_LOCKOUT);
        dead << "HOR:SCAL 1" << std::flush;
    }
    const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (m_root->GetControlMode() != eCONTROL_LOCAL && std::chrono::steady_clock::now() < limit)
    {
        std::this_thread::yield();
    }
    EXPECT_EQ(m_root->GetControlMode(), eCONTROL_LOCAL);
    EXPECT_EQ(Ask(alive, "HOR:SCAL?\n"), "1E-07");
}

TEST_F(Service, ClientThatSendsNoMoreLosesItsAnswers)
{
    auto client = Connect();
    for (int i = 0; i < 5000; ++i)
    {
        client << "SYST:ERR?\n";
    }
    client << std::flush;
    client.socket().shutdown(tcp::socket::shutdown_send);
    int lines = 0;
    for (std::string line; std::getline(client, line); ++lines)
    {
        EXPECT_EQ(line, "0,\"No error\"");
    }
    EXPECT_EQ(lines, 5000);
}

TEST_F(Service, MoreClientsThanWereAllowed)
{
    std::vector<tcp::iostream> clients;
    int served = 0;
    for (int i = 0; i < 12; ++i)
    {
        clients.push_back(Connect());
        served += Ask(clients.back(), "*OPC?\n") == "1" ? 1 : 0;
    }
    EXPECT_EQ(served, 8);
    clients.clear();
    EXPECT_EQ(m_service.GetError(), QString());
}

TEST_F(Service, ClientThatReadsNothingHoldsUpOthers)
{
    auto silent = Connect();
    std::thread flood(
        [&silent]
        {
            const std::string queries(1U << 20U, ';');
            for (int i = 0; i < 20 && silent; ++i)
            {
                silent << "SYST:HELP:HEAD?\n" << queries << '\n' << std::flush;
            }
        });
    auto client = Connect();
    for (int i = 0; i < 100; ++i)
    {
        ASSERT_EQ(Ask(client, "*OPC?\n"), "1");
    }
    silent.socket().shutdown(tcp::socket::shutdown_both);
    flood.join();
}

TEST_F(Service, EndsWhileClientsAreConnectedOrPortIsTaken)
{
    KW_ServiceOptions options;
    options.port = m_service.GetPort();
    options.httpPort = 0;
    const CKWService second(m_root, options);
    EXPECT_EQ(second.GetPort(), 0);
    EXPECT_FALSE(second.GetError().isEmpty());
    auto third = std::make_unique<CKWService>(m_root, AnyPort());
    tcp::iostream client;
    client.connect(tcp::endpoint(boost::asio::ip::address_v4::loopback(), third->GetPort()));
    EXPECT_EQ(Ask(client, "*OPC?\n"), "1");
    third.reset();
    EXPECT_EQ(Ask(client, "*OPC?\n"), "");
}
} // namespace
