// SPDX-License-Identifier: MIT
#include "Commands.h"
#include "NodeText.h"
#include "PropertyWrite.h"

#include <QJsonArray>

namespace
{
constexpr char kGetFooter[] =
    "One property gives its bare value; several, or a group, give lines \"path = value\".\n"
    "\n"
    "Examples:\n"
    "  zelctl get Spectrum/RBW\n"
    "  zelctl get Horizontal                      all settings and results of the timebase\n"
    "  zelctl get Vertical/Channel                how many items there are, and which is active\n"
    "  zelctl get --info Vertical/Channel[0]/Scale   with limits, default and selectable values";

constexpr char kSetFooter[] =
    "Numbers take a prefix (f p n u m k M G T) and the property's unit, both may be left out:\n"
    "\"1.5 MHz\", \"20ms\", \"3k\", \"2 mV/div\", \"50%\"; whole numbers also 0x1F. Enumerations "
    "take\n"
    "serial, remote or display names in upper or lower case: see \"zelctl enum PATH\". A text "
    "with\n"
    "blanks stands in quotes, a value that begins with a letter after \"-\" behind a \"--\".\n"
    "\n"
    "The answer is the old and the new value. A write that the instrument refuses changes "
    "nothing,\n"
    "names the limit it met, and gives exit status 1.\n"
    "\n"
    "Examples:\n"
    "  zelctl set Vertical/Channel[0]/Scale 200 mV/div --trace\n"
    "  zelctl --load my.xml --save my.xml set Trigger/Type RUNT";

struct t_GetOptions
{
    std::vector<std::string> paths;
    bool info = false;

    void Declare(CLI::App& command)
    {
        command.add_option("path", paths, "Properties or groups")->required();
        command.add_flag("-i,--info", info, "Also show limits, default, type, unit and state");
    }

    t_Answer Run(CSession& session) const;

private:
    void Show(const IDbProperty& property, bool isBare, CReply& reply, bool exact) const;
};

/** A container is told by its items; to others it has an index or a name of the active one. */
QString DescribeContainer(const IDbGroup& group, const IDbContainer& container)
{
    const QString active = container.GetActiveItem();
    const QString text = DescribeItems(group, container);
    return container.GetCount() == 0 ? text
           : active.isEmpty()        ? text + QStringLiteral("; none is active")
                                     : QStringLiteral("%1; [%2] is active").arg(text, active);
}

void t_GetOptions::Show(const IDbProperty& property, bool isBare, CReply& reply, bool exact) const
{
    if (info)
    {
        reply.Lines(GetInfoLines(property, exact));
        return;
    }
    const t_ShownValue value = GetShownValue(property);
    const bool isText = isBare && value.type == QLatin1String("string") && !value.secret;
    const QString shown = property.GetValidity() == eKW_VALIDITY_INVALID
                              ? QStringLiteral("invalid (no usable value yet)")
                          : isText ? value.text
                                   : ShowValue(value, exact);
    reply.Line(isBare ? shown : property.GetPath() + QStringLiteral(" = ") + shown);
}

using t_Properties = std::vector<std::shared_ptr<IDbProperty>>;

t_Properties GetOwnProperties(const IDbGroup& group)
{
    t_Properties properties;
    for (INT32 i = 0; i < group.GetPropertyCount(); ++i)
    {
        properties.push_back(group.GetProperty(i));
    }
    if (properties.empty())
    {
        throw CFailure(eSTATUS_USAGE,
                       QStringLiteral("%1 has no properties of its own; \"zelctl tree "
                                      "%1\" shows what is below")
                           .arg(group.GetPath()));
    }
    return properties;
}

t_Answer t_GetOptions::Run(CSession& session) const
{
    const bool exact = session.GetStyle().exact;
    CReply reply(session, QStringLiteral("get"));
    QJsonArray json;
    QJsonArray containers;
    for (const std::string& path : paths)
    {
        const auto group = std::dynamic_pointer_cast<IDbGroup>(session.Find(ToText(path)));
        const IDbContainer* const container = group ? group->AsContainer() : nullptr;
        const t_Properties properties =
            group ? GetOwnProperties(*group) : t_Properties{session.FindProperty(ToText(path))};
        if (container != nullptr)
        {
            reply.Line(DescribeContainer(*group, *container));
            containers.append(ToJson(*group, false));
        }
        for (const auto& property : properties)
        {
            if (reply.IsDocument())
            {
                json.append(ToJson(*property, true));
            }
            else if (container == nullptr || info)
            {
                Show(*property, !group && paths.size() == 1, reply, exact);
            }
        }
    }
    if (!containers.isEmpty())
    {
        reply.Field("containers", containers);
    }
    return reply.Field("properties", json).Send();
}

struct t_SetOptions
{
    std::string path;
    std::string value;
    std::string unit;
    bool trace = false;

    void Declare(CLI::App& command)
    {
        command.add_option("path", path, "Property to write")->required();
        command.add_option("value", value, "New value")->required();
        command.add_option("unit", unit,
                           "Prefix and unit, when a blank parts them from the number");
        command.add_flag("-t,--trace", trace, "Show everything else that changed, limits included");
    }

    t_Answer Run(CSession& session) const;
};

QString ReadWanted(const IDbProperty& property, const QString& written)
{
    try
    {
        return ReadValue(property, written);
    }
    catch (CFailure& failure)
    {
        failure.AddData(GetChoice(property));
        throw;
    }
}

t_Answer t_SetOptions::Run(CSession& session) const
{
    const auto property = session.FindProperty(ToText(path));
    const QString written = ToText(unit.empty() ? value : value + ' ' + unit);
    t_ShownValue asked = GetShownValue(*property);
    asked.text = ReadWanted(*property, written);
    return WriteProperty(session, "set", *property, {asked, {}, trace},
                         [&] { return property->SetText(asked.text); });
}
} // namespace

void AddPropertyCommands(CLI::App& app, t_Run& run)
{
    AddCommand<t_GetOptions>(app, run, "get", "Show the value of properties", kGetFooter);
    AddCommand<t_SetOptions>(app, run, "set", "Write a setting", kSetFooter);
}
