// SPDX-License-Identifier: MIT
#include "WebSocket.h"

#include <QCryptographicHash>
#include <QRandomGenerator>
#include <cerrno>
#include <utility>

namespace
{
constexpr int kLongestMessage = 64 << 20; ///< far beyond what a service keeps for a subscriber
constexpr int kLongestSent = 0xFFFF;      ///< as much as a service takes

// The first byte of a frame: what it is, and whether it ends its message.
constexpr int kText = 1;
constexpr int kClose = 8;
constexpr int kPing = 9;
constexpr int kPong = 10;
constexpr int kKinds = 0x0F;
constexpr int kLast = 0x80;

// The second one: the length, or how many bytes of it follow, and whether a mask does.
constexpr int kMasked = 0x80;
constexpr int kTwoBytes = 126;
constexpr int kEightBytes = 127;

QByteArray RandomBytes(int count)
{
    QByteArray bytes;
    for (int i = 0; i < count; ++i)
    {
        bytes.append(static_cast<char>(QRandomGenerator::system()->bounded(256)));
    }
    return bytes;
}

quint64 ToNumber(const QByteArray& bytes)
{
    quint64 number = 0;
    for (const char byte : bytes)
    {
        number = number << 8U | static_cast<unsigned char>(byte);
    }
    return number;
}
} // namespace

QByteArray CWebSocket::MakeKey()
{
    return RandomBytes(16).toBase64();
}

QByteArray CWebSocket::AnswerTo(const QByteArray& key)
{
    return QCryptographicHash::hash(key + "258EAFA5-E914-47DA-95CA-C5AB0DC85B11",
                                    QCryptographicHash::Sha1)
        .toBase64();
}

void CWebSocket::Send(const QByteArray& text)
{
    if (text.size() > kLongestSent)
    {
        throw CFailure(eSTATUS_USAGE,
                       QStringLiteral("a message of %1 bytes is too long").arg(text.size()));
    }
    SendFrame(kText, text);
}

void CWebSocket::SendFrame(int kind, const QByteArray& payload)
{
    QByteArray frame;
    frame.append(static_cast<char>(kLast | kind));
    const int size = static_cast<int>(payload.size());
    frame.append(static_cast<char>(kMasked | (size < kTwoBytes ? size : kTwoBytes)));
    if (size >= kTwoBytes)
    {
        frame.append(static_cast<char>(size >> 8)).append(static_cast<char>(size));
    }
    const QByteArray mask = RandomBytes(4);
    frame += mask;
    for (int i = 0; i < size; ++i)
    {
        frame.append(static_cast<char>(payload[i] ^ mask[i % 4]));
    }
    if (!m_socket.Send(frame))
    {
        throw m_socket.LostBy(errno);
    }
}

QByteArray CWebSocket::TakeBytes(int count)
{
    while (m_bytes.size() < count)
    {
        const int received = m_socket.Receive(m_bytes);
        if (received <= 0)
        {
            throw received == 0 ? m_socket.Lost(QStringLiteral("it hung up"))
                                : m_socket.LostBy(errno);
        }
    }
    const QByteArray taken = m_bytes.left(count);
    m_bytes.remove(0, count);
    return taken;
}

CWebSocket::t_Frame CWebSocket::TakeFrame()
{
    const QByteArray head = TakeBytes(2);
    const int shortLength = head[1] & ~kMasked & 0xFF;
    const quint64 length = shortLength == kTwoBytes     ? ToNumber(TakeBytes(2))
                           : shortLength == kEightBytes ? ToNumber(TakeBytes(8))
                                                        : static_cast<quint64>(shortLength);
    const bool isMasked = (head[1] & kMasked) != 0; // clients alone do that
    if (isMasked || length > static_cast<quint64>(kLongestMessage - m_message.size()))
    {
        throw m_socket.Lost(QStringLiteral("what came is no answer of the service"));
    }
    return {head[0] & kKinds, (head[0] & kLast) != 0, TakeBytes(static_cast<int>(length))};
}

std::optional<QByteArray> CWebSocket::Take()
{
    const t_Frame frame = TakeFrame();
    switch (frame.kind)
    {
    case kClose:
        throw m_socket.Lost(QStringLiteral("it hung up"));
    case kPing:
        SendFrame(kPong, frame.payload);
        return std::nullopt;
    case kPong:
        return std::nullopt;
    default:
        m_message += frame.payload;
        return frame.isLast ? std::optional(std::exchange(m_message, QByteArray())) : std::nullopt;
    }
}
