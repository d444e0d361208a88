// SPDX-License-Identifier: MIT
#include "RemoteMessage.h"

#include <algorithm>

namespace
{
bool IsLengthDigit(char c)
{
    return c >= '0' && c <= '9';
}
} // namespace

void CRemoteReader::Add(const char* bytes, std::size_t count)
{
    for (std::size_t i = 0; i < count;)
    {
        const std::size_t plain = CountPlain(bytes + i, count - i);
        Keep(bytes + i, plain);
        m_block -= m_state == eSTATE::Block ? plain : 0;
        i += plain;
        if (i < count)
        {
            Take(bytes[i++]);
        }
    }
}

std::size_t CRemoteReader::CountPlain(const char* bytes, std::size_t count) const
{
    const auto until = [&](auto isSpecial)
    { return static_cast<std::size_t>(std::find_if(bytes, bytes + count, isSpecial) - bytes); };
    switch (m_state)
    {
    case eSTATE::Plain:
        return until([](char c) { return c == '\n' || c == '"' || c == '\'' || c == '#'; });
    case eSTATE::Quotes:
        return until([](char c) { return c == '\n' || c == '"'; });
    case eSTATE::Apostrophes:
        return until([](char c) { return c == '\n' || c == '\''; });
    case eSTATE::Indefinite:
        return until([](char c) { return c == '\n'; });
    case eSTATE::Block:
        return std::min(count, m_block - 1); // its last byte ends it
    default:
        return 0;
    }
}

CRemoteReader::t_Message CRemoteReader::Take()
{
    t_Message message = std::move(m_messages.front());
    m_messages.pop_front();
    m_waiting -= static_cast<std::size_t>(message.bytes.size()) + 1;
    return message;
}

void CRemoteReader::Take(char c)
{
    if (c == '\n' && m_state != eSTATE::Block)
    {
        End();
        return;
    }
    Keep(&c, 1);
    switch (m_state)
    {
    case eSTATE::Plain:
        m_state = c == '"'    ? eSTATE::Quotes
                  : c == '\'' ? eSTATE::Apostrophes
                  : c == '#'  ? eSTATE::BlockSign
                              : eSTATE::Plain;
        break;
    case eSTATE::Quotes:
        m_state = c == '"' ? eSTATE::Plain : m_state;
        break;
    case eSTATE::Apostrophes:
        m_state = c == '\'' ? eSTATE::Plain : m_state;
        break;
    case eSTATE::BlockSign:
    case eSTATE::BlockLength:
        EnterBlock(c);
        break;
    case eSTATE::Block:
        m_state = --m_block == 0 ? eSTATE::Plain : m_state;
        break;
    case eSTATE::Indefinite:
        break;
    }
}

void CRemoteReader::EnterBlock(char c)
{
    if (!IsLengthDigit(c))
    {
        m_state = eSTATE::Plain; // "#H": digits of a number, or a mistake that the parser finds
    }
    else if (m_state == eSTATE::BlockSign)
    {
        m_digits = c - '0';
        m_block = 0;
        m_state = m_digits == 0 ? eSTATE::Indefinite : eSTATE::BlockLength;
    }
    else
    {
        m_block = 10 * m_block + static_cast<std::size_t>(c - '0');
        if (--m_digits == 0)
        {
            m_state = m_block == 0 ? eSTATE::Plain : eSTATE::Block;
        }
    }
}

void CRemoteReader::Keep(const char* bytes, std::size_t count)
{
    const std::size_t room = m_bounds.message - static_cast<std::size_t>(m_bytes.size());
    m_isTooLong = m_isTooLong || count > room;
    if (m_isTooLong)
    {
        m_bytes.clear();
        m_bytes.squeeze();
    }
    else
    {
        m_bytes.append(bytes, static_cast<int>(count));
    }
}

void CRemoteReader::End()
{
    if (m_state != eSTATE::Indefinite && m_bytes.endsWith('\r'))
    {
        m_bytes.chop(1);
    }
    m_waiting += static_cast<std::size_t>(m_bytes.size()) + 1;
    m_messages.push_back({std::move(m_bytes), !m_isTooLong});
    m_bytes = QByteArray();
    m_isTooLong = false;
    m_state = eSTATE::Plain;
    ++m_ended;
}
