// SPDX-License-Identifier: MIT
#pragma once

#include "LabelList/LabelList.h"

#include <charconv>
#include <string>

/** All that a label list holds but its encoding, a line for each item, to compare two lists. */
namespace NListText
{
inline std::string Number(double value)
{
    char text[32];
    return {text, std::to_chars(text, text + sizeof(text), value).ptr};
}

inline std::string Value(const KW_LabelAttribute& value)
{
    return value.isText ? '"' + value.value + '"' : value.value;
}

inline void AddAttributes(std::string& to, const KW_LabelAttributes& attributes)
{
    for (const auto& [name, value] : attributes)
    {
        to += "    @" + name + " = " + Value(value) + '\n';
    }
}

inline void AddNames(std::string& to, const char* what, const std::vector<std::string>& names)
{
    to += what;
    for (const std::string& name : names)
    {
        to += " <" + name + ">";
    }
    to += '\n';
}

inline void AddDetails(std::string& to, const KW_LabelSignalDetails& details)
{
    to += "    short <" + details.shortName + "> comment <" + details.comment + ">" +
          (details.isMultiplexor ? " multiplexor" : "") + " when <" + details.multiplexor + ">";
    for (const KW_RawRange& range : details.selectedBy)
    {
        to += ' ' + std::to_string(range.first) + '-' + std::to_string(range.last);
    }
    AddNames(to, "\n    to", details.receivers);
    for (const auto& [value, label] : details.furtherLabels)
    {
        to += "    further " + std::to_string(value) + " <" + label + ">\n";
    }
    AddAttributes(to, details.attributes);
}

inline void AddSignal(std::string& to, const CLabelListSignal& signal)
{
    to += "  signal <" + signal.getName() + "> " + std::to_string(signal.getStartBit()) + '|' +
          std::to_string(signal.getBitLength()) + '@' + std::to_string(signal.getEndianness()) +
          " type " + std::to_string(signal.getValueType()) + " (" + Number(signal.getFactor()) +
          ',' + Number(signal.getOffset()) + ") [" + Number(signal.getMinimum()) + '|' +
          Number(signal.getMaximum()) + "] <" + signal.getUnit() + ">\n";
    for (const auto& [raw, label] : signal.getSignalEnumValues())
    {
        to += "    " + std::to_string(raw) + " <" + label.toStdString() + ">\n";
    }
}

inline void AddMessage(std::string& to, const KW_LabelEntry& entry)
{
    const auto& [message, details] = entry;
    to += "message <" + message.getName() + "> " + message.getIdentifierFormat() + ' ' +
          std::to_string(message.getIdentifier()) + " length " +
          std::to_string(message.getLength()) + (details.isFd ? " FD" : "") +
          (details.hasBitRateSwitch ? " BRS" : "") + " short <" + details.shortName +
          "> comment <" + details.comment + "> every " + Number(details.cycleTime.value_or(0.0)) +
          '\n';
    AddNames(to, "    from", details.senders);
    AddAttributes(to, details.attributes);
    for (const QByteArray& key : details.signalsInOrder)
    {
        AddSignal(to, message.getSignals().at(key));
        const auto found = details.signalDetails.find(key);
        AddDetails(to,
                   found != details.signalDetails.end() ? found->second : KW_LabelSignalDetails());
    }
}

inline std::string Of(const KW_LabelList& list)
{
    const KW_CanDatabase& database = list.database;
    std::string text = "list " + std::to_string(list.protocol) + " <" + list.name + "> comment <" +
                       list.comment + "> version <" + database.version + ">\n";
    AddAttributes(text, database.attributes);
    for (const KW_LabelNode& node : database.nodes)
    {
        text += "node <" + node.name + "> <" + node.shortName + "> <" + node.comment + ">\n";
        AddAttributes(text, node.attributes);
    }
    for (const KW_ValueTable& table : database.valueTables)
    {
        text += "table <" + table.name + ">\n";
        for (const auto& [value, label] : table.labels)
        {
            text += "    " + std::to_string(value) + " <" + label + ">\n";
        }
    }
    for (const KW_AttributeDefinition& definition : database.attributeDefinitions)
    {
        text += "definition <" + definition.object + "> <" + definition.name + "> " +
                definition.type + " default " +
                (definition.defaultValue ? Value(*definition.defaultValue) : "none") + '\n';
    }
    for (const KW_LabelEntry& entry : list.messages)
    {
        AddMessage(text, entry);
    }
    for (const std::string& statement : database.otherStatements)
    {
        text += "statement " + statement + '\n';
    }
    return text;
}
} // namespace NListText
