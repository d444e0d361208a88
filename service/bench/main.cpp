// SPDX-License-Identifier: MIT
// What the service costs: service_bench [SECONDS]. Figures are for a quiet machine and a person to
// judge; ratios are of one run, parts of which take turns.

#include "IKWFunctionHorizontal.h"
#include "IKWFunctionZEL.h"
#include "KWService.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/read.hpp>
#include <boost/asio/write.hpp>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <sys/resource.h>
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

/** Processor time of the process or the thread. */
double Used(int who)
{
    rusage usage = {};
    ::getrusage(who, &usage);
    const auto seconds = [](const timeval& time)
    { return static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_usec); };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

/** Gives back what it reads, by the same event loop. */
class CEcho
{
public:
    CEcho() : m_thread([this] { m_network.run(); }) {}
    ~CEcho()
    {
        m_network.stop();
        m_thread.join();
    }
    unsigned short GetPort() const { return m_acceptor.local_endpoint().port(); }

private:
    void Accept()
    {
        m_acceptor.async_accept(m_socket,
                                [this](const boost::system::error_code& error)
                                {
                                    if (!error)
                                    {
                                        m_socket.set_option(tcp::no_delay(true));
                                        Read();
                                    }
                                });
    }

    void Read()
    {
        m_socket.async_read_some(boost::asio::buffer(m_bytes),
                                 [this](const boost::system::error_code& error, std::size_t count)
                                 {
                                     if (!error)
                                     {
                                         m_socket.write_some(
                                             boost::asio::buffer(m_bytes.data(), count));
                                         Read();
                                     }
                                 });
    }

    boost::asio::io_context m_network;
    tcp::acceptor m_acceptor{m_network, tcp::endpoint(boost::asio::ip::address_v4::loopback(), 0)};
    tcp::socket m_socket{m_network};
    std::array<char, 16384> m_bytes{};
    bool m_isAccepting = (Accept(), true);
    std::thread m_thread;
};

/** A client that waits for its answers. */
class CClient
{
public:
    explicit CClient(unsigned short port)
    {
        m_socket.connect(tcp::endpoint(boost::asio::ip::address_v4::loopback(), port));
        m_socket.set_option(tcp::no_delay(true));
    }

    void Send(const std::string& bytes)
    {
        boost::asio::write(m_socket, boost::asio::buffer(bytes));
    }

    void Take(std::size_t count)
    {
        m_answer.resize(count);
        boost::asio::read(m_socket, boost::asio::buffer(m_answer));
    }

    std::size_t TakeSome(std::vector<char>& room)
    {
        return m_socket.read_some(boost::asio::buffer(room));
    }

private:
    boost::asio::io_context m_network;
    tcp::socket m_socket{m_network};
    std::string m_answer;
};

constexpr char kQuery[] = "HOR:SCAL?\n";
constexpr std::size_t kAnswer = sizeof("1E-07\n") - 1;

/** Microseconds of a round trip: the median of those of some milliseconds. */
double RoundTrip(CClient& client, std::size_t answer, double seconds)
{
    std::vector<double> times;
    for (const auto end = t_Clock::now(); SecondsSince(end) < seconds || times.size() < 10;)
    {
        const auto begin = t_Clock::now();
        client.Send(kQuery);
        client.Take(answer);
        times.push_back(1e6 * SecondsSince(begin));
    }
    std::nth_element(times.begin(), times.begin() + static_cast<long>(times.size() / 2),
                     times.end());
    return times[times.size() / 2];
}

void CompareRoundTrips(unsigned short port, double seconds)
{
    constexpr int kTurns = 10;
    const CEcho echo;
    CClient one(port);
    CClient other(echo.GetPort());
    std::vector<double> ratios;
    double query = 0;
    double same = 0;
    for (int i = 0; i < kTurns; ++i)
    {
        query = RoundTrip(one, kAnswer, seconds / kTurns);
        same = RoundTrip(other, sizeof kQuery - 1, seconds / kTurns);
        ratios.push_back(query / same);
    }
    std::sort(ratios.begin(), ratios.end());
    std::printf("query               %9.2f us, echo %.2f us: %.2f (budget 1.5)\n", query, same,
                ratios[kTurns / 2]);
}

/** Queries without waiting for their answers, by a client with a thread for each direction. */
void CountPipelined(unsigned short port, double seconds)
{
    constexpr int kOfPiece = 1000;
    CClient client(port);
    std::string piece;
    for (int i = 0; i < kOfPiece; ++i)
    {
        piece += kQuery;
    }
    std::atomic<bool> isDone{false};
    std::atomic<std::size_t> sent{0};
    const auto begin = t_Clock::now();
    const double used = Used(RUSAGE_SELF);
    double ofSender = 0;
    std::thread sender(
        [&]
        {
            while (SecondsSince(begin) < seconds)
            {
                client.Send(piece);
                sent += kOfPiece;
            }
            isDone = true;
            ofSender = Used(RUSAGE_THREAD);
        });
    const double ofReader = Used(RUSAGE_THREAD);
    std::vector<char> room(1U << 16U);
    std::size_t bytes = 0;
    while (!isDone || bytes < sent * kAnswer)
    {
        bytes += client.TakeSome(room);
    }
    const double wall = SecondsSince(begin);
    sender.join();
    const double ofService = Used(RUSAGE_SELF) - used - ofSender - (Used(RUSAGE_THREAD) - ofReader);
    const auto count = static_cast<double>(sent);
    std::printf("pipelined           %9.0f queries/s; %.0f for each second that the service used "
                "(budget 200000)\n",
                count / wall, count / ofService);
}

void CountIdle(unsigned short port, double seconds)
{
    for (const int connections : {0, 32})
    {
        std::vector<std::unique_ptr<CClient>> clients;
        for (int i = 0; i < connections; ++i)
        {
            clients.push_back(std::make_unique<CClient>(port));
            clients.back()->Send(kQuery);
            clients.back()->Take(kAnswer);
        }
        const double used = Used(RUSAGE_SELF);
        std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
        std::printf("idle, %2d clients    %9.3f %% of a core (budget 0.1)\n", connections,
                    100 * (Used(RUSAGE_SELF) - used) / seconds);
    }
}

double WritesPerSecond(IKWFunctionZEL& root, double seconds)
{
    const auto scale = root.GetPgHorizontal()->GetPrScale();
    const auto begin = t_Clock::now();
    const double used = Used(RUSAGE_THREAD);
    int count = 0;
    for (; SecondsSince(begin) < seconds || count < 10; ++count)
    {
        static_cast<void>(scale->Set(count % 2 == 0 ? 1e-3 : 2e-3));
    }
    std::printf("  %.0f for each second that the application used\n",
                count / (Used(RUSAGE_THREAD) - used));
    return count / SecondsSince(begin);
}

/** Writes of the application alone, beside idle clients, and beside one that asks without end. */
void CompareWrites(IKWFunctionZEL& root, unsigned short port, double seconds)
{
    const double alone = WritesPerSecond(root, seconds);
    double idle = 0;
    {
        std::vector<std::unique_ptr<CClient>> clients;
        for (int i = 0; i < 32; ++i)
        {
            clients.push_back(std::make_unique<CClient>(port));
            clients.back()->Send("*OPC?\n");
            clients.back()->Take(2);
        }
        idle = WritesPerSecond(root, seconds);
    }
    std::atomic<bool> isDone{false};
    CClient busy(port);
    std::thread asking(
        [&]
        {
            while (!isDone)
            {
                busy.Send("*STB?;:VERT:CHAN1:OFFS?;:VERT:CHAN2:OFFS?\n");
                busy.Take(sizeof("0;0;0\n") - 1);
            }
        });
    const double beside = WritesPerSecond(root, seconds);
    isDone = true;
    asking.join();
    std::printf("writes              %9.0f/s alone; beside 32 idle clients %.2f, beside one that "
                "asks %.2f of that\n",
                alone, idle / alone, beside / alone);
}
} // namespace

int main(int argc, char** argv)
{
    const double seconds = argc > 1 ? std::atof(argv[1]) : 2;
    const auto root = GetZELRoot();
    KW_ServiceOptions options;
    options.port = 0;
    options.httpPort = 0;
    const CKWService service(root, options);
    CompareRoundTrips(service.GetPort(), seconds);
    CountPipelined(service.GetPort(), seconds);
    CountIdle(service.GetPort(), seconds);
    CompareWrites(*root, service.GetPort(), seconds);
    return 0;
}
