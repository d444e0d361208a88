// SPDX-License-Identifier: MIT
#include "LabelList/DbcLexer.h"
#include "LabelList/DbcNames.h"
#include "LabelList/DbcOrder.h"
#include "LabelList/DbcText.h"
#include "LabelList/DbcWriter.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>
#include <unordered_map>

namespace
{
/** What tools tell each other that they may use. */
constexpr std::string_view kSymbols[] = {
    "NS_DESC_",     "CM_",
    "BA_DEF_",      "BA_",
    "VAL_",         "CAT_DEF_",
    "CAT_",         "FILTER",
    "BA_DEF_DEF_",  "EV_DATA_",
    "ENVVAR_DATA_", "SGTYPE_",
    "SGTYPE_VAL_",  "BA_DEF_SGTYPE_",
    "BA_SGTYPE_",   "SIG_TYPE_REF_",
    "VAL_TABLE_",   "SIG_GROUP_",
    "SIG_VALTYPE_", "SIGTYPE_VALTYPE_",
    "BO_TX_BU_",    "BA_DEF_REL_",
    "BA_REL_",      "BA_DEF_DEF_REL_",
    "BU_SG_REL_",   "BU_EV_REL_",
    "BU_BO_REL_",   "SG_MUL_VAL_",
};

/** The number that a label's raw value is in the file: of signed signals with its sign. */
std::string LabelValue(const CLabelListSignal& signal, UINT64 raw)
{
    const UINT32 bits = signal.getBitLength();
    const bool isSigned = signal.getValueType() == eKW_SIGNAL_TRANSLATION_VALUE_TYPE_SIGNED_INT;
    if (isSigned && bits >= 1 && bits < 64 && raw >> (bits - 1) == 1)
    {
        std::string value(1, '-');
        return value += std::to_string((UINT64{1} << bits) - raw);
    }
    return isSigned ? std::to_string(static_cast<INT64>(raw)) : std::to_string(raw);
}

/** The same of those that stand beside: values that fit into the signal's bits are raw values,
    others are what they are. */
std::string FurtherValue(const CLabelListSignal& signal, INT64 value)
{
    constexpr INT64 kHighest = 0xffffffffU;
    const UINT32 bits = signal.getBitLength();
    const auto type = signal.getValueType();
    const bool isFloating = type == eKW_SIGNAL_TRANSLATION_VALUE_TYPE_FLOAT ||
                            type == eKW_SIGNAL_TRANSLATION_VALUE_TYPE_DOUBLE;
    const bool isRaw =
        !isFloating &&
        (bits == 64 || (value > kHighest && bits < 64 && static_cast<UINT64>(value) >> bits == 0));
    return isRaw ? LabelValue(signal, static_cast<UINT64>(value)) : std::to_string(value);
}

/** Whether a definition's type can stand before a semicolon. */
bool IsType(const std::string& type)
{
    CDbcLexer lexer(type);
    bool isType = lexer.Take().kind == e_DbcToken::Word;
    while (isType && lexer.Peek().kind != e_DbcToken::End)
    {
        const t_DbcToken token = lexer.Take();
        isType = token.kind != e_DbcToken::OpenText && !token.startsLine && !token.IsSign(';');
    }
    return isType;
}

bool IsNumber(const std::string& text)
{
    CDbcLexer lexer(text);
    return lexer.Take().kind == e_DbcToken::Number && lexer.Peek().kind == e_DbcToken::End;
}
} // namespace

void CDbcWriter::WriteHead()
{
    m_text += "VERSION ";
    NDbcText::AppendQuoted(m_text, m_list.database.version);
    m_text += "\n\nNS_ :\n";
    for (const std::string_view symbol : kSymbols)
    {
        m_text += '\t';
        m_text += symbol;
        m_text += '\n';
    }
    m_text += '\n';
    const bool hasTiming = std::any_of(m_others.begin(), m_others.end(),
                                       [](const std::string& statement)
                                       { return NDbcOrder::KeywordOf(statement) == "BS_"; });
    m_text += hasTiming ? "" : "BS_:\n";
    WriteOthersBefore(NDbcOrder::RankOf("BU_"));
    m_text += "\nBU_:";
    for (const std::string& node : m_nodes)
    {
        m_text += ' ' + node;
    }
    m_text += "\n\n";
}

void CDbcWriter::WriteValueTables()
{
    for (const KW_ValueTable& table : m_list.database.valueTables)
    {
        m_text += "VAL_TABLE_ ";
        m_text += Listed(table.name);
        for (const auto& [value, label] : table.labels)
        {
            m_text += ' ' + std::to_string(value) + ' ';
            NDbcText::AppendQuoted(m_text, label);
        }
        m_text += " ;\n";
    }
    m_text += m_list.database.valueTables.empty() ? "" : "\n";
}

void CDbcWriter::WriteMessages()
{
    for (const t_Message& message : m_messages)
    {
        const auto& senders = message.entry->details.senders;
        m_text += ObjectOf(message) + message.name + ": " +
                  std::to_string(message.entry->message.getLength()) + ' ';
        WriteNames(std::span(senders).first(std::min<std::size_t>(senders.size(), 1)));
        m_text += '\n';
        for (const t_Signal& signal : message.all)
        {
            WriteSignal(signal);
        }
        m_text += '\n';
    }
}

void CDbcWriter::WriteSignal(const t_Signal& signal)
{
    const CLabelListSignal& known = *signal.signal;
    const auto type = known.getValueType();
    const bool isUnsigned = type == eKW_SIGNAL_TRANSLATION_VALUE_TYPE_UNSIGNED_INT ||
                            type == eKW_SIGNAL_TRANSLATION_VALUE_TYPE_ENUM;
    m_text += " SG_ " + signal.name;
    if (signal.multiplexor != nullptr)
    {
        m_text += " m";
        m_text += std::to_string(signal.details->selectedBy.front().first);
        m_text += signal.isMultiplexor ? "M" : "";
    }
    else if (signal.isMultiplexor)
    {
        m_text += " M";
    }
    m_text += " : ";
    m_text += std::to_string(known.getStartBit());
    m_text += '|';
    m_text += std::to_string(known.getBitLength());
    m_text += '@';
    m_text += known.getEndianness() == eKW_ENDIANNESS_BIG_ENDIAN ? '0' : '1';
    m_text += isUnsigned ? "+ (" : "- (";
    WriteNumber(known.getFactor());
    m_text += ',';
    WriteNumber(known.getOffset());
    m_text += ") [";
    WriteNumber(known.getMinimum());
    m_text += '|';
    WriteNumber(known.getMaximum());
    m_text += "] ";
    std::string unit = known.getUnit();
    std::replace(unit.begin(), unit.end(), '\n', ' ');
    NDbcText::AppendQuoted(m_text, unit);
    m_text += ' ';
    WriteNames(signal.details->receivers);
    m_text += '\n';
}

void CDbcWriter::WriteNames(std::span<const std::string> names)
{
    for (std::size_t i = 0; i < names.size(); ++i)
    {
        m_text += i > 0 ? "," : "";
        m_text += NodeInFile(names[i]);
    }
    if (names.empty())
    {
        m_text += NDbcNames::kNobody;
    }
}

/** The shortest text that reads back to the number. */
void CDbcWriter::WriteNumber(double number)
{
    if (!std::isfinite(number))
    {
        Warn(QString::fromLatin1("a number that is not finite is written as 0"));
        number = 0.0;
    }
    char text[32];
    m_text.append(std::begin(text), std::to_chars(std::begin(text), std::end(text), number).ptr);
}

void CDbcWriter::WriteSenders()
{
    for (const t_Message& message : m_messages)
    {
        const auto& senders = message.entry->details.senders;
        if (message.isNamed && senders.size() > 1)
        {
            m_text += "BO_TX_BU_ ";
            m_text += std::to_string(message.number);
            m_text += " : ";
            WriteNames(senders);
            m_text += ";\n";
        }
    }
}

void CDbcWriter::WriteComments()
{
    WriteComment({}, m_list.comment);
    for (std::size_t i = 0; i < m_nodes.size(); ++i)
    {
        WriteComment("BU_ " + m_nodes[i] + ' ', m_list.database.nodes[i].comment);
    }
    for (const t_Message& message : m_messages)
    {
        WriteComment(ObjectOf(message),
                     message.isNamed ? message.entry->details.comment : std::string());
        for (const t_Signal& signal : message.all)
        {
            WriteComment(ObjectOf(message, signal),
                         signal.isNamed ? signal.details->comment : std::string());
        }
    }
}

void CDbcWriter::WriteComment(const std::string& object, const std::string& comment)
{
    if (!comment.empty())
    {
        m_text += "CM_ " + object;
        NDbcText::AppendQuoted(m_text, comment);
        m_text += ";\n";
    }
}

void CDbcWriter::WriteDefinitions()
{
    WriteDefinitionsOf(false);
}

void CDbcWriter::WriteRelationDefinitions()
{
    WriteDefinitionsOf(true);
}

void CDbcWriter::WriteDefinitionsOf(bool isRelation)
{
    for (const KW_AttributeDefinition& definition : m_definitions)
    {
        if (NDbcOrder::IsRelation(definition) != isRelation)
        {
            continue;
        }
        m_text += isRelation ? "" : "BA_DEF_ ";
        m_text += definition.object + (definition.object.empty() ? "" : " ");
        NDbcText::AppendQuoted(m_text, definition.name);
        if (!IsType(definition.type))
        {
            Warn(
                QString::fromLatin1("attribute %1: its type is no type of CAN databases; STRING is "
                                    "written")
                    .arg(QString::fromStdString(definition.name)));
        }
        m_text += ' ' + (IsType(definition.type) ? definition.type : std::string("STRING")) + ";\n";
    }
}

void CDbcWriter::WriteDefaultValues()
{
    WriteDefaultValuesOf(false);
}

void CDbcWriter::WriteRelationDefaults()
{
    WriteDefaultValuesOf(true);
}

/** A default names no object: it is for all attributes of its name, and stands where the first of
    them does, which it becomes the default of when it is read. */
void CDbcWriter::WriteDefaultValuesOf(bool isRelation)
{
    std::unordered_map<std::string_view, const KW_LabelAttribute*> defaults;
    for (const KW_AttributeDefinition& definition : m_definitions)
    {
        if (NDbcOrder::IsRelation(definition) == isRelation && definition.defaultValue)
        {
            defaults.emplace(definition.name, &*definition.defaultValue);
        }
    }
    for (const KW_AttributeDefinition& definition : m_definitions)
    {
        const auto found = NDbcOrder::IsRelation(definition) == isRelation
                               ? defaults.find(definition.name)
                               : defaults.end();
        if (found != defaults.end())
        {
            m_text += isRelation ? "BA_DEF_DEF_REL_ " : "BA_DEF_DEF_ ";
            NDbcText::AppendQuoted(m_text, definition.name);
            m_text += ' ';
            WriteValue(*found->second);
            m_text += ";\n";
            defaults.erase(found);
        }
    }
}

void CDbcWriter::WriteAttributes()
{
    KW_LabelAttributes own = m_list.database.attributes;
    if (!m_list.name.empty())
    {
        CDbcFields::PutText(CDbcFields::ListName, m_list.name, own);
    }
    WriteAttributesOf({}, own);
    for (std::size_t i = 0; i < m_nodes.size(); ++i)
    {
        const KW_LabelNode& node = m_list.database.nodes[i];
        KW_LabelAttributes attributes = node.attributes;
        if (m_nodes[i] != node.name)
        {
            CDbcFields::PutText(CDbcFields::NodeName, node.name, attributes);
        }
        WriteAttributesOf("BU_ " + m_nodes[i] + ' ', attributes);
    }
    for (const t_Message& message : m_messages)
    {
        WriteAttributesOf(ObjectOf(message),
                          message.isNamed ? message.attributes : KW_LabelAttributes());
        for (const t_Signal& signal : message.all)
        {
            WriteAttributesOf(ObjectOf(message, signal),
                              signal.isNamed ? AttributesOf(signal) : KW_LabelAttributes());
        }
    }
}

void CDbcWriter::WriteAttributesOf(const std::string& object, const KW_LabelAttributes& attributes)
{
    for (const auto& [name, value] : attributes)
    {
        m_text += "BA_ ";
        NDbcText::AppendQuoted(m_text, name);
        m_text += ' ' + object;
        WriteValue(value);
        m_text += ";\n";
    }
}

void CDbcWriter::WriteValue(const KW_LabelAttribute& value)
{
    if (value.isText || !IsNumber(value.value))
    {
        NDbcText::AppendQuoted(m_text, value.value);
    }
    else
    {
        m_text += value.value;
    }
}

void CDbcWriter::WriteLabels()
{
    for (const t_Message& message : m_messages)
    {
        for (const t_Signal& signal : message.all)
        {
            const auto& labels = signal.signal->getSignalEnumValues();
            const auto& further = signal.details->furtherLabels;
            if (!signal.isNamed || (labels.empty() && further.empty()))
            {
                continue;
            }
            m_text += "VAL_ ";
            m_text += std::to_string(message.number);
            m_text += ' ' + signal.name;
            for (const auto& [raw, label] : labels)
            {
                m_text += ' ' + LabelValue(*signal.signal, raw) + ' ';
                NDbcText::AppendQuoted(m_text, label.toStdString());
            }
            for (const auto& [value, label] : further)
            {
                m_text += ' ' + FurtherValue(*signal.signal, value) + ' ';
                NDbcText::AppendQuoted(m_text, label);
            }
            m_text += " ;\n";
        }
    }
}

void CDbcWriter::WriteValueTypes()
{
    for (const t_Message& message : m_messages)
    {
        for (const t_Signal& signal : message.all)
        {
            const auto type = signal.signal->getValueType();
            const bool isDouble = type == eKW_SIGNAL_TRANSLATION_VALUE_TYPE_DOUBLE;
            if (signal.isNamed && (isDouble || type == eKW_SIGNAL_TRANSLATION_VALUE_TYPE_FLOAT))
            {
                m_text += "SIG_VALTYPE_ ";
                m_text += std::to_string(message.number);
                m_text += ' ' + signal.name + (isDouble ? " : 2;\n" : " : 1;\n");
            }
        }
    }
}

void CDbcWriter::WritePages()
{
    for (const t_Message& message : m_messages)
    {
        for (const t_Signal& signal : message.all)
        {
            if (!message.isExtended || !signal.isNamed || signal.multiplexor == nullptr)
            {
                continue;
            }
            m_text += "SG_MUL_VAL_ ";
            m_text += std::to_string(message.number);
            m_text += ' ' + signal.name + ' ' + signal.multiplexor->name;
            const char* between = " ";
            for (const KW_RawRange& range : signal.details->selectedBy)
            {
                m_text += between;
                m_text += std::to_string(range.first);
                m_text += '-';
                m_text += std::to_string(range.last);
                between = ", ";
            }
            m_text += ";\n";
        }
    }
}

void CDbcWriter::WriteOthersBefore(int rank)
{
    for (; m_nextOther < m_others.size(); ++m_nextOther)
    {
        const std::string& statement = m_others[m_nextOther];
        if (NDbcOrder::RankOf(NDbcOrder::KeywordOf(statement)) >= rank)
        {
            return;
        }
        WriteOther(statement);
    }
}

/** Signals without a message stand in lines of their own, as those of messages do. */
void CDbcWriter::WriteOther(const std::string& statement)
{
    CDbcLexer lexer(statement);
    const char* at = statement.data();
    const char* const end = at + statement.size();
    const bool isBlock = lexer.Take().text == "BO_";
    while (isBlock && lexer.Peek().kind != e_DbcToken::End)
    {
        const t_DbcToken token = lexer.Take();
        if (token.IsWord("SG_") && token.begin[-1] == ' ')
        {
            m_text.append(at, token.begin - 1);
            m_text += "\n ";
            at = token.begin;
        }
    }
    m_text.append(at, end);
    m_text += isBlock ? "\n\n" : "\n";
}
