// SPDX-License-Identifier: MIT
#include "Commands.h"
#include "EnumNameInfo.h"
#include "EnumText.h"
#include "KWEnumerationsUnits.h"
#include "NearestNames.h"
#include "NodeText.h"
#include "TreeWalk.h"

#include <QJsonArray>
#include <QMap>

namespace
{
constexpr char kEnumFooter[] =
    "Each value may be written by its serial, remote or display name. For a property, \"*\" marks\n"
    "its present value and \"-\" the values that can not be selected now.\n"
    "\n"
    "Examples:\n"
    "  zelctl enum                         all enumeration types\n"
    "  zelctl enum KW_WINDOW_TYPE\n"
    "  zelctl enum Trigger/Type";

using t_Types = QMap<QString, const CEnumNameInfo*>;

/** Every type that a property of the tree has, by its name in capitals; KW_UNIT, the type of all
    units, comes with them. */
t_Types CollectTypes(CSession& session)
{
    const CEnumNameInfo& units = GetStaticEnumNameInfo<KW_UNIT>();
    t_Types types{{units.GetType(), &units}};
    WalkTree(session.GetTree(), 0,
             [&types](const std::shared_ptr<IDbObject>& node, int)
             {
                 const auto* const property = dynamic_cast<const IDbProperty*>(node.get());
                 if (property != nullptr && property->GetEnumNameInfo() != nullptr)
                 {
                     types.insert(property->GetTypeName().toUpper(), property->GetEnumNameInfo());
                 }
             });
    return types;
}

QString ShowText(const QString& text)
{
    return text.isNull() ? QString() : text.isEmpty() ? QStringLiteral("\"\"") : text;
}

t_Answer ListTypes(CSession& session)
{
    CReply reply(session, QStringLiteral("enum"));
    QJsonArray json;
    CTable table;
    const t_Types types = CollectTypes(session);
    for (const CEnumNameInfo* const names : types)
    {
        table.Add({names->GetType(), QStringLiteral("%1 values").arg(names->GetEnumSize())});
        json.append(QJsonObject{{QStringLiteral("type"), names->GetType()},
                                {QStringLiteral("count"), names->GetEnumSize()}});
    }
    return reply.Lines(table.GetLines(0)).Field("types", json).Send();
}

/** How a value stands in a property. */
struct t_Standing
{
    bool isPresent;
    bool isSelectable;
};

t_Standing GetStanding(const IDbProperty& property, INT32 value)
{
    const CEnumNameInfo& names = *property.GetEnumNameInfo();
    return {property.GetText() == KW_FormatEnum(names, value),
            property.GetValueTexts().contains(names.GetSerialName(value))};
}

/** "*" for the present value, "-" for one that can not be selected. */
QString GetMark(const IDbProperty& property, INT32 value)
{
    const t_Standing standing = GetStanding(property, value);
    return standing.isPresent      ? QStringLiteral("*")
           : standing.isSelectable ? QStringLiteral(" ")
                                   : QStringLiteral("-");
}

QJsonObject ToJson(const CEnumNameInfo& names, INT32 value, const IDbProperty* property)
{
    QJsonObject json{{QStringLiteral("number"), value},
                     {QStringLiteral("serial"), names.GetSerialName(value)},
                     {QStringLiteral("remote"), names.GetRemoteName(value)},
                     {QStringLiteral("display"), names.GetName(value)},
                     {QStringLiteral("short"), names.GetShortName(value)}};
    if (const auto quantity = names.GetNumber(value))
    {
        json[QStringLiteral("quantity")] = *quantity;
    }
    if (property != nullptr)
    {
        const t_Standing standing = GetStanding(*property, value);
        json[QStringLiteral("selectable")] = standing.isSelectable;
        json[QStringLiteral("present")] = standing.isPresent;
    }
    return json;
}

t_Answer ListValues(CSession& session, const CEnumNameInfo& names, const IDbProperty* property)
{
    CTable table;
    table.Add({QString(), QStringLiteral("number"), QStringLiteral("serial"),
               QStringLiteral("remote"), QStringLiteral("display"), QStringLiteral("short"),
               QStringLiteral("stands for")});
    QJsonArray json;
    for (INT32 value = 0; value < names.GetEnumSize(); ++value)
    {
        const auto quantity = names.GetNumber(value);
        table.Add({property != nullptr ? GetMark(*property, value) : QString(),
                   QString::number(value), ShowText(names.GetSerialName(value)),
                   ShowText(names.GetRemoteName(value)), ShowText(names.GetName(value)),
                   ShowText(names.GetShortName(value)),
                   quantity ? QString::number(*quantity, 'g', 12) : QString()});
        json.append(ToJson(names, value, property));
    }
    CReply reply(session, QStringLiteral("enum"));
    return reply.Line(names.GetType())
        .Lines(table.GetLines(0))
        .Field("type", names.GetType())
        .Field("values", json)
        .Send();
}

struct t_EnumOptions
{
    std::string name;

    void Declare(CLI::App& command)
    {
        command.add_option("name", name, "Enumeration type, or path of a property of such a type")
            ->type_name("TYPE|PATH");
    }

    t_Answer Run(CSession& session) const;
};

const CEnumNameInfo& FindType(CSession& session, const QString& name)
{
    const t_Types types = CollectTypes(session);
    const auto found = types.constFind(name.toUpper());
    if (found == types.constEnd())
    {
        throw CFailure(eSTATUS_USAGE,
                       QStringLiteral("no enumeration type \"%1\"%2")
                           .arg(name, DidYouMean(GetNearestNames(name, types.keys()))));
    }
    return **found;
}

t_Answer t_EnumOptions::Run(CSession& session) const
{
    const QString wanted = ToText(name);
    if (wanted.isEmpty())
    {
        return ListTypes(session);
    }
    if (wanted.startsWith(QLatin1String("KW_"), Qt::CaseInsensitive))
    {
        return ListValues(session, FindType(session, wanted), nullptr);
    }
    const auto property = session.FindProperty(wanted);
    const CEnumNameInfo* const names = property->GetEnumNameInfo();
    if (names == nullptr)
    {
        throw CFailure(eSTATUS_USAGE, QStringLiteral("%1 is of type %2, not an enumeration")
                                          .arg(wanted, property->GetTypeName()));
    }
    return ListValues(session, *names, property.get());
}
} // namespace

void AddEnumCommand(CLI::App& app, t_Run& run)
{
    AddCommand<t_EnumOptions>(app, run, "enum", "Show the values of an enumeration", kEnumFooter);
}
