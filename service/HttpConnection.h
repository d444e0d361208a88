// SPDX-License-Identifier: MIT
#pragma once

#include "HttpServer.h"

/** Serves a new socket, and adds it to the clients. */
void StartHttp(const std::shared_ptr<t_HttpShared>& shared, boost::asio::ip::tcp::socket socket);
