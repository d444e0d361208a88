// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <optional>
#include <string>
#include <string_view>

/**
 * What clients of HTTP show to be let in: the one line of a file that nobody but the service's own
 * user can read or write.
 */
class CAccessToken
{
public:
    /** Nothing, and what to do about it, where the file is missing, no regular file, another
        user's, open to others, or holds no token of 16 to 1024 printable characters. A link is not
        followed. */
    static std::optional<CAccessToken> Read(const QString& file, QString& error);

    /** Takes the same time whatever the token is and how much of it was guessed. */
    bool Matches(std::string_view shown) const;

private:
    explicit CAccessToken(std::string token) : m_token(std::move(token)) {}

    std::string m_token;
};
