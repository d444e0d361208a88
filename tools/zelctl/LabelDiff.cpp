// SPDX-License-Identifier: MIT
#include "LabelDiff.h"

#include "EnumText.h"
#include "LabelCommands.h"

#include <QJsonArray>
#include <algorithm>
#include <functional>
#include <iterator>
#include <map>

namespace
{
constexpr char kLabelDiffFooter[] =
    "Messages belong together by their identifier, else by their name; signals by their name, "
    "else\n"
    "by their place. Exit status 0: no difference; 1: differences, shown as \"message/signal: "
    "field\n"
    "first → second\"; 2: a file can not be used. Reports on the files go to the standard error.\n"
    "\n"
    "Example:\n"
    "  zelctl labels diff examples/labels/engine-can.xml examples/labels/engine-can.xml";

using t_Fields = std::vector<std::pair<QString, QString>>;

/** Pairs of positions in two lists, −1 where one has no partner. */
using t_Pairs = std::vector<std::pair<int, int>>;

QString YesNo(bool yes)
{
    return yes ? QStringLiteral("yes") : QStringLiteral("no");
}

void AddAttributes(const KW_LabelAttributes& attributes, t_Fields& fields)
{
    for (const auto& [name, attribute] : attributes)
    {
        fields.emplace_back(QStringLiteral("attribute ") + ToText(name), ToText(attribute.value));
    }
}

t_Fields GetFields(const KW_LabelEntry& entry)
{
    const KW_LabelMessageDetails& details = entry.details;
    t_Fields fields{
        {QStringLiteral("name"), ToText(entry.message.getName())},
        {QStringLiteral("identifier"), GetIdentifierText(entry.message)},
        {QStringLiteral("identifier bits"), ToText(entry.message.getIdentifierFormat())},
        {QStringLiteral("length"), QString::number(entry.message.getLength())},
        {QStringLiteral("CAN FD"), YesNo(details.isFd)},
        {QStringLiteral("bit rate switch"), YesNo(details.hasBitRateSwitch)},
        {QStringLiteral("cycle time"),
         details.cycleTime ? GetNumberText(*details.cycleTime) + QStringLiteral(" s") : QString()},
        {QStringLiteral("senders"), ToText(details.senders)},
        {QStringLiteral("comment"), ToText(details.comment)},
        {QStringLiteral("short name"), ToText(details.shortName)}};
    AddAttributes(details.attributes, fields);
    return fields;
}

t_Fields GetFields(const KW_LabelSignal& shown)
{
    const CLabelListSignal& signal = *shown.signal;
    const KW_LabelSignalDetails& details = *shown.details;
    t_Fields fields{{QStringLiteral("name"), ToText(signal.getName())},
                    {QStringLiteral("start"), QString::number(signal.getStartBit())},
                    {QStringLiteral("length"), QString::number(signal.getBitLength())},
                    {QStringLiteral("order"), GetOrderText(signal)},
                    {QStringLiteral("type"), GetTypeText(signal)},
                    {QStringLiteral("factor"), GetNumberText(signal.getFactor())},
                    {QStringLiteral("offset"), GetNumberText(signal.getOffset())},
                    {QStringLiteral("minimum"), GetNumberText(signal.getMinimum())},
                    {QStringLiteral("maximum"), GetNumberText(signal.getMaximum())},
                    {QStringLiteral("unit"), ToText(signal.getUnit())},
                    {QStringLiteral("condition"), GetConditionText(details)},
                    {QStringLiteral("multiplexor"), YesNo(details.isMultiplexor)},
                    {QStringLiteral("receivers"), ToText(details.receivers)},
                    {QStringLiteral("comment"), ToText(details.comment)},
                    {QStringLiteral("short name"), ToText(details.shortName)}};
    for (const auto& [raw, label] : GetLabels(shown))
    {
        fields.emplace_back(QStringLiteral("label ") + raw, label);
    }
    AddAttributes(details.attributes, fields);
    return fields;
}

QString GetLabelsText(const std::map<INT64, std::string>& labels)
{
    QStringList texts;
    for (const auto& [raw, label] : labels)
    {
        texts << QStringLiteral("%1 = %2").arg(QString::number(raw), ToText(label));
    }
    return texts.join(QStringLiteral("; "));
}

QString GetNodeText(const KW_LabelNode& node)
{
    t_Fields fields;
    AddAttributes(node.attributes, fields);
    QStringList texts{ToText(node.comment), ToText(node.shortName)};
    for (const auto& [name, value] : fields)
    {
        texts << name + QStringLiteral(" = ") + value;
    }
    texts.removeAll({});
    return texts.isEmpty() ? QStringLiteral("there") : texts.join(QStringLiteral("; "));
}

/** What a list holds beside its messages. */
t_Fields GetFields(const KW_LabelList& list)
{
    const KW_CanDatabase& database = list.database;
    t_Fields fields{{QStringLiteral("bus"), GetEnumText(list.protocol)},
                    {QStringLiteral("name"), ToText(list.name)},
                    {QStringLiteral("comment"), ToText(list.comment)},
                    {QStringLiteral("version"), ToText(database.version)}};
    for (const KW_LabelNode& node : database.nodes)
    {
        fields.emplace_back(QStringLiteral("node ") + ToText(node.name), GetNodeText(node));
    }
    for (const KW_ValueTable& table : database.valueTables)
    {
        fields.emplace_back(QStringLiteral("value table ") + ToText(table.name),
                            GetLabelsText(table.labels));
    }
    for (const KW_AttributeDefinition& definition : database.attributeDefinitions)
    {
        const QString preset = definition.defaultValue ? QStringLiteral(", else ") +
                                                             ToText(definition.defaultValue->value)
                                                       : QString();
        fields.emplace_back(QStringLiteral("definition of attribute %1 %2")
                                .arg(ToText(definition.object), ToText(definition.name))
                                .simplified(),
                            ToText(definition.type) + preset);
    }
    AddAttributes(database.attributes, fields);
    for (const std::string& statement : database.otherStatements)
    {
        fields.emplace_back(QStringLiteral("statement ") + ToText(statement).simplified(),
                            QStringLiteral("there"));
    }
    return fields;
}

/** Adds a difference, made from `place`, for each field that the two have not alike; a field that
    only one has is empty in the other. */
void CompareFields(const t_Fields& first, const t_Fields& second, const t_LabelDifference& place,
                   std::vector<t_LabelDifference>& differences)
{
    const auto add = [&](const QString& field, const QString& from, const QString& to)
    {
        if (from != to)
        {
            differences.push_back({place.message, place.signal, field, from, to, false});
        }
    };
    std::map<QString, QString> rest(second.begin(), second.end());
    for (const auto& [field, from] : first)
    {
        const auto to = rest.find(field);
        add(field, from, to == rest.end() ? QString() : to->second);
        if (to != rest.end())
        {
            rest.erase(to);
        }
    }
    for (const auto& [field, to] : second)
    {
        if (rest.count(field) > 0)
        {
            add(field, {}, to);
        }
    }
}

/** Pairs what has an equal key, in order, of what is not paired yet. */
void Pair(const QStringList& first, const QStringList& second, std::vector<int>& partners,
          std::vector<bool>& taken)
{
    std::multimap<QString, int> free;
    for (int i = 0; i < second.size(); ++i)
    {
        if (!taken[static_cast<std::size_t>(i)])
        {
            free.emplace(second[i], i);
        }
    }
    for (int i = 0; i < first.size(); ++i)
    {
        int& partner = partners[static_cast<std::size_t>(i)];
        const auto found = partner < 0 ? free.lower_bound(first[i]) : free.end();
        if (found != free.end() && found->first == first[i])
        {
            partner = found->second;
            taken[static_cast<std::size_t>(partner)] = true;
            free.erase(found);
        }
    }
}

/** Pairs two lists by each key in turn. */
template <typename TItem>
t_Pairs PairBy(const std::vector<TItem>& first, const std::vector<TItem>& second,
               const std::vector<std::function<QString(const TItem&)>>& keys)
{
    std::vector<int> partners(first.size(), -1);
    std::vector<bool> taken(second.size(), false);
    for (const auto& key : keys)
    {
        QStringList firstKeys;
        QStringList secondKeys;
        std::transform(first.begin(), first.end(), std::back_inserter(firstKeys), key);
        std::transform(second.begin(), second.end(), std::back_inserter(secondKeys), key);
        Pair(firstKeys, secondKeys, partners, taken);
    }
    t_Pairs pairs;
    for (std::size_t i = 0; i < first.size(); ++i)
    {
        pairs.emplace_back(static_cast<int>(i), partners[i]);
    }
    for (std::size_t i = 0; i < second.size(); ++i)
    {
        if (!taken[i])
        {
            pairs.emplace_back(-1, static_cast<int>(i));
        }
    }
    return pairs;
}

QString GetPlaceText(const KW_LabelSignal& shown)
{
    return QStringLiteral("%1|%2 %3 %4")
        .arg(shown.signal->getStartBit())
        .arg(shown.signal->getBitLength())
        .arg(GetOrderText(*shown.signal), GetConditionText(*shown.details));
}

QString GetMessageName(const KW_LabelEntry& entry)
{
    return GetIdentifierText(entry.message) + QLatin1Char(' ') + ToText(entry.message.getName());
}

void CompareSignals(const KW_LabelEntry& first, const KW_LabelEntry& second,
                    std::vector<t_LabelDifference>& differences)
{
    const auto before = KW_GetSignals(first);
    const auto after = KW_GetSignals(second);
    const auto getName = [](const KW_LabelSignal& shown)
    { return ToText(shown.signal->getName()); };
    const QString message = GetMessageName(first);
    for (const auto& [i, j] : PairBy<KW_LabelSignal>(before, after, {getName, GetPlaceText}))
    {
        const KW_LabelSignal& shown =
            i < 0 ? after[static_cast<std::size_t>(j)] : before[static_cast<std::size_t>(i)];
        const t_LabelDifference place{message, getName(shown), {}, {}, {}, i < 0};
        if (i < 0 || j < 0)
        {
            differences.push_back(place);
            continue;
        }
        CompareFields(GetFields(shown), GetFields(after[static_cast<std::size_t>(j)]), place,
                      differences);
    }
}

QString ShowDifference(const t_LabelDifference& difference)
{
    QString text = difference.message.isEmpty() ? QStringLiteral("list") : difference.message;
    text += difference.signal.isEmpty() ? QString() : QLatin1Char('/') + difference.signal;
    if (difference.field.isEmpty())
    {
        return text + QLatin1String(difference.isAdded ? ": added" : ": removed");
    }
    const auto shown = [](const QString& value)
    { return value.isEmpty() ? QStringLiteral("nothing") : value.simplified(); };
    return QStringLiteral("%1: %2 %3 → %4")
        .arg(text, difference.field, shown(difference.from), shown(difference.to));
}

QJsonObject ToJson(const t_LabelDifference& difference)
{
    QJsonObject json;
    const auto add = [&json](const char* name, const QString& text)
    {
        if (!text.isEmpty())
        {
            json[QLatin1String(name)] = text;
        }
    };
    add("message", difference.message);
    add("signal", difference.signal);
    if (difference.field.isEmpty())
    {
        add("change", QLatin1String(difference.isAdded ? "added" : "removed"));
        return json;
    }
    add("change", QStringLiteral("changed"));
    add("field", difference.field);
    json[QLatin1String("from")] = difference.from;
    json[QLatin1String("to")] = difference.to;
    return json;
}

struct t_LabelDiffOptions
{
    std::string first;
    std::string second;
    bool skipsBad = false;

    void Declare(CLI::App& command)
    {
        command.add_option("file", first, "Label list")->required();
        command.add_option("file2", second, "Label list to compare with")->required();
        DeclareSkipping(command, skipsBad);
    }

    t_Answer Run(CSession& session) const
    {
        CLabelFindings findings(session);
        const KW_LabelList before = findings.Require(first, skipsBad);
        const KW_LabelList after = findings.Require(second, skipsBad);
        CReply reply(session, QStringLiteral("labels diff"));
        const auto differences = Compare(before, after);
        if (reply.IsDocument())
        {
            QJsonArray json;
            std::transform(differences.begin(), differences.end(), std::back_inserter(json),
                           [](const t_LabelDifference& difference) { return ToJson(difference); });
            reply.Field("differences", json);
            findings.AddTo(reply);
        }
        else
        {
            for (const t_LabelDifference& difference : differences)
            {
                reply.Line(ShowDifference(difference));
            }
            findings.Show();
        }
        if (differences.empty())
        {
            return reply.Line(QStringLiteral("no differences")).Send();
        }
        return reply.Send(eKW_ACC_WARNING, eSTATUS_REFUSED);
    }
};
} // namespace

std::vector<t_LabelDifference> Compare(const KW_LabelList& first, const KW_LabelList& second)
{
    std::vector<t_LabelDifference> differences;
    CompareFields(GetFields(first), GetFields(second), {}, differences);
    const auto getIdentifier = [](const KW_LabelEntry& entry)
    { return ToText(entry.message.getIdentifierFormat()) + GetIdentifierText(entry.message); };
    const auto getName = [](const KW_LabelEntry& entry) { return ToText(entry.message.getName()); };
    for (const auto& [i, j] :
         PairBy<KW_LabelEntry>(first.messages, second.messages, {getIdentifier, getName}))
    {
        const KW_LabelEntry& entry = i < 0 ? second.messages[static_cast<std::size_t>(j)]
                                           : first.messages[static_cast<std::size_t>(i)];
        const t_LabelDifference place{GetMessageName(entry), {}, {}, {}, {}, i < 0};
        if (i < 0 || j < 0)
        {
            differences.push_back(place);
            continue;
        }
        const KW_LabelEntry& other = second.messages[static_cast<std::size_t>(j)];
        CompareFields(GetFields(entry), GetFields(other), place, differences);
        CompareSignals(entry, other, differences);
    }
    return differences;
}

void AddLabelDiff(CLI::App& labels, t_Run& run)
{
    AddSubcommand<t_LabelDiffOptions>(labels, run, "diff", "Compare two label lists",
                                      kLabelDiffFooter);
}
