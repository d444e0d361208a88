// SPDX-License-Identifier: MIT
#include "LabelList/DbcDraft.h"
#include "LabelList/DbcFields.h"
#include "LabelList/DbcNames.h"
#include "LabelList/DbcOrder.h"
#include "LabelList/DbcText.h"
#include "LabelList/LabelChecks.h"
#include "LabelList/LabelConditions.h"

#include <QString>
#include <algorithm>
#include <unordered_set>

namespace
{
constexpr UINT32 kMostBits = 64;
constexpr UINT64 kLastInTable = 0xffffffffU; ///< highest raw value that CLabelListSignal labels

UINT64 MaskOf(UINT32 bits)
{
    return bits < kMostBits ? (UINT64{1} << bits) - 1 : ~UINT64{0};
}

bool IsFloating(const t_DbcSignal& signal)
{
    return signal.floatKind != 0;
}

/** The bits that a label's value is to the signal; nothing where it has too few. */
std::optional<UINT64> RawOf(const t_DbcSignal& signal, const t_DbcLabel& label)
{
    const UINT32 bits = std::min(signal.bitLength, kMostBits);
    const UINT64 mask = MaskOf(bits);
    const auto raw = static_cast<UINT64>(label.value);
    if (IsFloating(signal) || bits == 0)
    {
        return std::nullopt;
    }
    if (!signal.isSigned)
    {
        const bool isPositive = label.value >= 0 || label.isLarge;
        return isPositive && raw <= mask ? std::optional(raw) : std::nullopt;
    }
    const UINT64 upper = mask >> 1U;
    const bool fits = label.value >= 0 ? raw <= upper : ~raw <= upper;
    return fits && !label.isLarge ? std::optional(raw & mask) : std::nullopt;
}

KW_SIGNAL_TRANSLATION_VALUE_TYPE TypeOf(const t_DbcSignal& signal)
{
    if (IsFloating(signal))
    {
        return signal.floatKind == 1 ? eKW_SIGNAL_TRANSLATION_VALUE_TYPE_FLOAT
                                     : eKW_SIGNAL_TRANSLATION_VALUE_TYPE_DOUBLE;
    }
    if (signal.isSigned)
    {
        return eKW_SIGNAL_TRANSLATION_VALUE_TYPE_SIGNED_INT;
    }
    return signal.labels.empty() ? eKW_SIGNAL_TRANSLATION_VALUE_TYPE_UNSIGNED_INT
                                 : eKW_SIGNAL_TRANSLATION_VALUE_TYPE_ENUM;
}

/** Puts together what all statements said. */
class CAssembly
{
public:
    CAssembly(t_DbcDraft& draft, KW_LabelList& list, CLabelReports& reports)
        : m_draft(draft), m_list(list), m_reports(reports)
    {
    }

    void Assemble()
    {
        CompleteDefinitions();
        NameNodes();
        const CDbcFields fields(m_list.database.attributeDefinitions);
        m_list.messages.reserve(m_draft.messages.size());
        for (t_DbcMessage& message : m_draft.messages)
        {
            if (!message.isBad)
            {
                AddMessage(message, fields);
            }
        }
        ShortenMessages();
        m_list.name = CDbcFields::TakeText(CDbcFields::ListName, m_list.database.attributes);
        DefineFields();
        WarnOfNames();
        for (auto& [message, statement] : m_draft.dependents)
        {
            if (!m_draft.messages[message].isBad)
            {
                m_list.database.otherStatements.push_back(std::move(statement));
            }
        }
        NDbcOrder::Arrange(m_list.database.otherStatements);
        const auto placeOf = [this](int i) { return m_places[static_cast<std::size_t>(i)]; };
        NLabelChecks::CheckIdentifiers(m_list, placeOf, m_reports);
    }

private:
    std::string Name(std::string_view bytes) const
    {
        std::string name;
        if (m_draft.isUtf8)
        {
            name = bytes;
        }
        else
        {
            NDbcText::AppendWindows1252(name, bytes);
        }
        return name;
    }

    void Warn(t_TextPlace place, const QString& text) { m_reports.Warning(place, text); }

    /** Defaults go to every definition of their name; those of relations stand behind the others,
        as they will in the file that is written. */
    void CompleteDefinitions()
    {
        std::vector<KW_AttributeDefinition> ordered;
        std::unordered_set<std::string> names;
        for (const bool isRelation : {false, true})
        {
            for (KW_AttributeDefinition& definition : m_list.database.attributeDefinitions)
            {
                if (NDbcOrder::IsRelation(definition) == isRelation)
                {
                    Complete(definition, isRelation ? m_draft.relationDefaults : m_draft.defaults);
                    names.insert((isRelation ? "r" : " ") + definition.name);
                    ordered.push_back(std::move(definition));
                }
            }
        }
        m_list.database.attributeDefinitions = std::move(ordered);
        WarnOfUndefined(m_draft.defaults, " ", names);
        WarnOfUndefined(m_draft.relationDefaults, "r", names);
        for (const auto& [name, place] : m_draft.used)
        {
            if (names.count(" " + name) == 0)
            {
                Warn(place,
                     QString::fromLatin1("attribute %1 has no definition").arg(QuotedName(name)));
            }
        }
    }

    static void Complete(KW_AttributeDefinition& definition,
                         const std::map<std::string, t_DbcDefault>& defaults)
    {
        const auto found = defaults.find(definition.name);
        if (found != defaults.end())
        {
            definition.defaultValue = found->second.value;
        }
    }

    void WarnOfUndefined(const std::map<std::string, t_DbcDefault>& defaults, const char* kind,
                         const std::unordered_set<std::string>& names)
    {
        for (const auto& [name, value] : defaults)
        {
            if (names.count(kind + name) == 0)
            {
                Warn(value.place,
                     QString::fromLatin1(
                         "attribute %1 has a default but no definition; it is left out")
                         .arg(QuotedName(name)));
            }
        }
    }

    /** Gives one its long name, which leaves the attributes, and keeps the one that it had. */
    void TakeLongName(CDbcFields::e_Field field, KW_LabelAttributes& attributes, std::string& name,
                      std::string& shortName)
    {
        std::string longName = CDbcFields::TakeText(field, attributes);
        if (!longName.empty() && longName != name)
        {
            shortName = std::exchange(name, std::move(longName));
            m_used[field] = true;
        }
    }

    /** The name that the file will have, where it is another than the one that it has. */
    void Shorten(const char* what, t_TextPlace place, const std::string& name,
                 std::string& shortName, const std::string& inFile)
    {
        const std::string had = shortName.empty() ? name : shortName;
        if (had == inFile)
        {
            return;
        }
        shortName = inFile;
        if (NDbcNames::IsIdentifier(had))
        {
            ++m_longNames;
            m_firstLongName = m_longNames == 1 ? place : m_firstLongName;
            return;
        }
        Warn(place,
             QString::fromLatin1("%1 %2 is no identifier; it is written as %3, with its name in an "
                                 "attribute")
                 .arg(QLatin1String(what), QuotedName(had), QuotedName(inFile)));
    }

    void WarnOfNames()
    {
        if (m_longNames > 0)
        {
            Warn(m_firstLongName,
                 QString::fromLatin1(
                     "names of more than 32 characters: %1; they are written short, with "
                     "their names in an attribute")
                     .arg(m_longNames));
        }
    }

    void NameNodes()
    {
        auto& nodes = m_list.database.nodes;
        std::vector<NDbcNames::t_Named> names;
        std::vector<std::string> had;
        for (KW_LabelNode& node : nodes)
        {
            had.push_back(node.name);
            TakeLongName(CDbcFields::NodeName, node.attributes, node.name, node.shortName);
        }
        for (const KW_LabelNode& node : nodes)
        {
            names.push_back({node.name, node.shortName});
        }
        const auto inFile = NDbcNames::InFile(names);
        for (std::size_t i = 0; i < nodes.size(); ++i)
        {
            Shorten("node", {}, nodes[i].name, nodes[i].shortName, inFile[i]);
            if (nodes[i].name != had[i])
            {
                m_nodeNames.emplace(had[i], nodes[i].name);
            }
            m_used[CDbcFields::NodeName] |= !nodes[i].shortName.empty();
        }
    }

    void RenameNodes(std::vector<std::string>& names) const
    {
        if (m_nodeNames.empty())
        {
            return;
        }
        for (std::string& name : names)
        {
            const auto found = m_nodeNames.find(name);
            name = found != m_nodeNames.end() ? found->second : name;
        }
    }

    void AddMessage(t_DbcMessage& draft, const CDbcFields& fields)
    {
        KW_LabelEntry& entry = m_list.messages.emplace_back();
        entry.details = std::move(draft.details);
        fields.Take(entry.details, draft.length);
        RenameNodes(entry.details.senders);
        std::string name = Name(draft.name);
        TakeLongName(CDbcFields::MessageName, entry.details.attributes, name,
                     entry.details.shortName);
        const bool isExtended = (draft.number & NDbcDraft::kExtended) != 0;
        entry.message.setParameters(name, isExtended ? "29" : "11",
                                    draft.number & ~NDbcDraft::kExtended, draft.length);
        AddSignals(draft, entry);
        const auto placeOf = [&draft](int i)
        { return i < 0 ? draft.place : draft.signalList[static_cast<std::size_t>(i)].place; };
        draft.isBad = !NLabelChecks::Check(m_list.protocol, entry, placeOf, m_reports);
        if (draft.isBad)
        {
            m_list.messages.pop_back();
            return;
        }
        m_places.push_back(draft.place);
    }

    void AddSignals(t_DbcMessage& draft, KW_LabelEntry& entry)
    {
        std::vector<std::string> names;
        for (t_DbcSignal& signal : draft.signalList)
        {
            names.push_back(Name(signal.name));
            TakeLongName(CDbcFields::SignalName, signal.details.attributes, names.back(),
                         signal.details.shortName);
        }
        ShortenSignals(draft, names);
        SelectSignals(draft, names);
        for (std::size_t i = 0; i < names.size(); ++i)
        {
            t_DbcSignal& signal = draft.signalList[i];
            CLabelListSignal made(names[i], signal.startBit, signal.bitLength,
                                  signal.isBigEndian ? eKW_ENDIANNESS_BIG_ENDIAN
                                                     : eKW_ENDIANNESS_LITTLE_ENDIAN,
                                  TypeOf(signal), signal.factor, signal.offset, signal.minimum,
                                  signal.maximum, signal.unit);
            RenameNodes(signal.details.receivers);
            AddLabels(signal, made);
            KW_AddSignal(entry, made, std::move(signal.details));
        }
    }

    void ShortenSignals(t_DbcMessage& draft, const std::vector<std::string>& names)
    {
        std::vector<NDbcNames::t_Named> named;
        for (std::size_t i = 0; i < names.size(); ++i)
        {
            named.push_back({names[i], draft.signalList[i].details.shortName});
        }
        const auto inFile = NDbcNames::InFile(named);
        for (std::size_t i = 0; i < names.size(); ++i)
        {
            t_DbcSignal& signal = draft.signalList[i];
            Shorten("signal", signal.place, names[i], signal.details.shortName, inFile[i]);
            m_used[CDbcFields::SignalName] |= !signal.details.shortName.empty();
        }
    }

    void ShortenMessages()
    {
        std::vector<NDbcNames::t_Named> named;
        std::unordered_set<std::string> seen;
        for (const KW_LabelEntry& entry : m_list.messages)
        {
            named.push_back({entry.message.getName(), entry.details.shortName});
        }
        const auto inFile = NDbcNames::InFile(named);
        for (std::size_t i = 0; i < named.size(); ++i)
        {
            KW_LabelEntry& entry = m_list.messages[i];
            Shorten("message", m_places[i], entry.message.getName(), entry.details.shortName,
                    inFile[i]);
            m_used[CDbcFields::MessageName] |= !entry.details.shortName.empty();
            if (!seen.insert(entry.message.getName()).second)
            {
                Warn(m_places[i], QString::fromLatin1("another message has the name %1")
                                      .arg(QuotedName(entry.message.getName())));
            }
        }
    }

    /** Marks are about the message's one multiplexor, SG_MUL_VAL_ names it. */
    void SelectSignals(t_DbcMessage& draft, const std::vector<std::string>& names)
    {
        const auto isRoot = [](const t_DbcSignal& signal) {
            return signal.details.isMultiplexor && !signal.isMultiplexed &&
                   signal.multiplexor.empty();
        };
        auto& all = draft.signalList;
        const auto root = std::find_if(all.begin(), all.end(), isRoot);
        const bool isAmbiguous = root != all.end() && std::any_of(root + 1, all.end(), isRoot);
        for (t_DbcSignal& signal : all)
        {
            if (!signal.multiplexor.empty())
            {
                const auto place = NDbcDraft::FindSignal(draft, signal.multiplexor) - all.data();
                signal.details.multiplexor = names[static_cast<std::size_t>(place)];
                NLabelConditions::Arrange(signal.details.selectedBy);
            }
            else if (signal.isMultiplexed)
            {
                const std::string name =
                    root != all.end() ? names[static_cast<std::size_t>(root - all.begin())] : "";
                SelectByMark(signal, name, isAmbiguous);
            }
        }
    }

    void SelectByMark(t_DbcSignal& signal, const std::string& multiplexor, bool isAmbiguous)
    {
        const QString name = QuotedName(Name(signal.name));
        if (multiplexor.empty())
        {
            Warn(signal.place,
                 QString::fromLatin1("signal %1 is multiplexed, but the message has no "
                                     "multiplexor; it is taken as always there")
                     .arg(name));
            return;
        }
        if (isAmbiguous)
        {
            Warn(signal.place,
                 QString::fromLatin1("signal %1 is multiplexed, and the message has several "
                                     "multiplexors; %2 is taken")
                     .arg(name, QuotedName(multiplexor)));
        }
        signal.details.multiplexor = multiplexor;
        signal.details.selectedBy = {{signal.page, signal.page}};
    }

    /** Labels are filed under the bits of their values; what the signal can not have, or has above
        32 bits, goes beside. An unsigned value that has no room there would become a negative one,
        which the signal may well have. */
    void AddLabels(t_DbcSignal& signal, CLabelListSignal& made)
    {
        int large = 0;
        int foreign = 0;
        int doubled = 0;
        for (t_DbcLabel& label : signal.labels)
        {
            const auto raw = RawOf(signal, label);
            if (!raw && label.isLarge)
            {
                ++large;
                continue;
            }
            foreign += raw ? 0 : 1;
            if (raw && *raw <= kLastInTable)
            {
                const auto key = static_cast<UINT32>(*raw);
                doubled += made.getSignalEnumValues().count(key) != 0 ? 1 : 0;
                made.addSignalEnumValue({key, QByteArray::fromStdString(label.text)});
                continue;
            }
            const INT64 key = raw ? static_cast<INT64>(*raw) : label.value;
            const auto put = signal.details.furtherLabels.insert_or_assign(key, label.text);
            doubled += put.second ? 0 : 1;
        }
        WarnOfLabels(signal, large,
                     "labels of values above 9223372036854775807 that it can not have are left "
                     "out");
        WarnOfLabels(signal, foreign,
                     "labels of values that it can not have are kept, and never shown");
        WarnOfLabels(signal, doubled, "values with two labels, the last of which counts");
    }

    void WarnOfLabels(const t_DbcSignal& signal, int count, const char* what)
    {
        if (count > 0)
        {
            Warn(signal.place, QString::fromLatin1("signal %1: %2: %3")
                                   .arg(QuotedName(Name(signal.name)), QString::fromLatin1(what),
                                        QString::number(count)));
        }
    }

    void DefineFields()
    {
        CDbcFields::t_Used used = CDbcFields::UsedBy(m_list);
        for (const auto field :
             {CDbcFields::MessageName, CDbcFields::SignalName, CDbcFields::NodeName})
        {
            used[field] = m_used[field];
        }
        CDbcFields::Define(used, m_list.database.attributeDefinitions);
    }

    t_DbcDraft& m_draft;
    KW_LabelList& m_list;
    CLabelReports& m_reports;
    std::vector<t_TextPlace> m_places;                        ///< of the list's messages
    std::unordered_map<std::string, std::string> m_nodeNames; ///< by those in the file
    CDbcFields::t_Used m_used{};
    std::size_t m_longNames = 0;
    t_TextPlace m_firstLongName;
};
} // namespace

void NDbcDraft::Assemble(t_DbcDraft& draft, KW_LabelList& list, CLabelReports& reports)
{
    CAssembly(draft, list, reports).Assemble();
}
