// SPDX-License-Identifier: MIT
#include "CommandLine.h"

#include "NearestNames.h"

#include <algorithm>
#include <utility>

namespace
{
constexpr char kDescription[] =
    "Reads and writes the settings of the instrument: a tree of groups, in which every write runs\n"
    "the instrument's own rules. The state lives as long as the process and starts from the\n"
    "defaults; --load and --save carry it from one call to the next. With --connect the same\n"
    "commands work on the living tree of another process.";

constexpr char kFooter[] =
    "Paths lead from the root to a node: Horizontal/Scale, Vertical/Channel[0]/Offset.\n"
    "\n"
    "First steps:\n"
    "  zelctl tree --depth 1                   the functions of the instrument\n"
    "  zelctl tree --find scale                where is it?\n"
    "  zelctl get Horizontal                   all settings of a group\n"
    "  zelctl set Horizontal/Scale 20us --trace   write, and see what moves with it\n"
    "  zelctl --save my.xml set Trigger/Type RUNT   keep the result\n"
    "  zelctl --load my.xml shell              go on from there, line by line\n"
    "  zelctl --connect localhost get Horizontal  the living tree of another process\n"
    "\n"
    "Exit status: 0 done; 1 a write was refused, states differ, a script failed; 2 the command\n"
    "line, a path or a value is wrong.\n"
    "\"zelctl COMMAND --help\" explains a command.";

constexpr char kSessionOnly[] = "\"%1\" works in scripts (zelctl run) and in the shell only";
constexpr char kNothingBefore[] =
    "\"%1\" works in scripts (zelctl run), in the shell, and on a living tree (--connect)";

QStringList GetCommandNames(CLI::App& app)
{
    QStringList names;
    for (const CLI::App* const command : app.get_subcommands([](CLI::App*) { return true; }))
    {
        names.append(ToText(command->get_name()));
    }
    return names;
}

bool IsSessionCommand(const QString& name)
{
    CLI::App app;
    t_Run run;
    AddSessionCommands(app, run);
    return GetCommandNames(app).contains(name) || name == QLatin1String("echo") ||
           name == QLatin1String("expect");
}
} // namespace

CCommandLine::CCommandLine(CSession& session, ePLACE place, const std::string& only)
    : m_session(session), m_place(place), m_style(session.GetStyle()), m_run{only, {}},
      m_app(kDescription, "zelctl")
{
    m_app.footer(kFooter);
    m_app.require_subcommand(1);
    m_app.fallthrough();
    m_app.set_help_flag("-h,--help", "Show this help");
    m_app.add_flag("--json", m_style.json, "Answer with one JSON document per command");
    m_app.add_flag("--exact", m_style.exact, "Show numbers in full, without prefixes");
    AddTreeCommands(m_app, m_run);
    AddPropertyCommands(m_app, m_run);
    AddResetCommands(m_app, m_run);
    AddEnumCommand(m_app, m_run);
    AddFileCommands(m_app, m_run);
    AddEditCommands(m_app, m_run);
    AddCouplingCommands(m_app, m_run);
    AddReplayCommands(m_app, m_run);
    AddWatchCommand(m_app, m_run);
    AddCalcCommand(m_app, m_run);
    AddLabelsCommand(m_app, m_run);
    AddWaveCommand(m_app, m_run);
    AddMaskCommand(m_app, m_run);
    AddMathCommand(m_app, m_run);
    if (place == ePLACE::Process)
    {
        AddCompleteCommand(m_app, m_run);
    }
    else
    {
        AddSessionCommands(m_app, m_run);
    }
    AddScriptCommands(m_app, m_run);
}

bool CCommandLine::HasCommands() const
{
    return !m_app.get_subcommands([](const CLI::App*) { return true; }).empty();
}

bool CCommandLine::Parse(std::vector<std::string> words)
{
    m_style = m_session.GetStyle();
    if (words.empty() || words.front() == "help")
    {
        std::rotate(words.begin(), words.begin() + (words.empty() ? 0 : 1), words.end());
        words.resize(std::max<std::size_t>(words.size(), 1));
        words.back() = "--help";
    }
    // The parser takes the words from the back.
    std::reverse(words.begin(), words.end());
    try
    {
        m_app.parse(std::move(words));
    }
    catch (const CLI::CallForHelp&)
    {
        SendText("help", ToText(m_app.help()).trimmed());
        return false;
    }
    catch (const CLI::CallForVersion& version)
    {
        SendText("version", ToText(version.what()));
        return false;
    }
    catch (const CLI::ParseError& error)
    {
        throw Explain(error);
    }
    return true;
}

void CCommandLine::SendText(const char* command, const QString& text)
{
    const t_Style before = m_session.GetStyle();
    m_session.SetStyle(m_style);
    CReply(m_session, QLatin1String(command)).Line(text).Field("text", text).Send();
    m_session.SetStyle(before);
}

CFailure CCommandLine::Explain(const CLI::ParseError& error)
{
    CLI::App* level = &m_app;
    QString command;
    while (!level->get_subcommands().empty())
    {
        level = level->get_subcommands().front();
        command += QLatin1Char(' ') + ToText(level->get_name());
    }
    const QStringList names = GetCommandNames(*level);
    const auto unknown = m_app.remaining(true);
    const QString help = QStringLiteral("; see \"zelctl%1 --help\"").arg(command);
    if (names.isEmpty())
    {
        return {eSTATUS_USAGE, ToText(error.what()).simplified() + help};
    }
    const QLatin1String kind(level->get_name() == "calc" ? "calculation" : "command");
    if (unknown.empty())
    {
        return {eSTATUS_USAGE, QStringLiteral("a %1 is missing").arg(kind) + help};
    }
    const QString name = ToText(unknown.front());
    if (m_place == ePLACE::Process && level == &m_app && IsSessionCommand(name))
    {
        return {eSTATUS_USAGE, QString::fromLatin1(kSessionOnly).arg(name)};
    }
    const QStringList nearest = GetNearestNames(name, names);
    return {eSTATUS_USAGE, QStringLiteral("no %1 \"%2\"").arg(kind, name) +
                               (nearest.isEmpty() ? help : DidYouMean(nearest))};
}

/** A private tree that has just been built has no step to take back. */
void CCommandLine::RequireHistory() const
{
    const std::string name = m_app.get_subcommands().front()->get_name();
    if (m_place == ePLACE::Process && !m_session.IsConnected() &&
        (name == "undo" || name == "redo" || name == "history"))
    {
        throw CFailure(eSTATUS_USAGE, QString::fromLatin1(kNothingBefore).arg(ToText(name)));
    }
}

t_Answer CCommandLine::Run()
{
    const t_Style before = m_session.GetStyle();
    m_session.SetStyle(m_style);
    RequireHistory();
    m_session.Refresh();
    // A script reads its own lines with these declarations while it runs.
    const auto command = std::exchange(m_run.command, nullptr);
    try
    {
        const t_Answer answer = command(m_session);
        m_session.SetStyle(before);
        return answer;
    }
    catch (...)
    {
        m_session.SetStyle(before);
        throw;
    }
}

CCommandLine& CCommandLines::Get(const std::vector<std::string>& words)
{
    const auto name = std::find_if(words.begin(), words.end(),
                                   [](const std::string& word) { return word.front() != '-'; });
    const std::string& only = name == words.end() ? std::string() : *name;
    if (const auto found = m_lines.find(only); found != m_lines.end())
    {
        return *found->second;
    }
    auto line = std::make_unique<CCommandLine>(m_session, CCommandLine::ePLACE::Session, only);
    if (!line->HasCommands())
    {
        return Get({});
    }
    return *m_lines.emplace(only, std::move(line)).first->second;
}
