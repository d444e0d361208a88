// SPDX-License-Identifier: MIT
#include "RemoteGuard.h"

#include "ServiceLimits.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace
{
/** Whose target need not begin with "/". */
constexpr std::array kMethods{"GET",     "HEAD",    "POST",  "PUT",   "DELETE",
                              "CONNECT", "OPTIONS", "TRACE", "PATCH", "PRI"};

/** What a method of HTTP may be made of. */
bool IsOfMethod(char c)
{
    const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
    return isLetter || (c >= '0' && c <= '9') ||
           (c != '\0' && std::strchr("!#$%&'*+-.^_`|~", c) != nullptr);
}
} // namespace

CRemoteGuard::eVERDICT CRemoteGuard::Look(const char* bytes, std::size_t count)
{
    m_bytes.append(bytes, static_cast<int>(count));
    const auto* const end = std::find_if_not(m_bytes.constBegin(), m_bytes.constEnd(), IsOfMethod);
    const int length = static_cast<int>(end - m_bytes.constBegin());
    if (end == m_bytes.constEnd())
    {
        return length > NServiceLimits::kLongestWord ? eVERDICT::Http : eVERDICT::Undecided;
    }
    if (*end != ' ' || length == 0)
    {
        return eVERDICT::Remote;
    }
    const QByteArray word = m_bytes.left(length);
    if (std::any_of(kMethods.begin(), kMethods.end(),
                    [&](const char* method) { return word == method; }))
    {
        return eVERDICT::Http;
    }
    // Pages choose other methods as well, but the target is a path, which begins no parameter.
    return length + 1 == m_bytes.size()    ? eVERDICT::Undecided
           : m_bytes.at(length + 1) == '/' ? eVERDICT::Http
                                           : eVERDICT::Remote;
}
