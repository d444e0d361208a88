// SPDX-License-Identifier: MIT
#include "LabelList/DbcWriter.h"

#include "LabelList/DbcDraft.h"
#include "LabelList/DbcLexer.h"
#include "LabelList/DbcNames.h"
#include "LabelList/DbcOrder.h"
#include "LabelList/DbcText.h"
#include "LabelList/LabelFiles.h"

#include <algorithm>
#include <limits>
#include <unordered_set>

namespace
{
/** Whether a text is one statement, so that it does not spoil those behind it. */
bool IsStatement(const std::string& text)
{
    CDbcLexer lexer(text);
    const bool isBlock = NDbcOrder::KeywordOf(text) == "BO_" || NDbcOrder::KeywordOf(text) == "BS_";
    const bool isWord = lexer.Take().kind == e_DbcToken::Word;
    bool isEnded = isBlock;
    while (isWord && lexer.Peek().kind != e_DbcToken::End)
    {
        const t_DbcToken token = lexer.Take();
        if (token.kind == e_DbcToken::OpenText || (isBlock && token.IsSign(';')))
        {
            return false;
        }
        isEnded = isBlock || token.IsSign(';');
        if (isEnded && !isBlock && lexer.Peek().kind != e_DbcToken::End)
        {
            return false;
        }
    }
    return isWord && isEnded;
}

bool IsSinglePage(const KW_LabelSignalDetails& details)
{
    return details.selectedBy.size() == 1 &&
           details.selectedBy.front().first == details.selectedBy.front().last;
}
} // namespace

CDbcWriter::CDbcWriter(const KW_LabelList& list, CLabelReports& reports)
    : m_list(list), m_reports(reports), m_definitions(list.database.attributeDefinitions)
{
}

const std::string& CDbcWriter::Write()
{
    Prepare();
    WriteHead();
    using t_Section = void (CDbcWriter::*)();
    const std::pair<std::string_view, t_Section> sections[] = {
        {"VAL_TABLE_", &CDbcWriter::WriteValueTables},
        {"BO_", &CDbcWriter::WriteMessages},
        {"BO_TX_BU_", &CDbcWriter::WriteSenders},
        {"CM_", &CDbcWriter::WriteComments},
        {"BA_DEF_", &CDbcWriter::WriteDefinitions},
        {"BA_DEF_REL_", &CDbcWriter::WriteRelationDefinitions},
        {"BA_DEF_DEF_", &CDbcWriter::WriteDefaultValues},
        {"BA_DEF_DEF_REL_", &CDbcWriter::WriteRelationDefaults},
        {"BA_", &CDbcWriter::WriteAttributes},
        {"VAL_", &CDbcWriter::WriteLabels},
        {"SIG_VALTYPE_", &CDbcWriter::WriteValueTypes},
        {"SG_MUL_VAL_", &CDbcWriter::WritePages},
    };
    for (const auto& [keyword, write] : sections)
    {
        const int rank = NDbcOrder::RankOf(keyword);
        WriteOthersBefore(rank);
        (this->*write)();
        WriteOthersBefore(rank + 1);
    }
    WriteOthersBefore(std::numeric_limits<int>::max());
    return m_text;
}

void CDbcWriter::Prepare()
{
    PrepareNodes();
    PrepareMessages();
    CDbcFields::t_Used used = CDbcFields::UsedBy(m_list);
    for (std::size_t i = 0; i < m_nodes.size(); ++i)
    {
        used[CDbcFields::NodeName] |= m_nodes[i] != m_list.database.nodes[i].name;
    }
    for (const t_Message& message : m_messages)
    {
        used[CDbcFields::MessageName] |= message.name != message.entry->message.getName();
        for (const t_Signal& signal : message.all)
        {
            used[CDbcFields::SignalName] |= signal.name != signal.signal->getName();
        }
    }
    CDbcFields::Define(used, m_definitions);
    const CDbcFields fields(m_definitions);
    for (t_Message& message : m_messages)
    {
        const KW_LabelEntry& entry = *message.entry;
        message.attributes = fields.Attributes(entry.message, entry.details);
        if (message.name != entry.message.getName())
        {
            CDbcFields::PutText(CDbcFields::MessageName, entry.message.getName(),
                                message.attributes);
        }
        WarnOfUnnamed(message);
    }
    for (const std::string& statement : m_list.database.otherStatements)
    {
        if (IsStatement(statement))
        {
            m_others.push_back(statement);
        }
        else
        {
            Warn(QString::fromLatin1("no statement of CAN databases, left out: %1")
                     .arg(QuotedName(statement)));
        }
    }
    NDbcOrder::Arrange(m_others);
}

void CDbcWriter::PrepareNodes()
{
    std::vector<NDbcNames::t_Named> named;
    for (const KW_LabelNode& node : m_list.database.nodes)
    {
        named.push_back({node.name, node.shortName});
    }
    m_nodes = NDbcNames::InFile(named);
    for (std::size_t i = 0; i < m_nodes.size(); ++i)
    {
        m_nodeInFile.emplace(m_list.database.nodes[i].name, m_nodes[i]);
    }
}

void CDbcWriter::PrepareMessages()
{
    std::vector<NDbcNames::t_Named> named;
    for (const KW_LabelEntry& entry : m_list.messages)
    {
        named.push_back({entry.message.getName(), entry.details.shortName});
    }
    auto inFile = NDbcNames::InFile(named);
    std::unordered_set<UINT32> numbers;
    m_messages.reserve(inFile.size());
    for (std::size_t i = 0; i < inFile.size(); ++i)
    {
        t_Message message;
        message.entry = &m_list.messages[i];
        message.name = std::move(inFile[i]);
        const CLabelListMessage& known = message.entry->message;
        message.number = known.getIdentifierFormat() == "29"
                             ? known.getIdentifier() | NDbcDraft::kExtended
                             : known.getIdentifier();
        message.isNamed = numbers.insert(message.number).second;
        PrepareSignals(message);
        PrepareMultiplexing(message);
        m_messages.push_back(std::move(message));
    }
}

void CDbcWriter::PrepareSignals(t_Message& message)
{
    const KW_LabelEntry& entry = *message.entry;
    std::vector<NDbcNames::t_Named> named;
    for (const KW_LabelSignal& known : KW_GetSignals(entry))
    {
        t_Signal signal;
        signal.signal = known.signal;
        signal.details = known.details;
        named.push_back({signal.signal->getName(), signal.details->shortName});
        message.all.push_back(std::move(signal));
    }
    auto inFile = NDbcNames::InFile(named);
    std::unordered_set<std::string_view> seen;
    for (std::size_t i = 0; i < inFile.size(); ++i)
    {
        message.all[i].name = std::move(inFile[i]);
        message.all[i].isNamed = message.isNamed && seen.insert(message.all[i].name).second;
    }
}

/** Marks name no multiplexor: they are about the first that is always there. */
void CDbcWriter::PrepareMultiplexing(t_Message& message)
{
    const bool isMultiplexed = std::any_of(message.all.begin(), message.all.end(),
                                           [](const t_Signal& signal) {
                                               return signal.details->isMultiplexor ||
                                                      !signal.details->multiplexor.empty();
                                           });
    if (!isMultiplexed)
    {
        return;
    }
    std::unordered_map<std::string_view, std::size_t> places;
    for (std::size_t i = 0; i < message.all.size(); ++i)
    {
        places.emplace(message.all[i].signal->getName(), i);
        message.all[i].isMultiplexor = message.all[i].details->isMultiplexor;
    }
    for (t_Signal& signal : message.all)
    {
        SelectSignal(message, signal, places);
    }
    const auto root = std::find_if(
        message.all.begin(), message.all.end(),
        [](const auto& signal) { return signal.isMultiplexor && signal.multiplexor == nullptr; });
    const t_Signal* const first = root != message.all.end() ? &*root : nullptr;
    for (t_Signal& signal : message.all)
    {
        const bool isMarked = signal.multiplexor == nullptr ||
                              (signal.multiplexor == first && IsSinglePage(*signal.details));
        message.isExtended = message.isExtended || !isMarked;
        if (!isMarked && !signal.isNamed)
        {
            Warn(QString::fromLatin1(
                     "message %1, signal %2: when it is there is not kept, as another "
                     "has its name or number")
                     .arg(QuotedName(message.name), QuotedName(signal.name)));
        }
    }
}

void CDbcWriter::SelectSignal(t_Message& message, t_Signal& signal,
                              const std::unordered_map<std::string_view, std::size_t>& places)
{
    const std::string& name = signal.details->multiplexor;
    const auto found = name.empty() ? places.end() : places.find(name);
    const bool isThere = found != places.end() && &message.all[found->second] != &signal &&
                         !signal.details->selectedBy.empty();
    if (isThere)
    {
        signal.multiplexor = &message.all[found->second];
        message.all[found->second].isMultiplexor = true;
    }
    else if (!name.empty())
    {
        Warn(QString::fromLatin1("message %1, signal %2: nothing in the message selects it; it is "
                                 "written as always there")
                 .arg(QuotedName(message.name), QuotedName(signal.name)));
    }
}

void CDbcWriter::WarnOfUnnamed(const t_Message& message)
{
    const KW_LabelMessageDetails& details = message.entry->details;
    const bool hasMore =
        !message.attributes.empty() || !details.comment.empty() || details.senders.size() > 1;
    if (!message.isNamed && hasMore)
    {
        Warn(QString::fromLatin1(
                 "message %1: its comment and attributes are not kept, as another has "
                 "its identifier")
                 .arg(QuotedName(message.name)));
    }
    for (const t_Signal& signal : message.all)
    {
        const auto type = signal.signal->getValueType();
        const bool isFloating = type == eKW_SIGNAL_TRANSLATION_VALUE_TYPE_FLOAT ||
                                type == eKW_SIGNAL_TRANSLATION_VALUE_TYPE_DOUBLE;
        const bool hasLabels =
            !signal.signal->getSignalEnumValues().empty() || !signal.details->furtherLabels.empty();
        const bool isMore = isFloating || hasLabels || !signal.details->comment.empty() ||
                            !AttributesOf(signal).empty();
        if (!signal.isNamed && isMore)
        {
            Warn(QString::fromLatin1(
                     "message %1, signal %2: its comment, attributes, labels and type "
                     "are not kept, as another has its name or number")
                     .arg(QuotedName(message.name), QuotedName(signal.name)));
        }
    }
}

KW_LabelAttributes CDbcWriter::AttributesOf(const t_Signal& signal) const
{
    KW_LabelAttributes attributes = signal.details->attributes;
    if (signal.name != signal.signal->getName())
    {
        CDbcFields::PutText(CDbcFields::SignalName, signal.signal->getName(), attributes);
    }
    return attributes;
}

std::string CDbcWriter::ObjectOf(const t_Message& message)
{
    std::string object("BO_ ");
    object += std::to_string(message.number);
    return object += ' ';
}

std::string CDbcWriter::ObjectOf(const t_Message& message, const t_Signal& signal)
{
    std::string object("SG_ ");
    object += std::to_string(message.number);
    object += ' ';
    object += signal.name;
    return object += ' ';
}

std::string CDbcWriter::NodeInFile(const std::string& name)
{
    const auto found = m_nodeInFile.find(name);
    return found != m_nodeInFile.end() ? found->second : Listed(name);
}

/** A name that a reader takes as one, which nothing stands for elsewhere. */
std::string CDbcWriter::Listed(const std::string& name)
{
    CDbcLexer lexer(name);
    const bool isOne =
        CDbcLexer::StartsName(lexer.Peek()) && lexer.TakeName().size() == name.size();
    if (isOne)
    {
        return name;
    }
    const NDbcNames::t_Named named[] = {{name, {}}};
    std::string listed = NDbcNames::InFile(named).front();
    Warn(QString::fromLatin1("name %1 is written as %2").arg(QuotedName(name), QuotedName(listed)));
    return listed;
}

/** In the encoding that the list came in, unless that lacks a character or what is written would be
    taken for the other. */
QByteArray NLabelFiles::WriteDbc(const KW_LabelList& list, CLabelReports& reports)
{
    CDbcWriter writer(list, reports);
    const std::string& text = writer.Write();
    const auto bytesOf = [](const std::string& bytes)
    { return QByteArray(bytes.data(), static_cast<int>(bytes.size())); };
    const bool isAscii =
        std::none_of(text.begin(), text.end(), [](char c) { return static_cast<UINT8>(c) > 127; });
    std::string bytes;
    if (isAscii)
    {
        return bytesOf(text);
    }
    if (!list.database.isUtf8 && NDbcText::ToWindows1252(text, bytes) && !NDbcText::IsUtf8(bytes))
    {
        return bytesOf(bytes);
    }
    if (!list.database.isUtf8)
    {
        reports.Warning({},
                        QString::fromLatin1("written as UTF-8: Windows-1252 lacks a character, or "
                                            "could not be told from it"));
    }
    const QByteArray written = bytesOf(text);
    return NDbcText::IsUtf8(text) ? written : QString::fromUtf8(written).toUtf8();
}
