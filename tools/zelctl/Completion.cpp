// SPDX-License-Identifier: MIT
#include "Completion.h"

#include "CommandLine.h"
#include "Script.h"
#include "TreeWalk.h"

#include <QDir>
#include <algorithm>

namespace
{
const QStringList& GetFileCommands()
{
    static const QStringList commands{QStringLiteral("save"), QStringLiteral("recall"),
                                      QStringLiteral("diff"), QStringLiteral("run")};
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
        names.append(ToText(command->get_name()));
    }
    return Ended(names);
}

QStringList GetCommands(CSession& session)
{
    CCommandLine line(session, CCommandLine::ePLACE::Session);
    QStringList names = GetSubcommands(line.GetApp());
    names += Ended({QStringLiteral("echo"), QStringLiteral("expect"), QStringLiteral("help"),
                    QStringLiteral("quit")});
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

QStringList GetCandidates(CSession& session, std::vector<std::string> words, const QString& word)
{
    if (words.size() >= 2 && words.front() == "expect")
    {
        words.erase(words.begin(), words.begin() + 2);
    }
    if (words.empty() || (words.size() == 1 && words.front() == "help"))
    {
        return GetCommands(session);
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
    if (GetFileCommands().contains(ToText(command)))
    {
        return CompleteFile(word);
    }
    const bool takesValue = command == "set" || command == "same";
    return takesValue && words.size() == 2 ? CompleteValue(session, words[1])
                                           : CompletePath(session, word);
}
} // namespace

t_Completion Complete(CSession& session, const QString& line)
{
    t_Completion completion;
    completion.begin = static_cast<int>(line.lastIndexOf(QLatin1Char(' '))) + 1;
    const QString word = line.mid(completion.begin);
    std::vector<std::string> words;
    try
    {
        words = SplitWords(line.left(completion.begin));
    }
    catch (const CFailure&)
    {
        return completion;
    }
    for (const QString& candidate : GetCandidates(session, words, word))
    {
        if (candidate.startsWith(word, Qt::CaseInsensitive))
        {
            completion.candidates.append(candidate);
        }
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
