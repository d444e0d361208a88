// SPDX-License-Identifier: MIT
#include "LabelList/LabelConditions.h"
#include "LabelList/LabelCsvColumns.h"
#include "LabelList/LabelFiles.h"
#include "LabelList/LabelHead.h"
#include "LabelList/LabelTexts.h"

#include <QStringList>
#include <algorithm>

namespace
{
using NLabelCsv::eCOLUMN;
using t_CsvLine = std::array<std::string, NLabelCsv::kColumns>;

std::string& CellOf(t_CsvLine& line, eCOLUMN column)
{
    return line[static_cast<std::size_t>(column)];
}

t_CsvLine LineOf(const t_LabelFieldTexts& texts)
{
    t_CsvLine line;
    for (std::size_t i = 0; i < line.size(); ++i)
    {
        const eLABEL_FIELD field = NLabelCsv::kColumn[i].field;
        line[i] =
            field == eLABEL_FIELD::Count ? std::string() : texts[static_cast<std::size_t>(field)];
    }
    return line;
}

/** CSV text, and what of a list it does not hold. */
class CCsvText
{
public:
    explicit CCsvText(CLabelReports& reports) : m_reports(reports) {}

    template <typename T>
    void Line(const T& cells)
    {
        const char* separator = "";
        for (const auto& cell : cells)
        {
            m_text += separator;
            AppendQuoted(NLabelTexts::Holdable(cell, m_replaced));
            separator = ",";
        }
        m_text += '\n';
    }

    void Message(const KW_LabelEntry& entry)
    {
        const std::string& name = entry.message.getName();
        t_CsvLine line = LineOf(NLabelFields::TextsOf(entry));
        CellOf(line, eCOLUMN::Message) = name;
        CellOf(line, eCOLUMN::Senders) = Names(entry.details.senders);
        Line(line);
        m_attributes += entry.details.attributes.size();
        for (const auto& [signal, details] : KW_GetSignals(entry))
        {
            Signal(name, *signal, *details);
        }
    }

    void Finish(const KW_LabelList& list)
    {
        const KW_CanDatabase& database = list.database;
        m_attributes += database.attributes.size();
        for (const KW_LabelNode& node : database.nodes)
        {
            m_attributes += node.attributes.size();
        }
        const std::pair<const char*, std::size_t> notHeld[] = {
            {"attributes", m_attributes},
            {"nodes", database.nodes.size()},
            {"value tables", database.valueTables.size()},
            {"definitions of attributes", database.attributeDefinitions.size()},
            {"other statements", database.otherStatements.size()},
            {"versions of databases", database.version.empty() ? 0 : 1},
            {"empty names of nodes", m_emptyNames},
            {"odd conditions", m_conditions}};
        QStringList names;
        for (const auto& [what, count] : notHeld)
        {
            if (count > 0)
            {
                names << QStringLiteral("%1 (%2)").arg(QLatin1String(what)).arg(count);
            }
        }
        if (!names.isEmpty())
        {
            m_reports.Warning({}, QStringLiteral("CSV does not hold ") +
                                      names.join(QStringLiteral(", ")));
        }
        NLabelHead::WarnOfReplaced(m_replaced, m_reports);
    }

    const QByteArray& Text() const { return m_text; }

private:
    void Signal(const std::string& message, const CLabelListSignal& signal,
                const KW_LabelSignalDetails& details)
    {
        t_CsvLine line = LineOf(NLabelFields::TextsOf(signal, details));
        CellOf(line, eCOLUMN::Message) = message;
        CellOf(line, eCOLUMN::Signal) = signal.getName();
        CellOf(line, eCOLUMN::Receivers) = Names(details.receivers);
        CellOf(line, eCOLUMN::Condition) = Condition(details);
        std::vector<std::string> labels;
        for (const auto& [value, text] : NLabelFields::LabelsOf(signal, details))
        {
            labels.push_back(std::to_string(value) + '=' + std::string(text));
        }
        CellOf(line, eCOLUMN::Labels) = NLabelTexts::Join(labels);
        m_attributes += details.attributes.size();
        Line(line);
    }

    std::string Names(std::vector<std::string> names)
    {
        const auto end = std::remove(names.begin(), names.end(), std::string());
        m_emptyNames += static_cast<std::size_t>(names.end() - end);
        names.erase(end, names.end());
        return NLabelTexts::Join(names);
    }

    /** A condition that would read differently is worse than none. */
    std::string Condition(const KW_LabelSignalDetails& details)
    {
        const QString text = NLabelConditions::TextOf(details);
        KW_LabelSignalDetails read;
        const bool isHeld = NLabelConditions::Read(text, read) &&
                            read.multiplexor == details.multiplexor &&
                            std::equal(read.selectedBy.begin(), read.selectedBy.end(),
                                       details.selectedBy.begin(), details.selectedBy.end(),
                                       [](const KW_RawRange& a, const KW_RawRange& b)
                                       { return a.first == b.first && a.last == b.last; });
        m_conditions += isHeld ? 0 : 1;
        return isHeld ? text.toStdString() : std::string();
    }

    void AppendQuoted(const std::string& cell)
    {
        if (cell.find_first_of(",;\"\r\n") == std::string::npos)
        {
            m_text += cell.c_str();
            return;
        }
        m_text += '"';
        for (const char c : cell)
        {
            m_text += c == '"' ? "\"" : "";
            m_text += c;
        }
        m_text += '"';
    }

    CLabelReports& m_reports;
    QByteArray m_text;
    std::size_t m_replaced = 0;
    std::size_t m_attributes = 0;
    std::size_t m_emptyNames = 0;
    std::size_t m_conditions = 0;
};
} // namespace

QByteArray NLabelFiles::WriteCsv(const KW_LabelList& list, CLabelReports& reports)
{
    CCsvText csv(reports);
    const QString protocol =
        GetStaticEnumNameInfo<KW_ZEL_SERIALBUS_PROTOCOL>().GetSerialName(list.protocol);
    csv.Line(
        std::array<std::string, 4>{std::string(NLabelCsv::kFirstCell) + ' ' + NLabelHead::kVersion,
                                   protocol.toStdString(), list.name, list.comment});
    std::array<const char*, NLabelCsv::kColumns> names{};
    for (std::size_t i = 0; i < names.size(); ++i)
    {
        names[i] = NLabelCsv::kColumn[i].name;
    }
    csv.Line(names);
    for (const KW_LabelEntry& entry : list.messages)
    {
        csv.Message(entry);
    }
    csv.Finish(list);
    return csv.Text();
}
