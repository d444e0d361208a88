// SPDX-License-Identifier: MIT
#include "Script.h"

#include "AcceptanceNames.h"
#include "CommandLine.h"
#include "Secrets.h"

#include <QFile>
#include <QTextStream>
#include <optional>

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

t_Answer Expect(CSession& session, const std::vector<std::string>& words)
{
    if (words.size() < 2)
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
            return reply.Line(failure.GetText()).Field("text", failure.GetText()).Send(wanted);
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

QStringList ReadLines(const QString& fileName)
{
    QFile file(fileName);
    const bool opened = fileName == QLatin1String("-") ? file.open(stdin, QIODevice::ReadOnly)
                                                       : file.open(QIODevice::ReadOnly);
    if (!opened)
    {
        throw CFailure(
            eSTATUS_USAGE,
            QStringLiteral("can not read the script \"%1\": %2").arg(fileName, file.errorString()));
    }
    return QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
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
    if (answer.status != eSTATUS_OK)
    {
        throw CFailure(eSTATUS_REFUSED,
                       QStringLiteral("\"%1\" found differences").arg(ToText(words.front())));
    }
}

CFailure WithPlace(const CFailure& failure, const QString& place)
{
    const QString text = place + QStringLiteral(": ") + failure.GetText();
    return failure.GetCode() ? CFailure(*failure.GetCode(), text)
                             : CFailure(failure.GetStatus(), text);
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
    const QStringList lines = ReadLines(ToText(file));
    int number = 0;
    try
    {
        for (const QString& line : lines)
        {
            ++number;
            ExecuteScriptLine(session, line);
        }
        if (session.IsInTransaction() && !wasInTransaction)
        {
            throw CFailure(eSTATUS_USAGE,
                           QStringLiteral("the script ends between \"begin\" and \"commit\""));
        }
    }
    catch (const CFailure& failure)
    {
        if (session.IsInTransaction() && !wasInTransaction)
        {
            session.End(false);
        }
        throw WithPlace(failure, QStringLiteral("%1:%2").arg(ToText(file)).arg(number));
    }
    return {};
}

struct t_ShellOptions
{
    void Declare(CLI::App& /*command*/) {}
    t_Answer Run(CSession& session) const { return RunShell(session); }
};
} // namespace

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
            word = word.value_or(QString()) + c;
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
        QJsonObject error{{QStringLiteral("status"), static_cast<int>(failure.GetStatus())},
                          {QStringLiteral("message"), failure.GetText()}};
        if (failure.GetCode())
        {
            error[QStringLiteral("code")] = static_cast<int>(*failure.GetCode());
            error[QStringLiteral("name")] = GetAcceptanceName(*failure.GetCode());
        }
        session.GetOutput().Document({{QStringLiteral("error"), error}});
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
