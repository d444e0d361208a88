// SPDX-License-Identifier: MIT
#include "LabelList/LabelFields.h"
#include "LabelList/LabelFiles.h"
#include "LabelList/LabelHead.h"
#include "LabelList/LabelTexts.h"

namespace
{
/** XML text, an element in each line. */
class CXmlText
{
public:
    void Open(std::string_view element)
    {
        EndTag("\n");
        m_text.append(static_cast<int>(4 * m_open.size()), ' ');
        Append("<", element);
        m_open.push_back(element);
        m_isTag = true;
    }

    void Attribute(std::string_view name, std::string_view value)
    {
        Append(" ", name, "=\"");
        AppendEscaped(NLabelTexts::Holdable(value, m_replaced));
        Append("\"");
    }

    /** Left out when it says nothing. */
    void Optional(std::string_view name, std::string_view value)
    {
        if (!value.empty())
        {
            Attribute(name, value);
        }
    }

    void Close()
    {
        const std::string_view element = m_open.back();
        m_open.pop_back();
        if (m_isTag)
        {
            return EndTag("/>\n"), void();
        }
        m_text.append(static_cast<int>(4 * m_open.size()), ' ');
        Append("</", element, ">\n");
    }

    const QByteArray& Text() const { return m_text; }
    std::size_t Replaced() const { return m_replaced; }

private:
    template <typename... T>
    void Append(const T&... parts)
    {
        const auto one = [this](std::string_view part)
        { m_text.append(part.data(), static_cast<int>(part.size())); };
        (one(parts), ...);
    }

    void EndTag(std::string_view end)
    {
        if (m_isTag)
        {
            Append(end == "\n" ? ">\n" : end);
        }
        m_isTag = false;
    }

    /** Line ends and tabulators would come back as blanks. */
    void AppendEscaped(std::string_view text)
    {
        for (const char c : text)
        {
            switch (c)
            {
            case '&':
                Append("&amp;");
                break;
            case '<':
                Append("&lt;");
                break;
            case '>':
                Append("&gt;");
                break;
            case '"':
                Append("&quot;");
                break;
            case '\t':
                Append("&#9;");
                break;
            case '\n':
                Append("&#10;");
                break;
            case '\r':
                Append("&#13;");
                break;
            default:
                m_text.append(c);
            }
        }
    }

    QByteArray m_text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
    std::vector<std::string_view> m_open;
    bool m_isTag = false; ///< whether the tag of the last element still takes attributes
    std::size_t m_replaced = 0;
};

void WriteFields(CXmlText& xml, const t_LabelFieldTexts& texts)
{
    for (std::size_t i = 0; i < texts.size(); ++i)
    {
        xml.Optional(NLabelFields::NameOf(static_cast<eLABEL_FIELD>(i)), texts[i]);
    }
}

void WriteNames(CXmlText& xml, std::string_view element, const std::vector<std::string>& names)
{
    for (const std::string& name : names)
    {
        xml.Open(element);
        xml.Attribute("Name", name);
        xml.Close();
    }
}

template <typename T>
void WriteLabels(CXmlText& xml, const T& labels)
{
    for (const auto& [value, text] : labels)
    {
        xml.Open("Label");
        xml.Attribute("Value", std::to_string(value));
        xml.Attribute("Text", text);
        xml.Close();
    }
}

void WriteAttributes(CXmlText& xml, const KW_LabelAttributes& attributes)
{
    for (const auto& [name, attribute] : attributes)
    {
        xml.Open("Attribute");
        xml.Attribute("Name", name);
        xml.Attribute(attribute.isText ? "Text" : "Value", attribute.value);
        xml.Close();
    }
}

void WriteNode(CXmlText& xml, const KW_LabelNode& node)
{
    xml.Open("Node");
    xml.Attribute("Name", node.name);
    xml.Optional("ShortName", node.shortName);
    xml.Optional("Comment", node.comment);
    WriteAttributes(xml, node.attributes);
    xml.Close();
}

void WriteDefinition(CXmlText& xml, const KW_AttributeDefinition& definition)
{
    xml.Open("AttributeDefinition");
    xml.Optional("Object", definition.object);
    xml.Attribute("Name", definition.name);
    xml.Optional("Type", definition.type);
    if (definition.defaultValue)
    {
        xml.Attribute(definition.defaultValue->isText ? "DefaultText" : "DefaultValue",
                      definition.defaultValue->value);
    }
    xml.Close();
}

void WriteDatabase(CXmlText& xml, const KW_CanDatabase& database)
{
    const bool isEmpty = database.version.empty() && !database.isUtf8 && database.nodes.empty() &&
                         database.valueTables.empty() && database.attributeDefinitions.empty() &&
                         database.attributes.empty();
    if (isEmpty)
    {
        return;
    }
    xml.Open("Database");
    xml.Optional("Version", database.version);
    xml.Optional("Encoding", database.isUtf8 ? "UTF-8" : "");
    for (const KW_LabelNode& node : database.nodes)
    {
        WriteNode(xml, node);
    }
    for (const KW_ValueTable& table : database.valueTables)
    {
        xml.Open("ValueTable");
        xml.Attribute("Name", table.name);
        WriteLabels(xml, table.labels);
        xml.Close();
    }
    for (const KW_AttributeDefinition& definition : database.attributeDefinitions)
    {
        WriteDefinition(xml, definition);
    }
    WriteAttributes(xml, database.attributes);
    xml.Close();
}

void WriteMessage(CXmlText& xml, const KW_LabelEntry& entry)
{
    xml.Open("Message");
    WriteFields(xml, NLabelFields::TextsOf(entry));
    WriteNames(xml, "Sender", entry.details.senders);
    WriteAttributes(xml, entry.details.attributes);
    for (const auto& [signal, details] : KW_GetSignals(entry))
    {
        xml.Open("Signal");
        WriteFields(xml, NLabelFields::TextsOf(*signal, *details));
        WriteLabels(xml, NLabelFields::LabelsOf(*signal, *details));
        WriteNames(xml, "Receiver", details->receivers);
        WriteAttributes(xml, details->attributes);
        xml.Close();
    }
    xml.Close();
}
} // namespace

QByteArray NLabelFiles::WriteXml(const KW_LabelList& list, CLabelReports& reports)
{
    CXmlText xml;
    xml.Open("LabelList");
    xml.Attribute("Version", NLabelHead::kVersion);
    xml.Attribute("Protocol", GetStaticEnumNameInfo<KW_ZEL_SERIALBUS_PROTOCOL>()
                                  .GetSerialName(list.protocol)
                                  .toStdString());
    xml.Optional("Name", list.name);
    xml.Optional("Comment", list.comment);
    WriteDatabase(xml, list.database);
    for (const KW_LabelEntry& entry : list.messages)
    {
        WriteMessage(xml, entry);
    }
    xml.Close();
    if (!list.database.otherStatements.empty())
    {
        reports.Warning({}, QStringLiteral("XML does not hold other statements (%1)")
                                .arg(list.database.otherStatements.size()));
    }
    NLabelHead::WarnOfReplaced(xml.Replaced(), reports);
    return xml.Text();
}
