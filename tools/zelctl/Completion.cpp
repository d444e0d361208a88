// SPDX-License-Identifier: MIT
#include "Completion.h"

#include "LabelFile.h"
#include "Script.h"
#include "TreeWalk.h"

#include <QDir>
#include <algorithm>

namespace
{
const QStringList& GetFileCommands()
{
    static const QStringList commands{QStringLiteral("save"), QStringLiteral("recall"),
                                      QStringLiteral("seal"), QStringLiteral("diff"),
                                      QStringLiteral("run")};
    return commands;
}

/** A node as it continues: groups go on with their members, all else is complete. */
QString GetContinuation(const IDbObject& node)
{
    const auto* const container = dynamic_cast<const IDbContainer*>(&node);
    if (container != nullptr && container->GetCount() > 0)
    {
        return node.GetPath() + QLatin1Char('[');
    }
    const bool isGroup = dynamic_cast<const IDbGroup*>(&node) != nullptr;
    return node.GetPath() + QLatin1Char(isGroup ? '/' : ' ');
}

QStringList CompletePath(CSession& session, const QString& word)
{
    const auto slash = word.lastIndexOf(QLatin1Char('/'));
    const auto bracket = word.lastIndexOf(QLatin1Char('['));
    const auto group = std::dynamic_pointer_cast<IDbGroup>(
        session.GetTree().Find(word.left(std::max({slash, bracket, decltype(slash){0}}))));
    QStringList candidates;
    if (group)
    {
        WalkTree(*group, 1,
                 [&](const std::shared_ptr<IDbObject>& node, int)
                 {
                     if (node->GetPath().startsWith(word, Qt::CaseInsensitive))
                     {
                         candidates.append(GetContinuation(*node));
                     }
                 });
    }
    return candidates;
}

QStringList CompleteFile(const QString& word)
{
    const QString folder = word.left(word.lastIndexOf(QLatin1Char('/')) + 1);
    QStringList candidates;
    const auto entries = QDir(folder.isEmpty() ? QStringLiteral(".") : folder)
                             .entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot);
    for (const QFileInfo& entry : entries)
    {
        candidates.append(folder + entry.fileName() + QLatin1Char(entry.isDir() ? '/' : ' '));
    }
    return candidates;
}

QStringList Ended(QStringList words)
{
    for (QString& word : words)
    {
        word += QLatin1Char(' ');
    }
    return words;
}

QStringList CompleteValue(CSession& session, const std::string& path)
{
    const auto property =
        std::dynamic_pointer_cast<IDbProperty>(session.GetTree().Find(ToText(path)));
    return property ? Ended(property->GetValueTexts()) : QStringList();
}

QStringList GetSubcommands(const CLI::App& app)
{
    QStringList names;
    for (const CLI::App* const command : app.get_subcommands(nullptr))
    {
        if (!command->get_group().empty())
        {
            names.append(ToText(command->get_name()));
        }
    }
    return Ended(names);
}

QStringList GetCommands(CSession& session, CCommandLine::ePLACE place)
{
    CCommandLine line(session, place);
    QStringList names = GetSubcommands(line.GetApp());
    if (place == CCommandLine::ePLACE::Session)
    {
        names += Ended({QStringLiteral("echo"), QStringLiteral("expect"), QStringLiteral("help"),
                        QStringLiteral("quit")});
    }
    names.sort();
    return names;
}

QStringList GetOptions(const CLI::App& app)
{
    QStringList names;
    for (const CLI::Option* const option : app.get_options())
    {
        for (const std::string& name : option->get_lnames())
        {
            names.append(QStringLiteral("--") + ToText(name));
        }
    }
    return Ended(names);
}

/** The options or subcommands that may stand behind the words of a command. */
QStringList CompleteCommand(CSession& session, const std::vector<std::string>& words, bool isOption)
{
    CCommandLine line(session, CCommandLine::ePLACE::Session);
    const CLI::App* app = &line.GetApp();
    QStringList names = isOption ? GetOptions(*app) : QStringList();
    for (const std::string& word : words)
    {
        const auto commands = app->get_subcommands(nullptr);
        const auto found = std::find_if(commands.begin(), commands.end(),
                                        [&word](const auto* c) { return c->get_name() == word; });
        if (found == commands.end())
        {
            break;
        }
        app = *found;
        names += isOption ? GetOptions(*app) : QStringList();
    }
    names += isOption ? QStringList() : GetSubcommands(*app);
    names.removeDuplicates();
    return names;
}

QStringList CompleteMessage(const std::string& list)
{
    QStringList names;
    for (const KW_LabelEntry& entry : ReadQuietly(list).messages)
    {
        names.append(ToText(entry.message.getName()));
    }
    return Ended(names);
}

QStringList CompleteLabels(CSession& session, const std::vector<std::string>& words,
                           const QString& word)
{
    if (words.size() < 2)
    {
        return CompleteCommand(session, words, false);
    }
    const std::string& last = words.back();
    const auto list = std::find(words.begin(), words.end(), "--list");
    if (last == "--bus")
    {
        return Ended({QStringLiteral("CAN"), QStringLiteral("I2C"), QStringLiteral("LIN"),
                      QStringLiteral("SENT")});
    }
    if (last == "--message" && words.end() - list > 1)
    {
        return CompleteMessage(*std::next(list));
    }
    const bool isMessage = words[1] == "show" && words.size() > 2 && last.front() != '-';
    return isMessage ? CompleteMessage(last) : CompleteFile(word);
}

/** Options of the whole process that take a word. */
bool TakesFile(const std::string& option)
{
    return option == "--load" || option == "--save" || option == "--token-file";
}

bool TakesWord(const std::string& option)
{
    return TakesFile(option) || option == "--connect";
}

/** What stands before the command. */
struct t_Before
{
    std::string open; ///< the option whose word comes next; empty without one
    std::string place;
    std::string tokenFile;
};

/** Takes away the options of the whole process that stand before the command. */
t_Before SkipOptions(std::vector<std::string>& words)
{
    t_Before before;
    while (!words.empty() && words.front().rfind('-', 0) == 0)
    {
        const std::string option = words.front();
        if (TakesWord(option) && words.size() == 1)
        {
            before.open = option;
            return before;
        }
        before.place = option == "--connect" ? words[1] : before.place;
        before.tokenFile = option == "--token-file" ? words[1] : before.tokenFile;
        words.erase(words.begin(), words.begin() + (TakesWord(option) ? 2 : 1));
    }
    return before;
}

QStringList GetProcessOptions(CSession& session)
{
    CCommandLine line(session, CCommandLine::ePLACE::Process);
    return GetOptions(line.GetApp()) +
           Ended({QStringLiteral("--connect"), QStringLiteral("--token-file"),
                  QStringLiteral("--load"), QStringLiteral("--save"), QStringLiteral("--version")});
}

/** Candidates for a word that stands before the command of a process; nothing behind that. A tree
    that the options name is the one whose paths are completed. */
std::optional<QStringList> CompleteBefore(CSession& session, std::vector<std::string>& words,
                                          const QString& word)
{
    const t_Before before = SkipOptions(words);
    if (!before.open.empty())
    {
        return TakesFile(before.open) ? CompleteFile(word) : QStringList();
    }
    if (words.empty() && word.startsWith(QLatin1Char('-')))
    {
        return GetProcessOptions(session);
    }
    if (!before.place.empty() && !words.empty())
    {
        session.Connect(ToText(before.place), ToText(before.tokenFile));
    }
    return std::nullopt;
}

QStringList GetCandidates(CSession& session, std::vector<std::string> words, const QString& word,
                          CCommandLine::ePLACE place)
{
    if (place == CCommandLine::ePLACE::Process)
    {
        if (const auto before = CompleteBefore(session, words, word))
        {
            return *before;
        }
    }
    if (words.size() >= 2 && words.front() == "expect")
    {
        words.erase(words.begin(), words.begin() + 2);
    }
    if (words.empty() || (words.size() == 1 && words.front() == "help"))
    {
        return GetCommands(session, place);
    }
    const std::string& command = words.front();
    if (word.startsWith(QLatin1Char('-')))
    {
        return CompleteCommand(session, words, true);
    }
    if (command == "calc")
    {
        return CompleteCommand(session, words, false);
    }
    if (command == "labels")
    {
        return CompleteLabels(session, words, word);
    }
    if (command == "wave" || command == "mask")
    {
        return words.size() < 2 ? CompleteCommand(session, words, false) : CompleteFile(word);
    }
    if (command == "math")
    {
        return words.size() < 2 ? QStringList() : CompleteFile(word);
    }
    if (GetFileCommands().contains(ToText(command)))
    {
        return CompleteFile(word);
    }
    const bool takesValue = command == "set" || command == "same";
    return takesValue && words.size() == 2 ? CompleteValue(session, words[1])
                                           : CompletePath(session, word);
}
} // namespace

t_Completion Complete(CSession& session, const QString& line, CCommandLine::ePLACE place)
{
    session.Refresh();
    t_Completion completion;
    completion.begin = static_cast<int>(line.lastIndexOf(QLatin1Char(' '))) + 1;
    const QString word = line.mid(completion.begin);
    try
    {
        const auto words = SplitWords(line.left(completion.begin));
        for (const QString& candidate : GetCandidates(session, words, word, place))
        {
            if (candidate.startsWith(word, Qt::CaseInsensitive))
            {
                completion.candidates.append(candidate);
            }
        }
    }
    catch (const CFailure&)
    {
        // An open quote, or a living tree that is lost: there is nothing to complete.
    }
    return completion;
}

QString GetCommonBeginning(const QStringList& texts)
{
    QString common = texts.isEmpty() ? QString() : texts.front();
    for (const QString& text : texts)
    {
        while (!text.startsWith(common))
        {
            common.chop(1);
        }
    }
    return common;
}

namespace
{
/** What the completion of a shell of the system asks; no command for people. */
struct t_CompleteOptions
{
    std::string line;

    void Declare(CLI::App& command)
    {
        command.group(""); // hidden
        command.add_option("line", line, "The line behind \"zelctl\", up to the cursor");
    }

    t_Answer Run(CSession& session) const
    {
        const t_Completion completion =
            Complete(session, ToText(line), CCommandLine::ePLACE::Process);
        for (const QString& candidate : completion.candidates)
        {
            session.GetOutput().Line(candidate);
        }
        return {};
    }
};
} // namespace

void AddCompleteCommand(CLI::App& app, t_Run& run)
{
    AddCommand<t_CompleteOptions>(app, run, "complete", "", "");
}
