// SPDX-License-Identifier: MIT
#pragma once

#include "Socket.h"

#include <array>
#include <boost/asio/buffer.hpp>
#include <boost/asio/error.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/beast/core/role.hpp>
#include <boost/system/system_error.hpp>

/** A connection as the library for HTTP and WebSocket reads and writes it. Waiting is that of the
    socket, which an interrupt ends: the event loop is there because the library asks for one, and
    never runs. */
class CSocketStream
{
public:
    using executor_type = boost::asio::io_context::executor_type;
    using t_Error = boost::system::error_code;

    CSocketStream(QByteArray host, QByteArray port) : m_socket(std::move(host), std::move(port)) {}

    const CSocket& GetSocket() const { return m_socket; }
    executor_type get_executor() noexcept { return m_loop.get_executor(); }

    template <typename TBuffers>
    std::size_t read_some(const TBuffers& buffers, t_Error& error)
    {
        const boost::asio::mutable_buffer room = First(buffers);
        int number = 0;
        const std::size_t count =
            room.size() > 0 ? m_socket.Receive(room.data(), room.size(), number) : 0;
        error = number != 0 ? ErrorOf(number) : t_Error();
        if (count == 0 && number == 0 && room.size() > 0)
        {
            error = boost::asio::error::eof;
        }
        return count;
    }
    template <typename TBuffers>
    std::size_t read_some(const TBuffers& buffers)
    {
        t_Error error;
        const std::size_t count = read_some(buffers, error);
        return error ? throw boost::system::system_error(error) : count;
    }
    template <typename TBuffers>
    std::size_t write_some(const TBuffers& buffers, t_Error& error)
    {
        // In one piece: a head that comes in several is answered before its end by some.
        std::array<char, 16384> bytes;
        const std::size_t size = boost::asio::buffer_copy(boost::asio::buffer(bytes), buffers);
        int number = 0;
        const std::size_t count = size > 0 ? m_socket.Send(bytes.data(), size, number) : 0;
        error = number != 0 ? ErrorOf(number) : t_Error();
        return count;
    }
    template <typename TBuffers>
    std::size_t write_some(const TBuffers& buffers)
    {
        t_Error error;
        const std::size_t count = write_some(buffers, error);
        return error ? throw boost::system::system_error(error) : count;
    }

private:
    static t_Error ErrorOf(int number) { return {number, boost::system::system_category()}; }

    template <typename TBuffers>
    static boost::asio::mutable_buffer First(const TBuffers& buffers)
    {
        const auto end = boost::asio::buffer_sequence_end(buffers);
        for (auto at = boost::asio::buffer_sequence_begin(buffers); at != end; ++at)
        {
            if (boost::asio::mutable_buffer(*at).size() > 0)
            {
                return *at;
            }
        }
        return {};
    }

    boost::asio::io_context m_loop;
    CSocket m_socket;
};

/** Called where a WebSocket has been closed: the socket ends with its use. */
inline void teardown(boost::beast::role_type /*role*/, CSocketStream& /*stream*/,
                     boost::system::error_code& error)
{
    error = {};
}
