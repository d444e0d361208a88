// SPDX-License-Identifier: MIT
// What JSON costs: json_bench [SECONDS]. Figures are for a quiet machine and a person to judge;
// ratios are of one run, parts of which take turns.

#include "IKWFunctionHorizontal.h"
#include "IKWFunctionZEL.h"
#include "JsonService.h"
#include "KWService.h"

#include <algorithm>
#include <atomic>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/read_until.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/asio/streambuf.hpp>
#include <boost/asio/write.hpp>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <numeric>
#include <string>
#include <thread>
#include <vector>

using boost::asio::ip::tcp;

namespace
{
using t_Clock = std::chrono::steady_clock;

double SecondsSince(t_Clock::time_point begin)
{
    return std::chrono::duration<double>(t_Clock::now() - begin).count();
}

double Median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

double Mean(const std::vector<double>& values)
{
    return std::accumulate(values.begin(), values.end(), 0.0) / static_cast<double>(values.size());
}

void TimeTree(const CJsonService& service, const char* target, double seconds)
{
    std::vector<double> times;
    int bytes = 0;
    for (const auto begin = t_Clock::now(); SecondsSince(begin) < seconds || times.size() < 3;)
    {
        const auto one = t_Clock::now();
        bytes = static_cast<int>(service.Answer({"GET", target, QByteArray()}).body.size());
        times.push_back(1e3 * SecondsSince(one));
    }
    std::printf("%-20s%9.2f ms, %d bytes (budget of the whole tree 20 ms)\n", target, Median(times),
                bytes);
}

/** A subscriber of some path that throws away what it reads. */
class CSubscriber
{
public:
    CSubscriber(boost::asio::io_context& network, unsigned short port, const std::string& path)
        : m_socket(network)
    {
        m_socket.connect(tcp::endpoint(boost::asio::ip::address_v4::loopback(), port));
        m_socket.set_option(tcp::no_delay(true));
        Write("GET /changes HTTP/1.1\r\nHost: localhost\r\nConnection: Upgrade\r\n"
              "Upgrade: websocket\r\nSec-WebSocket-Version: 13\r\n"
              "Sec-WebSocket-Key: AAAAAAAAAAAAAAAAAAAAAA==\r\n\r\n");
        boost::asio::streambuf head;
        boost::asio::read_until(m_socket, head, "\r\n\r\n");
        const std::string text = "{\"subscribe\":[\"" + path + "\"]}";
        // A frame with a mask of zeros.
        Write(std::string("\x81") + static_cast<char>(0x80 | text.size()) + std::string(4, '\0') +
              text);
        Take();
    }

    std::size_t Take() { return m_socket.read_some(boost::asio::buffer(m_bytes)); }
    void Follow()
    {
        m_socket.async_read_some(boost::asio::buffer(m_bytes),
                                 [this](const boost::system::error_code& error, std::size_t)
                                 {
                                     if (!error)
                                     {
                                         Follow();
                                     }
                                 });
    }

private:
    void Write(const std::string& bytes)
    {
        boost::asio::write(m_socket, boost::asio::buffer(bytes));
    }

    tcp::socket m_socket;
    std::vector<char> m_bytes = std::vector<char>(1U << 16U);
};

void TimeLatency(IKWFunctionZEL& root, unsigned short port, int count)
{
    boost::asio::io_context network;
    CSubscriber subscriber(network, port, "Horizontal/Scale");
    const auto scale = root.GetPgHorizontal()->GetPrScale();
    std::vector<double> times;
    for (int i = 0; i < count; ++i)
    {
        std::this_thread::sleep_for(std::chrono::milliseconds(7 * (i % 9)));
        const auto begin = t_Clock::now();
        static_cast<void>(scale->Set(i % 2 == 0 ? 1e-3 : 2e-3));
        subscriber.Take();
        times.push_back(1e3 * SecondsSince(begin));
    }
    std::printf("latency             %9.1f ms, at most %.1f ms (budget 100 ms, two looks)\n",
                Median(times), *std::max_element(times.begin(), times.end()));
}

/** Microseconds of each write, a thousand of which come in a second. */
std::vector<double> TimeWrites(IKWFunctionZEL& root, double seconds)
{
    const auto scale = root.GetPgHorizontal()->GetPrScale();
    std::vector<double> times;
    for (const auto begin = t_Clock::now(); SecondsSince(begin) < seconds;)
    {
        std::this_thread::sleep_until(begin + std::chrono::milliseconds(times.size()));
        const auto one = t_Clock::now();
        static_cast<void>(scale->Set(times.size() % 2 == 0 ? 1e-3 : 2e-3));
        times.push_back(1e6 * SecondsSince(one));
    }
    return times;
}

/** Runs while it lives: 200 subscribers of the whole tree, in a thread that reads for all. */
class CCrowd
{
public:
    explicit CCrowd(unsigned short port)
    {
        constexpr int kSubscribers = 200;
        for (int i = 0; i < kSubscribers; ++i)
        {
            m_subscribers.push_back(std::make_unique<CSubscriber>(m_network, port, ""));
            m_subscribers.back()->Follow();
        }
        m_thread = std::thread([this] { m_network.run(); });
    }
    ~CCrowd()
    {
        m_network.stop();
        m_thread.join();
    }

private:
    boost::asio::io_context m_network;
    std::vector<std::unique_ptr<CSubscriber>> m_subscribers;
    std::thread m_thread;
};

/** Runs while it lives: sends as many clients as many bytes as often as the service does, by an
   event loop of its own that knows no tree. What writes lose beside it, the machine takes. */
class CPlainCrowd
{
public:
    CPlainCrowd()
        : m_acceptor(m_network, tcp::endpoint(boost::asio::ip::address_v4::loopback(), 0)),
          m_timer(m_network)
    {
        constexpr int kClients = 200;
        for (int i = 0; i < kClients; ++i)
        {
            m_readers.push_back(std::make_unique<tcp::socket>(m_clients));
            m_readers.back()->connect(m_acceptor.local_endpoint());
            m_senders.push_back(std::make_unique<tcp::socket>(m_acceptor.accept()));
            Follow(*m_readers.back());
        }
        Send();
        m_threads.emplace_back([this] { m_network.run(); });
        m_threads.emplace_back([this] { m_clients.run(); });
    }
    ~CPlainCrowd()
    {
        m_network.stop();
        m_clients.stop();
        for (std::thread& thread : m_threads)
        {
            thread.join();
        }
    }

private:
    void Follow(tcp::socket& reader)
    {
        reader.async_read_some(boost::asio::buffer(m_bytes),
                               [this, &reader](const boost::system::error_code& error, std::size_t)
                               {
                                   if (!error)
                                   {
                                       Follow(reader);
                                   }
                               });
    }
    void Send()
    {
        m_timer.expires_after(std::chrono::milliseconds(50));
        m_timer.async_wait(
            [this](const boost::system::error_code& error)
            {
                if (error)
                {
                    return;
                }
                for (const auto& sender : m_senders)
                {
                    sender->async_send(boost::asio::buffer(m_message),
                                       [](const boost::system::error_code&, std::size_t) {});
                }
                Send();
            });
    }

    boost::asio::io_context m_network;
    boost::asio::io_context m_clients;
    tcp::acceptor m_acceptor;
    boost::asio::steady_timer m_timer;
    std::vector<std::unique_ptr<tcp::socket>> m_readers;
    std::vector<std::unique_ptr<tcp::socket>> m_senders;
    std::vector<char> m_bytes = std::vector<char>(1U << 16U);
    std::vector<char> m_message = std::vector<char>(3000); ///< what such a write tells
    std::vector<std::thread> m_threads;
};

void CompareWrites(IKWFunctionZEL& root, unsigned short port, double seconds)
{
    constexpr int kTurns = 5;
    std::vector<double> alone;
    std::vector<double> plain;
    std::vector<double> beside;
    const auto turn = [&root, seconds](std::vector<double>& all)
    {
        const std::vector<double> times = TimeWrites(root, seconds / kTurns);
        all.insert(all.end(), times.begin(), times.end());
    };
    for (int i = 0; i < kTurns; ++i)
    {
        turn(alone);
        {
            const CPlainCrowd crowd;
            turn(plain);
        }
        const CCrowd crowd(port);
        turn(beside);
    }
    std::printf(
        "write               %9.2f us alone; beside 200 subscribers %.2f of that, beside 200 "
        "receivers of as many bytes %.2f: %.2f (budget 1.05)\n",
        Median(alone), Median(beside) / Median(alone), Median(plain) / Median(alone),
        Median(beside) / Median(plain));
    std::printf("  means             %9.2f us alone; %.2f, %.2f: %.2f\n", Mean(alone),
                Mean(beside) / Mean(alone), Mean(plain) / Mean(alone), Mean(beside) / Mean(plain));
}
} // namespace

int main(int argc, char** argv)
{
    const double seconds = argc > 1 ? std::atof(argv[1]) : 2;
    const auto root = GetZELRoot();
    const CJsonService json(root, {});
    TimeTree(json, "/tree", seconds);
    TimeTree(json, "/tree?detail=full", seconds);
    KW_ServiceOptions options;
    options.port = 0;
    options.httpPort = 0;
    options.connections = 500;
    const CKWService service(root, options);
    TimeLatency(*root, service.GetHttpPort(), seconds < 1 ? 5 : 100);
    CompareWrites(*root, service.GetHttpPort(), seconds);
    return 0;
}
