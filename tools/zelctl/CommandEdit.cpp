// SPDX-License-Identifier: MIT
#include "Commands.h"
#include "EnumText.h"
#include "NearestNames.h"
#include "NodeText.h"
#include "Trace.h"
#include "TreeWalk.h"

#include <QJsonArray>
#include <functional>

namespace
{
const CLI::Range kAnyStep(1, 100); // as many as a history holds

/** Carries a write out and answers it with one line, with what it changed when that is wanted. */
t_Answer Write(CSession& session, const char* command, bool trace, const QString& request,
               const std::function<KW_ACCEPTANCE()>& action,
               const std::function<QString(KW_ACCEPTANCE)>& detail = {},
               const QJsonObject& data = {})
{
    const CTrace tracing(session, trace);
    const KW_ACCEPTANCE code = action();
    if (!KW_IsAccepted(code))
    {
        CFailure failure = Refuse(code, request, detail ? detail(code) : QString());
        failure.AddData(data);
        throw failure;
    }
    CReply reply(session, QLatin1String(command));
    reply.Line(request + DescribeWarning(code)).Field("request", request);
    tracing.AddTo(reply);
    return reply.Send(code);
}

void DeclareTrace(CLI::App& command, bool& trace)
{
    command.add_flag("-t,--trace", trace, "Show everything that changed, limits included");
}

QStringList GetKeys(const IDbContainer& container)
{
    QStringList keys;
    for (INT32 i = 0; i < container.GetCount(); ++i)
    {
        keys.append(container.GetItemByPosition(i)->GetNodeName());
    }
    return keys;
}

/** What a container would have taken. */
QString DescribeContainer(const IDbContainer& container, KW_ACCEPTANCE code)
{
    switch (code)
    {
    case eKW_ACC_CONTAINER_FULL:
        return QStringLiteral("it holds at most %1 items").arg(container.GetMaxCount());
    case eKW_ACC_FIXED_SIZE:
        return QStringLiteral("it always has %1 items").arg(container.GetCount());
    case eKW_ACC_BAD_NAME:
        return QStringLiteral("a name has 1 to 64 characters without / [ ] and without blanks at "
                              "its ends");
    case eKW_ACC_BAD_INDEX:
    case eKW_ACC_NOT_FOUND:
    {
        const QStringList keys = GetKeys(container);
        return keys.isEmpty() ? QStringLiteral("it has no items")
                              : QStringLiteral("its items are ") + keys.join(QLatin1String(", "));
    }
    default:
        return {};
    }
}

/** What a program needs to choose another item. */
QJsonObject GetChoice(const IDbContainer& container)
{
    return {{QStringLiteral("items"), QJsonArray::fromStringList(GetKeys(container))},
            {QStringLiteral("maximumCount"), container.GetMaxCount()}};
}

/** The commands on containers differ in their keys and in the operation. */
struct t_ContainerCommand
{
    const char* name;
    const char* firstKey;  ///< help of the first key
    const char* secondKey; ///< help of the second key; null without one
    bool firstRequired;
    bool secondRequired;
    KW_ACCEPTANCE (*apply)(IDbContainer& container, const QString& key, const QString& newKey);
};

constexpr t_ContainerCommand kInsert{
    "insert",
    "Index to insert before, or name; at the end, or under a new name, when left out",
    nullptr,
    false,
    false,
    [](IDbContainer& container, const QString& key, const QString&)
    { return container.InsertItem(key); }};
constexpr t_ContainerCommand kRemove{"remove",
                                     "Index or name of the item",
                                     nullptr,
                                     true,
                                     false,
                                     [](IDbContainer& container, const QString& key, const QString&)
                                     { return container.RemoveItem(key); }};
constexpr t_ContainerCommand kRename{
    "rename",
    "Present name of the item",
    "New name",
    true,
    true,
    [](IDbContainer& container, const QString& key, const QString& newKey)
    { return container.RenameItem(key, newKey); }};
constexpr t_ContainerCommand kCopy{
    "copy",
    "Index or name of the item",
    "Index or name of the copy; as for insert when left out",
    true,
    false,
    [](IDbContainer& container, const QString& key, const QString& newKey)
    { return container.CopyItem(key, newKey); }};
constexpr t_ContainerCommand kActivate{"activate",
                                       "Index or name of the item",
                                       nullptr,
                                       true,
                                       false,
                                       [](IDbContainer& container, const QString& key,
                                          const QString&) { return container.SetActiveItem(key); }};

template <const t_ContainerCommand& kCommand>
struct t_ContainerOptions
{
    std::string path;
    std::string key;
    std::string newKey;
    bool trace = false;

    void Declare(CLI::App& command)
    {
        command.add_option("container", path, "Path of an array or map")->required();
        command.add_option("key", key, kCommand.firstKey)->required(kCommand.firstRequired);
        if (kCommand.secondKey != nullptr)
        {
            command.add_option("newkey", newKey, kCommand.secondKey)
                ->required(kCommand.secondRequired);
        }
        DeclareTrace(command, trace);
    }

    t_Answer Run(CSession& session) const
    {
        const auto container = session.FindContainer(ToText(path));
        QStringList request{QLatin1String(kCommand.name), ToText(path), ToText(key),
                            ToText(newKey)};
        request.removeAll(QString());
        return Write(
            session, kCommand.name, trace, request.join(QLatin1Char(' ')),
            [&] { return kCommand.apply(*container, ToText(key), ToText(newKey)); },
            [&](KW_ACCEPTANCE code) { return DescribeContainer(*container, code); },
            session.GetStyle().json ? GetChoice(*container) : QJsonObject());
    }
};

struct t_DoOptions
{
    std::string path;
    bool trace = false;

    void Declare(CLI::App& command)
    {
        command.add_option("path", path, "Path of an action")->required();
        DeclareTrace(command, trace);
    }

    t_Answer Run(CSession& session) const
    {
        const auto action = session.FindAction(ToText(path));
        return Write(session, "do", trace, QStringLiteral("do ") + action->GetPath(),
                     [&] { return action->Execute(); });
    }
};

template <bool kUndo>
struct t_ReplayOptions
{
    int steps = 1;
    bool trace = false;

    void Declare(CLI::App& command)
    {
        command.add_option("steps", steps, "How many; all of them or none")->check(kAnyStep);
        DeclareTrace(command, trace);
    }

    t_Answer Run(CSession& session) const
    {
        const KW_History history = session.GetHistory();
        const QStringList& texts = kUndo ? history.undo : history.redo;
        const char* const command = kUndo ? "undo" : "redo";
        QStringList request{QLatin1String(command)};
        if (texts.size() < steps && steps > 1)
        {
            request.append(QString::number(steps));
        }
        for (const QString& text : texts.mid(0, texts.size() < steps ? 0 : steps))
        {
            request.append(QStringLiteral("\"%1\"").arg(text));
        }
        return Write(session, command, trace, request.join(QLatin1Char(' ')),
                     [&] { return kUndo ? session.Undo(steps) : session.Redo(steps); });
    }
};

struct t_HistoryOptions
{
    void Declare(CLI::App& /*command*/) {}

    t_Answer Run(CSession& session) const
    {
        const KW_History history = session.GetHistory();
        CReply reply(session, QStringLiteral("history"));
        for (const QString& text : history.undo)
        {
            reply.Line(QStringLiteral("undo \"%1\"").arg(text));
        }
        for (const QString& text : history.redo)
        {
            reply.Line(QStringLiteral("redo \"%1\"").arg(text));
        }
        if (history.undo.isEmpty() && history.redo.isEmpty())
        {
            reply.Line(QStringLiteral("no step can be undone or redone"));
        }
        return reply.Field("undo", QJsonArray::fromStringList(history.undo))
            .Field("redo", QJsonArray::fromStringList(history.redo))
            .Send();
    }
};

struct t_BeginOptions
{
    std::string text;

    void Declare(CLI::App& command)
    {
        command.add_option("text", text, "What undo and redo call the step")->required();
    }

    t_Answer Run(CSession& session) const
    {
        session.Begin(ToText(text));
        CReply reply(session, QStringLiteral("begin"));
        return reply.Line(QStringLiteral("begin \"%1\"").arg(ToText(text))).Send();
    }
};

template <bool kKeep>
struct t_EndOptions
{
    bool trace = false;

    void Declare(CLI::App& command) { DeclareTrace(command, trace); }

    t_Answer Run(CSession& session) const
    {
        const char* const command = kKeep ? "commit" : "rollback";
        return Write(session, command, trace, QLatin1String(command),
                     [&] { return session.End(kKeep); });
    }
};

struct t_SameOptions
{
    std::string path;
    std::string value;
    std::string unit;

    void Declare(CLI::App& command)
    {
        command.add_option("path", path, "Property to look at")->required();
        command.add_option("value", value, "Value that it must have")->required();
        command.add_option("unit", unit,
                           "Prefix and unit, when a blank parts them from the number");
    }

    t_Answer Run(CSession& session) const
    {
        const auto property = session.FindProperty(ToText(path));
        const QString written = ToText(unit.empty() ? value : value + ' ' + unit);
        t_ShownValue wanted = GetShownValue(*property);
        if (wanted.secret && session.IsConnected())
        {
            throw CFailure(eSTATUS_REFUSED,
                           QStringLiteral("%1 can not be compared: a service tells nobody a secret")
                               .arg(property->GetPath()));
        }
        const QString present = ShowValue(wanted, false);
        wanted.text = ReadValue(*property, written);
        const QString shown = ShowValue(wanted, false);
        if (present != shown || (wanted.secret && wanted.text != property->GetText()))
        {
            throw CFailure(
                eSTATUS_REFUSED,
                QStringLiteral("%1 is %2, not %3").arg(property->GetPath(), present, shown));
        }
        CReply reply(session, QStringLiteral("same"));
        return reply.Line(QStringLiteral("%1 is %2").arg(property->GetPath(), present))
            .Field("path", property->GetPath())
            .Send();
    }
};
} // namespace

void AddEditCommands(CLI::App& app, t_Run& run)
{
    AddCommand<t_ContainerOptions<kInsert>>(
        app, run, "insert", "Insert an item in an array or map",
        "Example:\n  zelctl insert SerialBus/CANBusSettings/LabelListSettings/SerialBusLabelItem "
        "Engine");
    AddCommand<t_ContainerOptions<kRemove>>(app, run, "remove", "Remove an item", "");
    AddCommand<t_ContainerOptions<kRename>>(app, run, "rename", "Rename an item of a map", "");
    AddCommand<t_ContainerOptions<kCopy>>(app, run, "copy",
                                          "Insert an item with the contents of another", "");
    AddCommand<t_ContainerOptions<kActivate>>(app, run, "activate", "Make an item the active one",
                                              "");
    AddCommand<t_DoOptions>(app, run, "do", "Run an action of the instrument",
                            "Example:\n  zelctl --load my.xml do Preset --trace");
}

void AddReplayCommands(CLI::App& app, t_Run& run)
{
    AddCommand<t_ReplayOptions<true>>(app, run, "undo", "Take the last step back, or several", "");
    AddCommand<t_ReplayOptions<false>>(app, run, "redo",
                                       "Repeat the step that was taken back, or several", "");
    AddCommand<t_HistoryOptions>(app, run, "history",
                                 "List the steps to undo and to redo, the next one first", "");
}

void AddSessionCommands(CLI::App& app, t_Run& run)
{
    AddCommand<t_BeginOptions>(app, run, "begin", "Begin a step of several writes", "");
    AddCommand<t_EndOptions<true>>(app, run, "commit", "End the step and keep it", "");
    AddCommand<t_EndOptions<false>>(app, run, "rollback", "End the step and take it back", "");
    AddCommand<t_SameOptions>(
        app, run, "same", "Fail unless a property has this value",
        "Values are compared as \"get\" shows them: numbers with nine digits.");
}
