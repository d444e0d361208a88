// SPDX-License-Identifier: MIT
// The service as its clients meet it: by a socket.

#include "IKWFunctionSetup.h"
#include "IKWFunctionZEL.h"
#include "KWService.h"

#include <algorithm>
#include <atomic>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/read.hpp>
#include <boost/asio/write.hpp>
#include <chrono>
#include <cstring>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <sys/resource.h>
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

    tcp::iostream Connect() { return Connect(m_service); }

    static tcp::iostream Connect(const CKWService& service)
    {
        tcp::iostream stream;
        stream.expires_after(std::chrono::seconds(20));
        stream.connect(tcp::endpoint(boost::asio::ip::address_v4::loopback(), service.GetPort()));
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

TEST_F(Service, WebPageCanSendCommands)
{
    for (const char* const request :
         {"GET / HTTP/1.1\n", "POST /", "OPTIONS * HTTP/1.1\r\n", "PRES / HTTP/1.1\r\n"})
    {
        auto page = Connect();
        EXPECT_EQ(Ask(page, std::string(request) + "\nHOR:SCAL 1ms\n*OPC?\n"), "") << request;
    }
    auto client = Connect();
    EXPECT_EQ(Ask(client, "HOR:SCAL?\n"), "1E-07");
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

TEST_F(Service, UnfinishedMessageOrUnreadAnswerKeepsItsConnection)
{
    KW_ServiceOptions options = AnyPort();
    options.messageSeconds = 1;
    options.writeSeconds = 1;
    const CKWService service(m_root, options);
    auto idle = Connect(service);
    EXPECT_EQ(Ask(idle, "*OPC?\n"), "1");
    auto beginner = Connect(service); // it might still be one of HTTP
    beginner << "HOR" << std::flush;
    auto slow = Connect(service);
    slow << "*OPC?\nSETUP:BGDET:SERVI2CACC:WRITDATA #3100" << std::flush;
    auto silent = Connect(service);
    silent.socket().set_option(tcp::socket::receive_buffer_size(4096));
    std::string queries;
    for (int i = 0; i < 150; ++i)
    {
        queries += "SYST:HELP:HEAD?\n"; // more than the system keeps
    }
    silent << queries << std::flush;
    std::this_thread::sleep_for(std::chrono::milliseconds(700));
    slow << "a" << std::flush;
    EXPECT_EQ(Ask(beginner, ""), "");
    EXPECT_EQ(Ask(slow, ""), "1");
    EXPECT_EQ(Ask(slow, ""), "");
    std::this_thread::sleep_for(std::chrono::milliseconds(1500));
    std::size_t count = 0;
    for (std::string line; std::getline(silent, line);)
    {
        count += line.size();
    }
    EXPECT_LT(count, 6U << 20U); // what was under way, not all
    idle.expires_after(std::chrono::seconds(20));
    EXPECT_EQ(Ask(idle, "*OPC?\n"), "1");
}

TEST_F(Service, HugeMessageHoldsUpOthersOrIsKept)
{
    constexpr int kPieces = 1600;
    std::atomic<bool> isSent{false};
    auto huge = Connect();
    std::thread sender(
        [&]
        {
            const std::string piece(1U << 16U, 'x');
            huge << "SAVEREC:SAVERECSLOT2:NAME '";
            for (int i = 0; i < kPieces && huge; ++i)
            {
                huge << piece;
            }
            isSent = true;
        });
    auto client = Connect();
    int asked = 0;
    auto longest = std::chrono::steady_clock::duration::zero();
    while (!isSent)
    {
        const auto begin = std::chrono::steady_clock::now();
        EXPECT_EQ(Ask(client, "*OPC?\n"), "1");
        longest = std::max(longest, std::chrono::steady_clock::now() - begin);
        ++asked;
    }
    sender.join();
    EXPECT_GT(asked, 10);
    EXPECT_LT(longest, std::chrono::seconds(2));
    EXPECT_EQ(Ask(huge, "'\nSYST:ERR?\n"), "-363,\"Input buffer overrun\"");
}

TEST_F(Service, ThousandConnectionsAreLeftBehindOrHoldUpOthers)
{
    rlimit most = {};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &most), 0);
    rlimit wanted = most;
    wanted.rlim_cur = std::min<rlim_t>(most.rlim_max, 4096);
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &wanted), 0);
    KW_ServiceOptions options = AnyPort();
    options.connections = 1000;
    const CKWService service(m_root, options);
    {
        boost::asio::io_context network;
        std::vector<tcp::socket> clients;
        const auto say = [&](const char* message)
        { boost::asio::write(clients.back(), boost::asio::buffer(message, std::strlen(message))); };
        for (int i = 0; i < 1000; ++i)
        {
            clients.emplace_back(network).connect(
                tcp::endpoint(boost::asio::ip::address_v4::loopback(), service.GetPort()));
            say("HOR:SCAL?;:SYST:VE");
        }
        for (int i = 0; i < 500; ++i)
        {
            say("RS?\n");
            std::string answer(13, ' ');
            boost::asio::read(clients.back(), boost::asio::buffer(answer));
            EXPECT_EQ(answer, "1E-07;1999.0\n");
            clients.pop_back();
        }
        auto further = Connect(service);
        EXPECT_EQ(Ask(further, "*OPC?\n"), "1");
    }
    std::string answer;
    for (int i = 0; i < 200 && answer != "1"; ++i)
    {
        auto client = Connect(service);
        answer = Ask(client, "*OPC?\n");
    }
    EXPECT_EQ(answer, "1");
    ::setrlimit(RLIMIT_NOFILE, &most);
}

TEST_F(Service, ConditionOfAMomentIsMissed)
{
    auto client = Connect();
    EXPECT_EQ(Ask(client, "*CLS;:STAT:QUES:ENAB 16;*STB?\n"), "0");
    const auto dialog = m_root->GetPgSetup()->GetPrTemperatureDialog();
    const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    int shown = 0;
    while (shown == 0 && std::chrono::steady_clock::now() < limit)
    {
        dialog->SetResult(eKW_ZEL_TEMPERATURE_DIALOG_TOO_HOT);
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
        dialog->SetResult(eKW_ZEL_TEMPERATURE_DIALOG_NONE);
        shown = std::stoi(Ask(client, "*STB?\n"));
    }
    EXPECT_EQ(shown, 8);
}

TEST_F(Service, ClientIsConnectedToAServiceThatHasEnded)
{
    auto service = std::make_unique<CKWService>(m_root, AnyPort());
    auto client = Connect(*service);
    EXPECT_EQ(Ask(client, "*OPC?\n"), "1");
    service.reset();
    EXPECT_EQ(Ask(client, "*OPC?\n"), "");
}
} // namespace
