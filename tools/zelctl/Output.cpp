// SPDX-License-Identifier: MIT
#include "Output.h"

#include "Failure.h"

#include <QJsonDocument>
#include <QSaveFile>
#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <numeric>
#include <sys/ioctl.h>
#include <unistd.h>
#include <utility>

namespace
{
constexpr int kGap = 2;

int WidthOf(const QString& text)
{
    return static_cast<int>(text.toUcs4().size());
}

QString Fitted(const QString& text, int width)
{
    const int surplus = WidthOf(text) - width;
    return surplus > 0 ? text.left(std::max(width - 1, 0)) + QStringLiteral("…") : text;
}

QString OneLine(const QString& text)
{
    return text.simplified();
}

/** Containers name the function that reports, for developers: a user has no use for it. */
QString WithoutSignature(const KW_ErrorReport& report)
{
    QString text = report.message;
    return report.function.isEmpty() ? text : text.remove(QStringLiteral(" in ") + report.function);
}
} // namespace

QString Shortened(const QString& text)
{
    constexpr int kMost = 1000;
    constexpr int kEnd = 200;
    return text.size() <= kMost ? text
                                : QStringLiteral("%1 … (%2 characters) … %3")
                                      .arg(text.left(kMost - kEnd))
                                      .arg(text.size() - kMost)
                                      .arg(text.right(kEnd));
}

COutput::COutput()
{
    std::signal(SIGPIPE, SIG_IGN);
    m_previousHandler =
        KW_SetErrorHandler([this](const KW_ErrorReport& report) { Report(report); });
}

COutput::~COutput()
{
    KW_SetErrorHandler(m_previousHandler);
}

void COutput::Report(const KW_ErrorReport& report)
{
    if (m_silent)
    {
        return;
    }
    const bool isError = report.type == e_KW_MESSAGE_TYPE_ERROR;
    m_reportedErrors += isError ? 1 : 0;
    const QString text = QStringLiteral("%1: %2 (%3:%4)")
                             .arg(isError ? QStringLiteral("error") : QStringLiteral("warning"),
                                  OneLine(WithoutSignature(report)), report.file)
                             .arg(report.line);
    if (m_keepsReports)
    {
        m_reports.append(Shortened(text));
        return;
    }
    Problem(text);
}

void COutput::KeepReports(bool on)
{
    m_keepsReports = on;
}

QStringList COutput::TakeReports()
{
    return std::exchange(m_reports, {});
}

void COutput::Line(const QString& text)
{
    Write((text.toUtf8() + '\n').toStdString());
}

void COutput::Document(const QJsonObject& document)
{
    Write(QJsonDocument(document).toJson(QJsonDocument::Compact).toStdString() + '\n');
}

void COutput::Block(std::string_view text)
{
    Write(text);
    Flush();
}

void COutput::Problem(const QString& text)
{
    Flush();
    const QByteArray line = Shortened(text).toUtf8() + '\n';
    std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stderr);
}

bool COutput::Finish()
{
    for (const QString& report : TakeReports())
    {
        Problem(report);
    }
    Flush();
    return !m_failed;
}

void COutput::Write(std::string_view bytes)
{
    if (!m_closed)
    {
        CheckWritten(std::fwrite(bytes.data(), 1, bytes.size(), stdout) == bytes.size());
    }
}

void COutput::Flush()
{
    if (!m_closed)
    {
        CheckWritten(std::fflush(stdout) == 0);
    }
}

void COutput::CheckWritten(bool written)
{
    if (written)
    {
        return;
    }
    const int cause = errno;
    m_closed = true;
    if (cause != EPIPE)
    {
        m_failed = true;
        Problem(QStringLiteral("zelctl: the output can not be written: ") +
                QString::fromLocal8Bit(std::strerror(cause)));
    }
}

int GetTerminalWidth()
{
    winsize size{};
    const bool isTerminal = isatty(STDOUT_FILENO) != 0;
    return isTerminal && ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

std::vector<int> CTable::GetWidths(int available) const
{
    std::vector<int> widths;
    for (const QStringList& row : m_rows)
    {
        widths.resize(std::max(widths.size(), static_cast<std::size_t>(row.size())));
        for (std::size_t i = 0; i < widths.size() && i < static_cast<std::size_t>(row.size()); ++i)
        {
            widths[i] = std::max(widths[i], WidthOf(row[static_cast<int>(i)]));
        }
    }
    const int gaps = kGap * std::max(0, static_cast<int>(widths.size()) - 1);
    int surplus =
        available > 0 ? std::accumulate(widths.begin(), widths.end(), gaps) - available : 0;
    for (const t_Shrinking& shrinking : m_shrinking)
    {
        int& width = widths[static_cast<std::size_t>(shrinking.column)];
        const int cut = std::clamp(surplus, 0, std::max(0, width - shrinking.least));
        width -= cut;
        surplus -= cut;
    }
    return widths;
}

QStringList CTable::GetLines(int width) const
{
    const std::vector<int> widths = m_rows.empty() ? std::vector<int>{} : GetWidths(width);
    QStringList lines;
    for (const QStringList& row : m_rows)
    {
        QString line;
        for (int i = 0; i < row.size(); ++i)
        {
            const int column = widths[static_cast<std::size_t>(i)];
            const QString cell = Fitted(row[i], column);
            line += cell + QString(column + kGap - WidthOf(cell), QLatin1Char(' '));
        }
        while (line.endsWith(QLatin1Char(' ')))
        {
            line.chop(1);
        }
        lines.append(line);
    }
    return lines;
}

void WriteWhole(const QString& fileName, const QByteArray& bytes)
{
    QSaveFile file(fileName);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
    {
        throw CFailure(
            eSTATUS_USAGE,
            QStringLiteral("%1 can not be written: %2").arg(fileName, file.errorString()));
    }
}
