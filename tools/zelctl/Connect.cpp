// SPDX-License-Identifier: MIT
// Commands on a living tree, which another process serves (zelhost, or an application).

#include "Connect.h"

#include "Commands.h"
#include "HttpClient.h"

#include <QFile>
#include <QJsonArray>
#include <algorithm>
#include <chrono>
#include <thread>

namespace
{
constexpr char kFooter[] =
    "HOST is a name or an address; the port is 5026 unless given: localhost, 192.168.1.7:5026.\n"
    "\n"
    "Examples:\n"
    "  zelctl --connect localhost get Horizontal\n"
    "  zelctl --connect localhost set Horizontal/Scale 20us\n"
    "  zelctl --connect localhost watch Meter Trigger/State";

/** What all commands share. */
struct t_Connection
{
    std::string place;
    std::string tokenFile;
    t_Style style;

    CHttpClient Open() const
    {
        QByteArray token;
        if (!tokenFile.empty())
        {
            QFile file(ToText(tokenFile));
            if (!file.open(QIODevice::ReadOnly))
            {
                throw CFailure(
                    eSTATUS_USAGE,
                    QStringLiteral("can not read %1: %2").arg(file.fileName(), file.errorString()));
            }
            token = file.readLine(4096).trimmed();
        }
        return CHttpClient(ToText(place), token);
    }
};

QString TextOf(const QJsonObject& document, const char* name)
{
    return document[QLatin1String(name)].toString();
}

/** Fails for the code of a refusal. */
void RequireTaken(const QJsonObject& answer, const QString& what)
{
    const auto code = static_cast<KW_ACCEPTANCE>(answer[QLatin1String("code")].toInt());
    if (KW_IsAccepted(code))
    {
        return;
    }
    const QString detail = TextOf(answer, "detail");
    const QString text = QStringLiteral("refused: %1: code %2 %3, %4%5")
                             .arg(what)
                             .arg(code)
                             .arg(TextOf(answer, "name"), TextOf(answer, "text"),
                                  detail.isEmpty() ? QString() : QStringLiteral("; ") + detail);
    const bool isUsage = code == eKW_ACC_NOT_FOUND || code == eKW_ACC_BAD_TEXT ||
                         code == eKW_ACC_UNKNOWN_VALUE || code == eKW_ACC_AMBIGUOUS_NAME ||
                         code == eKW_ACC_WRONG_KIND;
    throw isUsage ? CFailure(eSTATUS_USAGE, code, text) : CFailure(code, text);
}

QJsonObject Node(const CHttpClient& client, const std::string& path)
{
    const QJsonObject node = client.Get(ToText(path));
    RequireTaken(node, ToText(path));
    return node;
}

bool IsProperty(const QJsonObject& node)
{
    return TextOf(node, "kind") == QLatin1String("property");
}

/** The value as commands on a private tree show it. */
QString Shown(const QJsonObject& property, bool exact)
{
    if (!property[QLatin1String("valid")].toBool())
    {
        return QStringLiteral("invalid (no usable value yet)");
    }
    const QString unit = TextOf(property, "unit");
    const bool isNumber = property[QLatin1String("value")].isDouble();
    return exact && isNumber ? (TextOf(property, "text") + QLatin1Char(' ') + unit).trimmed()
                             : TextOf(property, "shown");
}

/** The properties of a node, in the order of their paths in the document; of a group its own, or
   all that are below it, too. */
void Collect(const QJsonObject& node, bool isDeep, QJsonArray& properties)
{
    if (IsProperty(node))
    {
        properties.append(node);
        return;
    }
    for (const QJsonValue& property : node[QLatin1String("properties")].toObject())
    {
        properties.append(property);
    }
    if (!isDeep)
    {
        return;
    }
    for (const QJsonValue& group : node[QLatin1String("groups")].toObject())
    {
        Collect(group.toObject(), isDeep, properties);
    }
    for (const QJsonValue& item : node[QLatin1String("items")].toArray())
    {
        Collect(item.toObject(), isDeep, properties);
    }
}

QString LineOf(const QJsonObject& property, bool exact)
{
    return TextOf(property, "path") + QStringLiteral(" = ") + Shown(property, exact);
}

struct t_RemoteGet
{
    std::vector<std::string> paths;

    void Declare(CLI::App& command)
    {
        command.add_option("path", paths, "Properties or groups")->required();
    }

    t_Answer Run(CSession& session, const CHttpClient& client) const
    {
        CReply reply(session, QStringLiteral("get"));
        QJsonArray all;
        for (const std::string& path : paths)
        {
            const QJsonObject node = Node(client, path);
            QJsonArray properties;
            Collect(node, false, properties);
            for (const QJsonValue& property : properties)
            {
                const bool isBare = IsProperty(node) && paths.size() == 1;
                reply.Line(isBare ? Bare(node, session.GetStyle().exact)
                                  : LineOf(property.toObject(), session.GetStyle().exact));
                all.append(property);
            }
        }
        return reply.Field("properties", all).Send();
    }

private:
    static QString Bare(const QJsonObject& property, bool exact)
    {
        const bool isText = TextOf(property, "type") == QLatin1String("string") &&
                            !property[QLatin1String("secret")].toBool();
        return isText ? TextOf(property, "text") : Shown(property, exact);
    }
};

struct t_RemoteSet
{
    std::string path;
    std::string value;
    std::string unit;

    void Declare(CLI::App& command)
    {
        command.add_option("path", path, "Property to write")->required();
        command.add_option("value", value, "New value")->required();
        command.add_option("unit", unit,
                           "Prefix and unit, when a blank parts them from the number");
    }

    t_Answer Run(CSession& session, const CHttpClient& client) const
    {
        const bool exact = session.GetStyle().exact;
        const QJsonObject before = Node(client, path);
        const QString written = ToText(unit.empty() ? value : value + ' ' + unit);
        const QJsonObject answer =
            client.Post("/write", {{QStringLiteral("writes"),
                                    QJsonArray{QJsonObject{{QStringLiteral("path"), ToText(path)},
                                                           {QStringLiteral("value"), written}}}}});
        RequireTaken(answer, QStringLiteral("%1 = %2").arg(ToText(path), written));
        const QJsonObject now = answer[QLatin1String("writes")]
                                    .toArray()
                                    .first()
                                    .toObject()[QLatin1String("now")]
                                    .toObject();
        return CReply(session, QStringLiteral("set"))
            .Line(Describe(answer, written, Shown(before, exact), Shown(now, exact)))
            .Field("before", before)
            .Field("property", now)
            .Send(static_cast<KW_ACCEPTANCE>(answer[QLatin1String("code")].toInt()));
    }

private:
    QString Describe(const QJsonObject& answer, const QString& asked, const QString& before,
                     const QString& now) const
    {
        return answer[QLatin1String("code")].toInt() == 0
                   ? QStringLiteral("%1: %2 → %3").arg(ToText(path), before, now)
                   : QStringLiteral("%1: asked %2, stands %3, was %4 (%5)")
                         .arg(ToText(path), asked, now, before, TextOf(answer, "text"));
    }
};

struct t_RemoteDo
{
    std::string path;

    void Declare(CLI::App& command)
    {
        command.add_option("path", path, "Path of an action")->required();
    }

    t_Answer Run(CSession& session, const CHttpClient& client) const
    {
        const QJsonObject answer = client.Post("/run", {{QStringLiteral("path"), ToText(path)}});
        RequireTaken(answer, QStringLiteral("do ") + ToText(path));
        return CReply(session, QStringLiteral("do"))
            .Line(QStringLiteral("do ") + ToText(path))
            .Send(static_cast<KW_ACCEPTANCE>(answer[QLatin1String("code")].toInt()));
    }
};

template <bool kUndo>
struct t_RemoteReplay
{
    void Declare(CLI::App&) {}

    t_Answer Run(CSession& session, const CHttpClient& client) const
    {
        const QJsonObject answer = client.Post(kUndo ? "/undo" : "/redo");
        const QString name = QLatin1String(kUndo ? "undo" : "redo");
        RequireTaken(answer, name);
        return CReply(session, name).Line(name).Send();
    }
};

struct t_RemoteWatch
{
    std::vector<std::string> paths;
    int count = 0;
    int milliseconds = 100;

    void Declare(CLI::App& command)
    {
        command.add_option("path", paths, "Properties, or groups with all that is below them")
            ->required();
        command.add_option("-n,--count", count, "End after this many changes; 0 for none");
        command.add_option("--every", milliseconds, "Milliseconds between two looks")
            ->check(CLI::Range(10, 60000))
            ->capture_default_str();
    }

    t_Answer Run(CSession& session, const CHttpClient& client) const
    {
        std::map<QString, QString> values;
        Look(session, client, values, false);
        for (int shown = 0; (count <= 0 || shown < count) && !session.GetOutput().IsClosed();)
        {
            std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
            shown += Look(session, client, values, true);
        }
        return {};
    }

private:
    /** How many values have changed since the last look. */
    int Look(CSession& session, const CHttpClient& client, std::map<QString, QString>& values,
             bool isShown) const
    {
        int changed = 0;
        for (const std::string& path : paths)
        {
            QJsonArray properties;
            Collect(Node(client, path), true, properties);
            for (const QJsonValue& value : properties)
            {
                const QJsonObject property = value.toObject();
                const QString line = LineOf(property, true);
                if (std::exchange(values[TextOf(property, "path")], line) != line && isShown)
                {
                    Show(session, property);
                    ++changed;
                }
            }
        }
        return changed;
    }

    static void Show(CSession& session, const QJsonObject& property)
    {
        CReply(session, QStringLiteral("watch"))
            .Line(LineOf(property, session.GetStyle().exact))
            .Field("property", property)
            .Send();
        session.GetOutput().Finish();
    }
};

using t_Chosen = std::function<t_Answer(CSession&, const CHttpClient&)>;

template <typename TOptions>
void Add(CLI::App& app, t_Chosen& chosen, const char* name, const char* brief)
{
    const auto options = std::make_shared<TOptions>();
    CLI::App* const command = app.add_subcommand(name, brief);
    options->Declare(*command);
    command->callback(
        [options, &chosen]
        {
            chosen = [options](CSession& session, const CHttpClient& client)
            { return options->Run(session, client); };
        });
}

void Declare(CLI::App& app, t_Connection& connection, t_Chosen& chosen)
{
    app.footer(kFooter);
    app.require_subcommand(1);
    app.fallthrough();
    app.add_option("--connect", connection.place, "Service to ask")->type_name("HOST[:PORT]");
    app.add_option("--token-file", connection.tokenFile, "File with the token that it wants")
        ->type_name("FILE");
    app.add_flag("--json", connection.style.json, "Answer with one JSON document per command");
    app.add_flag("--exact", connection.style.exact, "Show numbers in full, without prefixes");
    Add<t_RemoteGet>(app, chosen, "get", "Show the value of properties");
    Add<t_RemoteSet>(app, chosen, "set", "Write a setting");
    Add<t_RemoteDo>(app, chosen, "do", "Run an action of the instrument");
    Add<t_RemoteReplay<true>>(app, chosen, "undo", "Take the last step back");
    Add<t_RemoteReplay<false>>(app, chosen, "redo", "Repeat the step that was taken back");
    Add<t_RemoteWatch>(app, chosen, "watch", "Show changes as they come");
}
} // namespace

bool IsConnected(const std::vector<std::string>& words)
{
    for (const std::string& word : words)
    {
        if (word == "--connect" || word.rfind("--connect=", 0) == 0)
        {
            return true;
        }
        if (word.rfind('-', 0) != 0)
        {
            return false; // the command, or an option's value
        }
    }
    return false;
}

t_Answer RunConnected(CSession& session, std::vector<std::string> words)
{
    CLI::App app("Reads and writes the living tree that another process serves.", "zelctl");
    t_Connection connection;
    t_Chosen chosen;
    Declare(app, connection, chosen);
    std::reverse(words.begin(), words.end());
    try
    {
        app.parse(std::move(words));
    }
    catch (const CLI::CallForHelp&)
    {
        const auto commands = app.get_subcommands();
        session.GetOutput().Line(
            ToText((commands.empty() ? &app : commands.front())->help()).trimmed());
        return {};
    }
    catch (const CLI::ParseError& error)
    {
        session.SetStyle(connection.style);
        throw CFailure(eSTATUS_USAGE, ToText(error.what()) +
                                          QStringLiteral("; see \"zelctl --connect HOST --help\""));
    }
    session.SetStyle(connection.style);
    return chosen(session, connection.Open());
}
