// SPDX-License-Identifier: MIT
#include "Commands.h"
#include "NodeText.h"
#include "TreeWalk.h"

#include <QJsonArray>
#include <algorithm>

namespace
{
constexpr char kTreeFooter[] =
    "Columns: name, type, value, and what is special about the node: \"result\" is delivered by\n"
    "the instrument and can not be set, \"invalid\" has no usable value yet, \"read only\" and\n"
    "\"not available\" depend on other settings. In a terminal long values are cut to its width.\n"
    "\n"
    "Examples:\n"
    "  zelctl tree --depth 1               the functions of the instrument\n"
    "  zelctl tree Vertical/Channel[0]     everything about the first channel\n"
    "  zelctl tree --find bandwidth        every node with \"bandwidth\" in its name or meaning";

constexpr char kFindFooter[] =
    "Shows each node that has all the words in its name or in the sentence that says what it\n"
    "means, with its path, its value and that sentence. Upper and lower case do not count.\n"
    "\n"
    "Examples:\n"
    "  zelctl find bandwidth\n"
    "  zelctl find trigger level --in Trigger";

/** Whether a node has each of the words in its name or meaning. */
bool IsAbout(const IDbObject& node, const QStringList& words)
{
    const QString text = GetStep(node) + QLatin1Char('\n') + GetMeaning(node);
    return std::all_of(words.begin(), words.end(),
                       [&text](const QString& word)
                       { return text.contains(word, Qt::CaseInsensitive); });
}

CFailure NothingFound(const QString& words)
{
    return {eSTATUS_REFUSED,
            QStringLiteral("no node has \"%1\" in its name or meaning").arg(words)};
}

QString GetTypeText(const IDbObject& node)
{
    if (const auto* const property = dynamic_cast<const IDbProperty*>(&node))
    {
        return property->GetTypeName();
    }
    const QString kind = GetKindText(node.GetKind());
    const auto* const container = dynamic_cast<const IDbContainer*>(&node);
    return container == nullptr
               ? kind
               : QStringLiteral("%1, %2 items").arg(kind).arg(container->GetCount());
}

QString CountText(int count, const char* singular, const char* plural)
{
    return count == 0 ? QString()
                      : QStringLiteral("%1 %2").arg(count).arg(
                            QLatin1String(count == 1 ? singular : plural));
}

/** What stands below a group that is not walked into. */
QString DescribeContents(const IDbGroup& group)
{
    QStringList parts{CountText(group.GetPropertyCount(), "property", "properties"),
                      CountText(group.GetGroupCount(), "group", "groups"),
                      CountText(group.GetActionCount(), "action", "actions")};
    parts.removeAll(QString());
    return parts.isEmpty() ? QString()
                           : QStringLiteral("(%1)").arg(parts.join(QLatin1String(", ")));
}

struct t_TreeOptions
{
    std::string path;
    int depth = 0;
    std::string find;

    void Declare(CLI::App& command)
    {
        command.add_option("path", path, "Group to start at; everything when left out");
        command.add_option("-d,--depth", depth, "Levels to show; all when left out")
            ->check(CLI::PositiveNumber);
        command
            .add_option("-f,--find", find,
                        "Show only nodes with TEXT in their name or meaning, in upper or lower "
                        "case, with their paths")
            ->type_name("TEXT");
    }

    t_Answer Run(CSession& session) const;

private:
    QStringList GetRow(const IDbObject& node, int level, bool exact) const;
};

QStringList t_TreeOptions::GetRow(const IDbObject& node, int level, bool exact) const
{
    QString value;
    if (const auto* const property = dynamic_cast<const IDbProperty*>(&node))
    {
        value = ShowValue(GetShownValue(*property), exact);
    }
    const auto* const group = dynamic_cast<const IDbGroup*>(&node);
    if (group != nullptr && level == depth)
    {
        value = DescribeContents(*group);
    }
    const QString name =
        find.empty() ? QString(2 * (level - 1), QLatin1Char(' ')) + GetStep(node) : node.GetPath();
    return {name, GetTypeText(node), value, DescribeState(node)};
}

t_Answer t_TreeOptions::Run(CSession& session) const
{
    const auto start = session.FindGroup(ToText(path));
    CTable table({{2, 14}, {1, 12}, {0, 24}});
    QJsonArray json;
    WalkTree(*start, depth,
             [&](const std::shared_ptr<IDbObject>& node, int level)
             {
                 if (find.empty() || IsAbout(*node, {ToText(find)}))
                 {
                     table.Add(GetRow(*node, level, session.GetStyle().exact));
                     json.append(ToJson(*node, false));
                 }
             });
    if (json.isEmpty() && !find.empty())
    {
        throw NothingFound(ToText(find));
    }
    CReply reply(session, QStringLiteral("tree"));
    reply.Lines(table.GetLines(GetTerminalWidth())).Field("nodes", json);
    return reply.Send();
}

struct t_FindOptions
{
    std::vector<std::string> texts;
    std::string start;

    void Declare(CLI::App& command)
    {
        command.add_option("text", texts, "Words to look for")->required();
        command.add_option("--in", start, "Group to look in; everywhere when left out")
            ->type_name("PATH");
    }

    t_Answer Run(CSession& session) const;
};

t_Answer t_FindOptions::Run(CSession& session) const
{
    QStringList words;
    for (const std::string& text : texts)
    {
        words += ToText(text).split(QLatin1Char(' '));
    }
    CTable table({{2, 14}, {0, 24}});
    QJsonArray json;
    WalkTree(*session.FindGroup(ToText(start)), 0,
             [&](const std::shared_ptr<IDbObject>& node, int)
             {
                 if (!IsAbout(*node, words))
                 {
                     return;
                 }
                 const auto* const property = dynamic_cast<const IDbProperty*>(node.get());
                 const QString value = property == nullptr ? GetTypeText(*node)
                                                           : ShowValue(GetShownValue(*property),
                                                                       session.GetStyle().exact);
                 table.Add({node->GetPath(), value, GetMeaning(*node)});
                 QJsonObject found = ToJson(*node, false);
                 found[QStringLiteral("meaning")] = GetMeaning(*node);
                 json.append(found);
             });
    if (json.isEmpty())
    {
        throw NothingFound(words.join(QLatin1Char(' ')));
    }
    CReply reply(session, QStringLiteral("find"));
    reply.Lines(table.GetLines(GetTerminalWidth())).Field("nodes", json);
    return reply.Send();
}
} // namespace

void AddTreeCommands(CLI::App& app, t_Run& run)
{
    AddCommand<t_TreeOptions>(app, run, "tree", "Show groups, settings and results", kTreeFooter);
    AddCommand<t_FindOptions>(app, run, "find", "Find nodes by words of their name or meaning",
                              kFindFooter);
}
