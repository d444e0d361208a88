// SPDX-License-Identifier: MIT
#include "Script.h"

#include "AcceptanceNames.h"
#include "CommandLine.h"
#include "KWTexts.h"
#include "Secrets.h"

#include <QFile>
#include <QJsonArray>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>

namespace
{
constexpr char kRunFooter[] =
    "A script holds one command per line, as on the command line but without \"zelctl\"; \"#\"\n"
    "begins a comment. Beside the commands of \"zelctl --help\" it may use:\n"
    "  echo TEXT...             show a text\n"
    "  undo, redo [--trace]     take the last step back, repeat it\n"
    "  begin TEXT               begin a step of several writes\n"
    "  commit, rollback         end the step: keep it, or take it back\n"
    "  expect CODE COMMAND...   the command must be answered with this code (name or number)\n"
    "  same PATH VALUE          the property must have this value\n"
    "The first line that fails ends the script with \"file:line\" and what is wrong. \"diff\" "
    "fails\n"
    "when it finds a difference, unless it stands behind \"expect 1\".\n"
    "\n"
    "Example:\n"
    "  zelctl run examples/first-session.zel";

constexpr int kDeepestScript = 16;
int s_depth = 0;

/** Scripts that run themselves come to an end. */
class CDepthGuard
{
public:
    CDepthGuard()
    {
        if (s_depth >= kDeepestScript)
        {
            throw CFailure(
                eSTATUS_USAGE,
                QStringLiteral("scripts run each other more than %1 deep").arg(kDeepestScript));
        }
        ++s_depth;
    }
    ~CDepthGuard() { --s_depth; }
    CDepthGuard(const CDepthGuard&) = delete;
    CDepthGuard& operator=(const CDepthGuard&) = delete;
};

std::vector<std::string> WithoutFirst(const std::vector<std::string>& words, std::size_t count)
{
    return {words.begin() + static_cast<std::ptrdiff_t>(std::min(count, words.size())),
            words.end()};
}

t_Answer Echo(CSession& session, const std::vector<std::string>& words)
{
    QStringList texts;
    for (const std::string& word : words)
    {
        texts.append(ToText(word));
    }
    const QString text = texts.join(QLatin1Char(' '));
    CReply reply(session, QStringLiteral("echo"));
    return reply.Line(text).Field("text", text).Send();
}

QJsonObject ToJson(const CFailure& failure)
{
    QJsonObject error = failure.GetData();
    error[QStringLiteral("status")] = static_cast<int>(failure.GetStatus());
    error[QStringLiteral("message")] = Shortened(failure.GetText());
    if (failure.GetCode())
    {
        error[QStringLiteral("code")] = static_cast<int>(*failure.GetCode());
        error[QStringLiteral("name")] = KW_GetAcceptanceName(*failure.GetCode());
    }
    return error;
}

t_Answer Expect(CSession& session, const std::vector<std::string>& words)
{
    if (words.size() < 2 || words[1] == "expect")
    {
        throw CFailure(eSTATUS_USAGE, QStringLiteral("\"expect\" takes a code and a command"));
    }
    const KW_ACCEPTANCE wanted = ReadAcceptance(ToText(words.front()));
    t_Answer answer;
    try
    {
        answer = ExecuteWords(session, WithoutFirst(words, 1));
    }
    catch (const CFailure& failure)
    {
        if (!failure.GetCode())
        {
            throw;
        }
        answer.code = *failure.GetCode();
        if (answer.code == wanted)
        {
            CReply reply(session, QStringLiteral("expect"));
            return reply.Line(failure.GetText()).Field("error", ToJson(failure)).Send(wanted);
        }
    }
    if (answer.code != wanted)
    {
        throw CFailure(eSTATUS_REFUSED,
                       QStringLiteral("expected %1; the answer is %2")
                           .arg(DescribeAcceptance(wanted), DescribeAcceptance(answer.code)));
    }
    return {eSTATUS_OK, wanted};
}

CFailure CanNotRead(const QString& fileName, const QString& why)
{
    return {eSTATUS_USAGE, QStringLiteral("can not read the script \"%1\": %2").arg(fileName, why)};
}

/** Opens a regular file, or the standard input. Opening does not wait for the other end of a pipe,
    and what is asked is what was opened. */
void OpenScript(QFile& file, const QString& fileName)
{
    if (fileName == QLatin1String("-"))
    {
        file.open(stdin, QIODevice::ReadOnly);
        return;
    }
    const int descriptor =
        open(QFile::encodeName(fileName).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0)
    {
        throw CanNotRead(fileName, QString::fromLocal8Bit(std::strerror(errno)));
    }
    file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle);
    struct stat status
    {
    };
    if (fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode))
    {
        throw CanNotRead(fileName, QStringLiteral("it is no regular file; \"-\" reads the standard "
                                                  "input"));
    }
}

QList<QByteArray> ReadLines(const QString& fileName)
{
    constexpr qint64 kLargestScript = 64 << 20;
    QFile file;
    OpenScript(file, fileName);
    QByteArray text = file.read(kLargestScript + 1);
    if (text.size() > kLargestScript)
    {
        throw CanNotRead(fileName, QStringLiteral("it has more than 64 MiB"));
    }
    if (text.startsWith("\xEF\xBB\xBF"))
    {
        text.remove(0, 3);
    }
    return text.split('\n');
}

void ExecuteScriptLine(CSession& session, const QString& line)
{
    const std::vector<std::string> words = SplitWords(line);
    if (words.empty())
    {
        return;
    }
    if (!session.GetStyle().json && words.front() != "echo")
    {
        session.GetOutput().Line(QStringLiteral("> ") + WithoutSecrets(session, line.trimmed()));
    }
    const t_Answer answer = ExecuteWords(session, words);
    if (answer.status != eSTATUS_OK && !answer.isDone)
    {
        throw CFailure(eSTATUS_REFUSED,
                       QStringLiteral("\"%1\" found differences").arg(ToText(words.front())));
    }
}

struct t_RunOptions
{
    std::string file;

    void Declare(CLI::App& command)
    {
        command.add_option("file", file, "Script; \"-\" is the standard input")->required();
    }

    t_Answer Run(CSession& session) const;
};

t_Answer t_RunOptions::Run(CSession& session) const
{
    const CDepthGuard guard;
    const bool wasInTransaction = session.IsInTransaction();
    const QList<QByteArray> lines = ReadLines(ToText(file));
    int number = 0;
    try
    {
        for (const QByteArray& line : lines)
        {
            ++number;
            ExecuteScriptLine(session, FromUtf8(line));
        }
        if (session.IsInTransaction() && !wasInTransaction)
        {
            throw CFailure(eSTATUS_USAGE,
                           QStringLiteral("the script ends between \"begin\" and \"commit\""));
        }
    }
    catch (CFailure& failure)
    {
        if (session.IsInTransaction() && !wasInTransaction)
        {
            session.End(false);
        }
        failure.AddPlace(ToText(file), number);
        throw;
    }
    return {};
}

struct t_ShellOptions
{
    void Declare(CLI::App& /*command*/) {}
    t_Answer Run(CSession& session) const { return RunShell(session); }
};
} // namespace

QString FromUtf8(const QByteArray& bytes)
{
    const QString text = QString::fromUtf8(bytes);
    if (text.toUtf8() != bytes)
    {
        throw CFailure(
            eSTATUS_USAGE,
            QStringLiteral("\"%1\" is no text in UTF-8, which all names, paths and values "
                           "are written in")
                .arg(text.left(80)));
    }
    return text;
}

std::vector<std::string> SplitWords(const QString& line)
{
    std::vector<std::string> words;
    std::optional<QString> word;
    QChar quote;
    for (int i = 0; i < line.size(); ++i)
    {
        const QChar c = line[i];
        const bool isEscape = quote == QLatin1Char('"') && c == QLatin1Char('\\') &&
                              i + 1 < line.size() &&
                              (line[i + 1] == QLatin1Char('"') || line[i + 1] == QLatin1Char('\\'));
        if (isEscape)
        {
            word->append(line[++i]);
        }
        else if (!quote.isNull() ? c == quote : (c == QLatin1Char('"') || c == QLatin1Char('\'')))
        {
            quote = quote.isNull() ? c : QChar();
            word = word.value_or(QString());
        }
        else if (!quote.isNull() || !c.isSpace())
        {
            if (!word && c == QLatin1Char('#'))
            {
                break;
            }
            word = word ? std::move(word) : QString();
            word->append(c);
        }
        else if (word)
        {
            words.push_back(word->toStdString());
            word.reset();
        }
    }
    if (!quote.isNull())
    {
        throw CFailure(eSTATUS_USAGE, QStringLiteral("the quote %1 is not closed").arg(quote));
    }
    if (word)
    {
        words.push_back(word->toStdString());
    }
    return words;
}

t_Answer ExecuteWords(CSession& session, const std::vector<std::string>& words)
{
    if (words.empty())
    {
        return {};
    }
    if (words.front() == "echo")
    {
        return Echo(session, WithoutFirst(words, 1));
    }
    if (words.front() == "expect")
    {
        return Expect(session, WithoutFirst(words, 1));
    }
    CCommandLine& line = session.GetLines().Get(words);
    return line.Parse(words) ? line.Run() : t_Answer{};
}

void ShowFailure(CSession& session, const CFailure& failure)
{
    if (session.GetStyle().json)
    {
        QJsonObject document{{QStringLiteral("error"), ToJson(failure)}};
        const QStringList reports = session.GetOutput().TakeReports();
        if (!reports.isEmpty())
        {
            document[QStringLiteral("reports")] = QJsonArray::fromStringList(reports);
        }
        session.GetOutput().Document(document);
        return;
    }
    session.GetOutput().Problem(QStringLiteral("zelctl: ") + failure.GetText());
}

void AddScriptCommands(CLI::App& app, t_Run& run)
{
    AddCommand<t_RunOptions>(app, run, "run", "Carry out a script of commands", kRunFooter);
    AddCommand<t_ShellOptions>(
        app, run, "shell", "Carry out commands line by line",
        "In a terminal the tabulator completes commands, paths and values, "
        "and\nthe arrows recall lines. \"help\" lists the commands, \"quit\" "
        "leaves.");
}
