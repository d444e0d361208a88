// SPDX-License-Identifier: MIT
#pragma once

#include "HttpServer.h"

#include <boost/beast/http/message.hpp>
#include <boost/beast/http/string_body.hpp>

/** Goes on with a socket whose client asks for a WebSocket, and adds it to the clients. */
void StartWebSocket(const std::shared_ptr<t_HttpShared>& shared,
                    boost::asio::ip::tcp::socket socket,
                    boost::beast::http::request<boost::beast::http::string_body> request);
