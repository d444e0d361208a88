// SPDX-License-Identifier: MIT
#include "AccessToken.h"

#include "ServiceLimits.h"

#include <QFile>
#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
constexpr mode_t kOthers = S_IRWXG | S_IRWXO;

/** A file that is closed when its use ends. */
class CDescriptor
{
public:
    explicit CDescriptor(const QString& file)
        : m_number(::open(QFile::encodeName(file).constData(),
                          O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK))
    {
    }
    ~CDescriptor()
    {
        if (m_number >= 0)
        {
            ::close(m_number);
        }
    }
    CDescriptor(const CDescriptor&) = delete;
    CDescriptor& operator=(const CDescriptor&) = delete;

    int Number() const { return m_number; }

private:
    int m_number;
};

/** What keeps the file from being a secret; empty when it is one. */
QString ProblemOf(const CDescriptor& file)
{
    struct stat status = {};
    if (file.Number() < 0 || ::fstat(file.Number(), &status) != 0)
    {
        return errno == ELOOP ? QStringLiteral("it is a link: name the file itself")
                              : QString::fromLocal8Bit(std::strerror(errno));
    }
    if (!S_ISREG(status.st_mode))
    {
        return QStringLiteral("it is no regular file");
    }
    if (status.st_uid != ::geteuid())
    {
        return QStringLiteral("it belongs to another user: chown it to the one that serves");
    }
    return (status.st_mode & kOthers) == 0 ? QString()
                                           : QStringLiteral("others have access to it: chmod 0600");
}

std::string ContentOf(const CDescriptor& file)
{
    std::array<char, NServiceLimits::kLongestToken + 3> bytes{};
    const auto count = ::read(file.Number(), bytes.data(), bytes.size());
    std::string content(bytes.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    while (!content.empty() && (content.back() == '\n' || content.back() == '\r'))
    {
        content.pop_back();
    }
    return content;
}

bool IsToken(const std::string& text)
{
    return text.size() >= NServiceLimits::kShortestToken &&
           text.size() <= NServiceLimits::kLongestToken &&
           std::all_of(text.begin(), text.end(), [](char c) { return c > ' ' && c <= '~'; });
}
} // namespace

std::optional<CAccessToken> CAccessToken::Read(const QString& file, QString& error)
{
    const CDescriptor descriptor(file);
    QString problem = ProblemOf(descriptor);
    std::string token = problem.isEmpty() ? ContentOf(descriptor) : std::string();
    if (problem.isEmpty() && !IsToken(token))
    {
        problem = QStringLiteral("a line of %1 to %2 printable characters without blanks is wanted")
                      .arg(NServiceLimits::kShortestToken)
                      .arg(NServiceLimits::kLongestToken);
    }
    if (!problem.isEmpty())
    {
        error = QStringLiteral("token file %1: %2").arg(file, problem);
        return std::nullopt;
    }
    return CAccessToken(std::move(token));
}

bool CAccessToken::Matches(std::string_view shown) const
{
    // The time depends on what was shown alone.
    std::size_t difference = shown.size() ^ m_token.size();
    for (std::size_t i = 0; i < shown.size(); ++i)
    {
        difference |= static_cast<unsigned char>(shown[i] ^ m_token[i % m_token.size()]);
    }
    return difference == 0;
}
