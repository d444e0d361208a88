// SPDX-License-Identifier: MIT
#pragma once

#include "AccessToken.h"

#include <string_view>

/** What a request says of who sends it: the values of these headers, empty where they are missing.
 */
struct t_HttpSender
{
    std::string_view host;
    std::string_view origin;
    std::string_view authorization;
    std::string_view protocols; ///< of WebSocket, in which a page shows its token
};

namespace NHttp
{
/**
 * Whether a request is answered: 200, or the status that refuses it.
 *
 * The host must be a number or "localhost": a page whose name was bound to this machine's address
 * would name itself (421). What a page sends must come from this very host (403). Where there is a
 * token the request must show it (401): as authorization, or, as a page can set no header of a
 * WebSocket, as a protocol "bearer." with the token in the alphabet of base64url behind it.
 */
int Check(const t_HttpSender& sender, const CAccessToken* token);
} // namespace NHttp
