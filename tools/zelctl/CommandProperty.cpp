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
    "  zelctl --load my.xml --save my.xml set Meter/Range 10V";

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
    using t_Properties = std::vector<std::shared_ptr<IDbProperty>>;
    t_Properties Collect(CSession& session) const;
};

t_GetOptions::t_Properties t_GetOptions::Collect(CSession& session) const
{
    t_Properties properties;
    for (const std::string& path : paths)
    {
        const auto node = session.Find(ToText(path));
        auto* const group = dynamic_cast<IDbGroup*>(node.get());
        for (INT32 i = 0; group != nullptr && i < group->GetPropertyCount(); ++i)
        {
            properties.push_back(group->GetProperty(i));
        }
        if (group == nullptr)
        {
            properties.push_back(session.FindProperty(ToText(path)));
        }
        else if (group->GetPropertyCount() == 0)
        {
            throw CFailure(eSTATUS_USAGE,
                           QStringLiteral("%1 has no properties of its own; \"zelctl tree %1\" "
                                          "shows what is below")
                               .arg(group->GetPath()));
        }
    }
    return properties;
}

t_Answer t_GetOptions::Run(CSession& session) const
{
    const t_Properties properties = Collect(session);
    const bool exact = session.GetStyle().exact;
    const bool isBare = properties.size() == 1 && paths.size() == 1;
    CReply reply(session, QStringLiteral("get"));
    QJsonArray json;
    for (const auto& property : properties)
    {
        const t_ShownValue value = GetShownValue(*property);
        const bool isText = value.type == QLatin1String("string") && !value.secret;
        if (reply.IsDocument())
        {
            json.append(ToJson(*property, true));
        }
        else if (info)
        {
            reply.Lines(GetInfoLines(*property, exact));
        }
        else
        {
            reply.Line(isBare
                           ? (isText ? value.text : ShowValue(value, exact))
                           : property->GetPath() + QStringLiteral(" = ") + ShowValue(value, exact));
        }
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

t_Answer t_SetOptions::Run(CSession& session) const
{
    const auto property = session.FindProperty(ToText(path));
    const QString written = ToText(unit.empty() ? value : value + ' ' + unit);
    t_ShownValue asked = GetShownValue(*property);
    asked.text = ReadValue(*property, written);
    const QString request = QStringLiteral("%1 = %2").arg(
        property->GetPath(), ShowValue(asked, session.GetStyle().exact));
    return WriteProperty(session, "set", *property, request, trace,
                         [&] { return property->SetText(asked.text); });
}
} // namespace

void AddPropertyCommands(CLI::App& app, t_Run& run)
{
    AddCommand<t_GetOptions>(app, run, "get", "Show the value of properties", kGetFooter);
    AddCommand<t_SetOptions>(app, run, "set", "Write a setting", kSetFooter);
}
