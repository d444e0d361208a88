// SPDX-License-Identifier: MIT
#include "LabelList/LabelBounds.h"
#include "LabelList/LabelFields.h"
#include "LabelList/LabelFiles.h"
#include "LabelList/LabelHead.h"
#include "LabelList/LabelListBuilder.h"
#include "LabelList/LabelTexts.h"
#include "LabelList/LabelXmlTokens.h"
#include "XmlTags.h"

#include <algorithm>

namespace
{
/** Reads elements into a list. Members are named after the elements that they read; each is called
    with the element open, and ends with it. */
class CLabelXmlReader
{
public:
    CLabelXmlReader(const QByteArray& text, KW_LabelList& list, CLabelReports& reports,
                    const KW_LabelReadOptions& options)
        : m_xml(text, reports), m_list(list), m_reports(reports), m_builder(list, reports, options)
    {
    }

    bool Read()
    {
        if (m_xml.Next() && Head())
        {
            Children(
                {{"Message", &CLabelXmlReader::Message}, {"Database", &CLabelXmlReader::Database}});
            m_xml.Next(); // what follows has to be well-formed, too
        }
        return !m_xml.IsBroken() && m_builder.Finish();
    }

private:
    struct t_Child
    {
        std::string_view name;
        void (CLabelXmlReader::*read)();
    };

    void Children(std::initializer_list<t_Child> known)
    {
        m_xml.WarnOfRest();
        while (m_xml.Next())
        {
            const auto child =
                std::find_if(known.begin(), known.end(),
                             [this](const t_Child& one) { return one.name == m_xml.Name(); });
            if (child == known.end())
            {
                m_xml.PassOver();
            }
            else
            {
                (this->*child->read)();
            }
        }
    }

    bool Head()
    {
        if (m_xml.Name() != "LabelList")
        {
            return Refuse(m_xml.Place(), QStringLiteral("no label list: its element is %1")
                                             .arg(QString::fromStdString(m_xml.Name())));
        }
        m_list.name = Text("Name");
        m_list.comment = Text("Comment");
        const auto* const version = m_xml.Take("Version");
        const auto* const protocol = m_xml.Take("Protocol");
        if (version == nullptr || protocol == nullptr)
        {
            return Refuse(m_xml.Place(),
                          QStringLiteral("%1 is missing")
                              .arg(QLatin1String(version == nullptr ? "Version" : "Protocol")));
        }
        QString error = NLabelHead::ReadVersion(version->text);
        if (!error.isEmpty())
        {
            return Refuse(version->place, error);
        }
        error = NLabelHead::ReadProtocol(protocol->text, m_list.protocol);
        return error.isEmpty() || Refuse(protocol->place, error);
    }

    void Message()
    {
        m_place = m_xml.Place();
        if (!m_builder.BeginMessage(m_place))
        {
            return m_xml.BreakOff();
        }
        m_attributes = &m_builder.Message().details.attributes;
        if (!NLabelFields::Read(Fields(NLabelFields::IsOfMessages), m_place, m_list.protocol,
                                m_builder.Message(), m_reports))
        {
            m_builder.Spoil();
        }
        Children({{"Signal", &CLabelXmlReader::Signal},
                  {"Sender", &CLabelXmlReader::Sender},
                  {"Attribute", &CLabelXmlReader::Attribute}});
        m_builder.EndMessage();
    }

    void Signal()
    {
        const t_TextPlace place = m_xml.Place();
        KW_LabelAttributes* const attributesOfMessage = m_attributes;
        m_signal = {};
        m_details = {};
        m_attributes = &m_details.attributes;
        const CLabelFields fields = Fields(NLabelFields::IsOfSignals);
        if (!NLabelFields::Read(fields, place, m_signal, m_details, m_reports))
        {
            m_builder.Spoil();
        }
        Children({{"Label", &CLabelXmlReader::Label},
                  {"Receiver", &CLabelXmlReader::Receiver},
                  {"Attribute", &CLabelXmlReader::Attribute}});
        m_attributes = attributesOfMessage;
        if (!fields.At(eLABEL_FIELD::ValueType))
        {
            NLabelFields::TakeTypeFromLabels(m_signal);
        }
        if (!m_xml.IsBroken() && !m_builder.AddSignal(m_signal, m_details, place))
        {
            m_xml.BreakOff();
        }
    }

    void Sender() { NameInto(m_builder.Message().details.senders); }
    void Receiver() { NameInto(m_details.receivers); }

    void Label()
    {
        const auto value = LabelValue();
        if (value && !NLabelFields::AddLabel({*value, Text("Text")}, m_signal, m_details))
        {
            WarnOfSecond(QStringLiteral("a label of %1").arg(*value));
        }
        EndItem();
    }

    void Attribute()
    {
        const std::string name = Needed("Name");
        const auto value = AttributeValue("Value", "Text");
        if (!value)
        {
            Fail(QStringLiteral("an attribute has either a Value or a Text"));
        }
        else if (!m_attributes->emplace(name, *value).second)
        {
            WarnOfSecond(QStringLiteral("an attribute \"%1\"").arg(QString::fromStdString(name)));
        }
        EndItem();
    }

    void Database()
    {
        KW_CanDatabase& database = m_list.database;
        database.version = Text("Version");
        const auto* const encoding = m_xml.Take("Encoding");
        database.isUtf8 = encoding != nullptr && encoding->text == "UTF-8";
        if (encoding != nullptr && !database.isUtf8 && encoding->text != "Windows-1252")
        {
            Fail(QStringLiteral("Encoding: \"%1\" is neither UTF-8 nor Windows-1252")
                     .arg(QString::fromStdString(encoding->text)));
        }
        m_attributes = &database.attributes;
        Children({{"Node", &CLabelXmlReader::Node},
                  {"ValueTable", &CLabelXmlReader::ValueTable},
                  {"AttributeDefinition", &CLabelXmlReader::AttributeDefinition},
                  {"Attribute", &CLabelXmlReader::Attribute}});
    }

    void Node()
    {
        KW_LabelNode& node = m_list.database.nodes.emplace_back();
        node.name = Needed("Name");
        node.shortName = Text("ShortName");
        node.comment = Text("Comment");
        m_attributes = &node.attributes;
        Count(&CLabelListBuilder::AddObject);
        Children({{"Attribute", &CLabelXmlReader::Attribute}});
        m_attributes = &m_list.database.attributes;
    }

    void ValueTable()
    {
        m_list.database.valueTables.emplace_back().name = Needed("Name");
        Count(&CLabelListBuilder::AddObject);
        Children({{"Label", &CLabelXmlReader::LabelOfTable}});
    }

    void LabelOfTable()
    {
        const auto value = LabelValue();
        auto& labels = m_list.database.valueTables.back().labels;
        if (value && !labels.emplace(*value, Text("Text")).second)
        {
            WarnOfSecond(QStringLiteral("a label of %1").arg(*value));
        }
        EndItem();
    }

    void AttributeDefinition()
    {
        auto& definition = m_list.database.attributeDefinitions.emplace_back();
        definition.object = Text("Object");
        definition.name = Needed("Name");
        definition.type = Text("Type");
        definition.defaultValue = AttributeValue("DefaultValue", "DefaultText");
        if (!definition.defaultValue && m_xml.Take("DefaultValue") != nullptr)
        {
            Fail(QStringLiteral("a default is either a DefaultValue or a DefaultText"));
        }
        Count(&CLabelListBuilder::AddObject);
        m_xml.EndLeaf();
    }

    std::string Text(std::string_view name)
    {
        const auto* const attribute = m_xml.Take(name);
        return attribute != nullptr ? attribute->text : std::string();
    }

    std::string Needed(const char* name)
    {
        if (m_xml.Take(name) == nullptr)
        {
            Fail(QStringLiteral("%1 is missing").arg(QLatin1String(name)));
        }
        return Text(name);
    }

    std::optional<KW_LabelAttribute> AttributeValue(std::string_view number, std::string_view text)
    {
        const auto* const asNumber = m_xml.Take(number);
        const auto* const asText = m_xml.Take(text);
        const auto* const only = asNumber != nullptr ? asNumber : asText;
        const bool isOne = (asNumber == nullptr) != (asText == nullptr);
        return isOne ? std::optional(KW_LabelAttribute{only->text, only == asText}) : std::nullopt;
    }

    std::optional<INT64> LabelValue()
    {
        const std::string text = Needed("Value");
        const auto value = NLabelTexts::ReadInteger(text);
        if (!value && m_xml.Take("Value") != nullptr)
        {
            Fail(QStringLiteral("Value: \"%1\" is no whole number")
                     .arg(QString::fromStdString(text)));
        }
        return value;
    }

    void NameInto(std::vector<std::string>& names)
    {
        names.push_back(Needed("Name"));
        EndItem();
    }

    CLabelFields Fields(bool (*isOne)(eLABEL_FIELD))
    {
        CLabelFields fields;
        for (std::size_t i = 0; i < kLabelFields; ++i)
        {
            const auto field = static_cast<eLABEL_FIELD>(i);
            const auto* const attribute =
                isOne(field) ? m_xml.Take(NLabelFields::NameOf(field)) : nullptr;
            if (attribute != nullptr)
            {
                fields.Set(field, attribute->text, attribute->place);
            }
        }
        return fields;
    }

    void Count(bool (CLabelListBuilder::*add)(t_TextPlace))
    {
        if (!(m_builder.*add)(m_xml.Place()))
        {
            m_xml.BreakOff();
        }
    }

    void EndItem()
    {
        Count(&CLabelListBuilder::AddItem);
        m_xml.EndLeaf();
    }

    void Fail(const QString& text)
    {
        m_reports.Error(m_xml.Place(), text);
        m_builder.Spoil();
    }

    void WarnOfSecond(const QString& what)
    {
        m_reports.Warning(m_xml.Place(), what + QStringLiteral(" stands here already; the first "
                                                               "counts"));
    }

    bool Refuse(t_TextPlace place, const QString& text) { return m_builder.Refuse(place, text); }

    CLabelXmlTokens m_xml;
    KW_LabelList& m_list;
    CLabelReports& m_reports;
    CLabelListBuilder m_builder;
    t_TextPlace m_place;       ///< of the message
    CLabelListSignal m_signal; ///< the one that is open
    KW_LabelSignalDetails m_details;
    KW_LabelAttributes* m_attributes = nullptr; ///< of what is open
};
} // namespace

bool NLabelFiles::ReadXml(const QByteArray& text, KW_LabelList& list, CLabelReports& reports,
                          const KW_LabelReadOptions& options)
{
    const std::string_view bytes(text.constData(), static_cast<std::size_t>(text.size()));
    if (const auto place = NLabelTexts::FindUnholdable(bytes))
    {
        reports.Error(*place, NLabelHead::NotText());
        return false;
    }
    if (KW_HasLongXmlTag(text, NLabelBounds::kMaxXmlAttributes))
    {
        reports.Error({}, QStringLiteral("an element has more than %1 attributes")
                              .arg(NLabelBounds::kMaxXmlAttributes));
        return false;
    }
    return CLabelXmlReader(text, list, reports, options).Read();
}
