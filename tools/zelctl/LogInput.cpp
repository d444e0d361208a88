// SPDX-License-Identifier: MIT
#include "LogInput.h"

#include "Failure.h"

#include <QFile>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
constexpr std::size_t kBufferSize = std::size_t{1} << 20U;
constexpr std::size_t kLongestLine = std::size_t{64} << 10U;

CFailure CanNotRead(const QString& fileName, int cause)
{
    return {eSTATUS_USAGE, QStringLiteral("can not read the log \"%1\": %2")
                               .arg(fileName, QString::fromLocal8Bit(std::strerror(cause)))};
}

constexpr int kWithoutEnd = -1;

bool HasInput(int descriptor, int milliseconds)
{
    pollfd waiting{descriptor, POLLIN, 0};
    return poll(&waiting, 1, milliseconds) > 0;
}
} // namespace

CLogInput::CLogInput(const QString& fileName)
    : m_fileName(fileName),
      m_descriptor(fileName == QLatin1String("-")
                       ? STDIN_FILENO
                       : open(QFile::encodeName(fileName).constData(), O_RDONLY | O_CLOEXEC)),
      m_buffer(kBufferSize)
{
    if (m_descriptor < 0)
    {
        throw CanNotRead(fileName, errno);
    }
}

CLogInput::~CLogInput()
{
    if (m_descriptor != STDIN_FILENO)
    {
        close(m_descriptor);
    }
}

void CLogInput::Read(const std::function<bool(std::string_view)>& onLine,
                     const std::function<void()>& onPause)
{
    while (TakeLines(onLine, false))
    {
        if (!Fill(onPause))
        {
            TakeLines(onLine, true);
            return;
        }
    }
}

/** The complete lines of the buffer; false when no more are wanted. */
bool CLogInput::TakeLines(const std::function<bool(std::string_view)>& onLine, bool atEnd)
{
    const auto give = [&](const char* begin, std::size_t length)
    {
        const std::size_t shown = std::min(length, kLongestLine);
        const bool hasReturn = shown > 0 && begin[shown - 1] == '\r';
        return std::exchange(m_skips, false) || onLine({begin, shown - (hasReturn ? 1U : 0U)});
    };
    while (m_begin < m_end)
    {
        const char* const begin = m_buffer.data() + m_begin;
        const auto* const found =
            static_cast<const char*>(std::memchr(begin, '\n', m_end - m_begin));
        const auto length =
            found == nullptr ? m_end - m_begin : static_cast<std::size_t>(found - begin);
        if (found == nullptr && !atEnd && length <= kLongestLine)
        {
            return true;
        }
        m_begin += length + (found == nullptr ? 0 : 1);
        if (!give(begin, length))
        {
            return false;
        }
        m_skips = found == nullptr;
    }
    return true;
}

/** Reads what is there, or waits for it; false at the end. */
bool CLogInput::Fill(const std::function<void()>& onPause)
{
    std::memmove(m_buffer.data(), m_buffer.data() + m_begin, m_end - m_begin);
    m_end -= m_begin;
    m_begin = 0;
    if (!HasInput(m_descriptor, 0))
    {
        onPause();
    }
    ssize_t count = 0;
    do
    {
        // Who shares the descriptor may have made it one that does not wait.
        HasInput(m_descriptor, kWithoutEnd);
        count = read(m_descriptor, m_buffer.data() + m_end, m_buffer.size() - m_end);
    } while (count < 0 && (errno == EINTR || errno == EAGAIN));
    if (count < 0)
    {
        throw CanNotRead(m_fileName, errno);
    }
    m_end += static_cast<std::size_t>(count);
    return count > 0;
}
