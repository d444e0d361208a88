// SPDX-License-Identifier: MIT
#include "labels/LabelListText.h"

#include <iomanip>
#include <sstream>

namespace
{
class CListText
{
public:
    explicit CListText(const KW_LabelList& list)
    {
        const KW_CanDatabase& database = list.database;
        Line("list", list.protocol, list.name, list.comment);
        Line("database", database.version, database.isUtf8, database.otherStatements.size());
        for (const auto& node : database.nodes)
        {
            Line("node", node.name, node.shortName, node.comment);
            Attributes(node.attributes);
        }
        for (const auto& table : database.valueTables)
        {
            Line("table", table.name);
            Labels(table.labels);
        }
        for (const auto& definition : database.attributeDefinitions)
        {
            const KW_LabelAttribute value = definition.defaultValue.value_or(KW_LabelAttribute{});
            Line("definition", definition.object, definition.name, definition.type,
                 definition.defaultValue.has_value(), value.value, value.isText);
        }
        Attributes(database.attributes);
        for (const KW_LabelEntry& entry : list.messages)
        {
            Entry(entry);
        }
    }

    std::string Text() const { return m_text.str(); }

private:
    template <typename... T>
    void Line(const T&... fields)
    {
        (Field(fields), ...);
        m_text << '\n';
    }

    void Field(const std::string& text) { m_text << std::quoted(text) << ' '; }
    void Field(const char* text) { m_text << text << ' '; }
    void Field(double value) { m_text << std::hexfloat << value << ' '; }
    template <typename T>
    void Field(const T& value)
    {
        m_text << value << ' ';
    }

    void Attributes(const KW_LabelAttributes& attributes)
    {
        for (const auto& [name, attribute] : attributes)
        {
            Line("attribute", name, attribute.value, attribute.isText);
        }
    }

    template <typename T>
    void Labels(const T& labels)
    {
        for (const auto& [value, text] : labels)
        {
            Line("label", value, std::string(text.data(), static_cast<std::size_t>(text.size())));
        }
    }

    void Names(const char* what, const std::vector<std::string>& names)
    {
        for (const std::string& name : names)
        {
            Line(what, name);
        }
    }

    void Entry(const KW_LabelEntry& entry)
    {
        const CLabelListMessage& message = entry.message;
        const KW_LabelMessageDetails& details = entry.details;
        Line("message", message.getName(), message.getIdentifierFormat(), message.getIdentifier(),
             message.getLength(), details.comment, details.shortName, details.isFd,
             details.hasBitRateSwitch, details.cycleTime.value_or(-1.0));
        Names("sender", details.senders);
        Attributes(details.attributes);
        Line("signals", message.getSignals().size(), details.signalsInOrder.size(),
             details.signalDetails.size());
        for (const QByteArray& key : details.signalsInOrder)
        {
            Signal(message.getSignals().at(key));
            const auto known = details.signalDetails.find(key);
            if (known != details.signalDetails.end())
            {
                Details(known->second);
            }
        }
    }

    void Signal(const CLabelListSignal& signal)
    {
        Line("signal", signal.getName(), signal.getStartBit(), signal.getBitLength(),
             signal.getEndianness(), signal.getValueType(), signal.getFactor(), signal.getOffset(),
             signal.getMinimum(), signal.getMaximum(), signal.getUnit());
        Labels(signal.getSignalEnumValues());
    }

    void Details(const KW_LabelSignalDetails& details)
    {
        Line("details", details.multiplexor, details.isMultiplexor, details.comment,
             details.shortName);
        for (const KW_RawRange& range : details.selectedBy)
        {
            Line("range", range.first, range.last);
        }
        Names("receiver", details.receivers);
        Line("further", details.furtherLabels.size());
        Labels(details.furtherLabels);
        Attributes(details.attributes);
    }

    std::ostringstream m_text;
};
} // namespace

std::string TextOfLabelList(const KW_LabelList& list)
{
    return CListText(list).Text();
}
