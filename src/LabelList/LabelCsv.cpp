// SPDX-License-Identifier: MIT
#include "LabelList/LabelConditions.h"
#include "LabelList/LabelCsvColumns.h"
#include "LabelList/LabelCsvLines.h"
#include "LabelList/LabelFiles.h"
#include "LabelList/LabelHead.h"
#include "LabelList/LabelListBuilder.h"
#include "LabelList/LabelTexts.h"

#include <algorithm>
#include <utility>

namespace
{
using NLabelCsv::eCOLUMN;
using NLabelCsv::kColumn;
using NLabelCsv::kColumns;
using t_Cell = CLabelCsvLines::t_Cell;

/** Reads lines into a list: a line of a message, then the lines of its signals. */
class CLabelCsvReader
{
public:
    CLabelCsvReader(std::string_view text, KW_LabelList& list, CLabelReports& reports,
                    const KW_LabelReadOptions& options)
        : m_lines(text, reports), m_list(list), m_reports(reports),
          m_builder(list, reports, options)
    {
    }

    bool Read()
    {
        bool isGoing = Head() && Columns();
        while (isGoing && m_lines.Next())
        {
            TakeCells();
            isGoing = CheckWhole() && (IsSignal() ? Signal() : Message());
        }
        return !m_lines.IsBroken() && m_builder.Finish();
    }

private:
    bool Head()
    {
        const std::string cell = m_lines.Next() ? HeadCell(0).text : std::string();
        const std::string_view first = cell;
        const std::string_view mark = NLabelCsv::kFirstCell;
        if (first.substr(0, mark.size()) != mark)
        {
            return m_lines.IsBroken() ||
                   m_builder.Refuse({1, 1}, QStringLiteral("no label list: its first line begins "
                                                           "with \"LabelList 1.0\""));
        }
        QString error = NLabelHead::ReadVersion(NLabelTexts::Trimmed(first.substr(mark.size())));
        if (!error.isEmpty())
        {
            return m_builder.Refuse(HeadCell(0).place, error);
        }
        error = NLabelHead::ReadProtocol(NLabelTexts::Trimmed(HeadCell(1).text), m_list.protocol);
        if (!error.isEmpty())
        {
            return m_builder.Refuse(HeadCell(1).place, error);
        }
        m_list.name = HeadCell(2).text;
        m_list.comment = HeadCell(3).text;
        for (std::size_t i = 4; i < m_lines.Cells().size(); ++i)
        {
            WarnOfStray(m_lines.Cells()[i]);
        }
        return true;
    }

    /** A cell of the line; an empty one at its begin when it has fewer. */
    t_Cell HeadCell(std::size_t number) const
    {
        const auto& cells = m_lines.Cells();
        return number < cells.size() ? cells[number] : t_Cell{{}, m_lines.Place()};
    }

    bool Columns()
    {
        if (!m_lines.Next())
        {
            return m_lines.IsBroken() ||
                   m_builder.Refuse({}, QStringLiteral("a line with the names "
                                                       "of the columns is "
                                                       "missing"));
        }
        if (m_lines.IsOpen())
        {
            return m_builder.Refuse(m_lines.Place(),
                                    QStringLiteral("the file ends within the names of the columns: "
                                                   "it was cut off"));
        }
        for (const t_Cell& cell : m_lines.Cells())
        {
            if (!Column(cell))
            {
                return false;
            }
        }
        for (const auto& column : kColumn)
        {
            const bool isThere = m_isThere[static_cast<std::size_t>(&column - kColumn)];
            if (column.isNeeded && !isThere)
            {
                return m_builder.Refuse(
                    m_lines.Place(),
                    QStringLiteral("column %1 is missing").arg(QLatin1String(column.name)));
            }
        }
        return true;
    }

    bool Column(const t_Cell& cell)
    {
        const std::string_view name = NLabelTexts::Trimmed(cell.text);
        std::size_t number = 0;
        while (number < kColumns && name != kColumn[number].name)
        {
            ++number;
        }
        const QString shown = QString::fromStdString(cell.text);
        if (number < kColumns && std::exchange(m_isThere[number], true))
        {
            return m_builder.Refuse(cell.place,
                                    QStringLiteral("column %1 stands here twice").arg(shown));
        }
        m_columns.push_back({number, name.empty()});
        if (number == kColumns && !name.empty())
        {
            m_reports.Warning(
                cell.place, QStringLiteral("column %1 is not known here and left out").arg(shown));
        }
        return true;
    }

    void TakeCells()
    {
        m_cells.fill({});
        const auto& cells = m_lines.Cells();
        for (std::size_t i = 0; i < cells.size(); ++i)
        {
            const t_HeadOfColumn head =
                i < m_columns.size() ? m_columns[i] : t_HeadOfColumn{kColumns, true};
            if (head.number < kColumns)
            {
                m_cells[head.number] = cells[i];
            }
            else if (head.isNameless)
            {
                WarnOfStray(cells[i]);
            }
        }
    }

    /** What a failing transfer cuts off would be taken for defaults; programs that leave empty
       cells out at the end of a line write its end all the same. */
    bool CheckWhole()
    {
        const std::size_t cells = m_lines.Cells().size();
        return !m_lines.IsOpen() || cells >= m_columns.size() ||
               m_builder.Refuse(m_lines.Place(),
                                QStringLiteral("the file ends within a line, which has %1 of %2 "
                                               "cells: it was cut off")
                                    .arg(cells)
                                    .arg(m_columns.size()));
    }

    const t_Cell& Cell(eCOLUMN column) const { return m_cells[static_cast<std::size_t>(column)]; }

    bool IsSignal() const
    {
        return !Cell(eCOLUMN::Signal).text.empty() || !Cell(eCOLUMN::StartBit).text.empty() ||
               !Cell(eCOLUMN::BitLength).text.empty();
    }

    bool Message()
    {
        if (!m_builder.BeginMessage(m_lines.Place()))
        {
            return false;
        }
        const CLabelFields fields =
            Fields(&NLabelCsv::t_Column::isOfMessages, eCOLUMN::Message,
                   QStringLiteral("says nothing of a message and is left out"));
        m_builder.Message().details.senders = Names(eCOLUMN::Senders);
        if (!NLabelFields::Read(fields, m_lines.Place(), m_list.protocol, m_builder.Message(),
                                m_reports))
        {
            m_builder.Spoil();
        }
        return CountNames(m_builder.Message().details.senders);
    }

    bool Signal()
    {
        const CLabelFields fields =
            Fields(&NLabelCsv::t_Column::isOfSignals, eCOLUMN::Signal,
                   QStringLiteral("says nothing of a signal and is left out"));
        CLabelListSignal signal;
        KW_LabelSignalDetails details;
        CheckMessage();
        if (!NLabelFields::Read(fields, m_lines.Place(), signal, details, m_reports))
        {
            m_builder.Spoil();
        }
        Condition(details);
        details.receivers = Names(eCOLUMN::Receivers);
        if (!CountNames(details.receivers) || !Labels(signal, details))
        {
            return false;
        }
        if (!fields.At(eLABEL_FIELD::ValueType))
        {
            NLabelFields::TakeTypeFromLabels(signal);
        }
        return m_builder.AddSignal(signal, details, m_lines.Place());
    }

    /** Lines that were sorted are no longer those of their message. */
    void CheckMessage()
    {
        const t_Cell& cell = Cell(eCOLUMN::Message);
        if (!m_builder.HasMessage())
        {
            Fail(m_lines.Place(), QStringLiteral("a signal stands above the first message"));
        }
        else if (!cell.text.empty() && cell.text != m_builder.Message().message.getName())
        {
            Fail(cell.place,
                 QStringLiteral("a signal of \"%1\" stands below message \"%2\"")
                     .arg(QString::fromStdString(cell.text),
                          QString::fromStdString(m_builder.Message().message.getName())));
        }
    }

    void Condition(KW_LabelSignalDetails& details)
    {
        const t_Cell& cell = Cell(eCOLUMN::Condition);
        const QString text = QString::fromStdString(cell.text);
        if (!NLabelConditions::Read(text, details))
        {
            Fail(cell.place, QStringLiteral("Condition: \"%1\" is no condition such as "
                                            "Mode = 0-3, 7")
                                 .arg(text));
        }
    }

    bool Labels(CLabelListSignal& signal, KW_LabelSignalDetails& details)
    {
        const t_Cell& cell = Cell(eCOLUMN::Labels);
        for (const std::string& part : NLabelTexts::Split(cell.text))
        {
            if (!m_builder.AddItem(cell.place))
            {
                return false;
            }
            if (!NLabelTexts::Trimmed(part).empty()) // behind a last ";"
            {
                Label(part, signal, details);
            }
        }
        return true;
    }

    void Label(std::string_view part, CLabelListSignal& signal, KW_LabelSignalDetails& details)
    {
        const t_TextPlace place = Cell(eCOLUMN::Labels).place;
        const auto sign = part.find('=');
        const auto value = NLabelTexts::ReadInteger(NLabelTexts::Trimmed(part.substr(0, sign)));
        if (sign == std::string_view::npos || !value)
        {
            Fail(place, QStringLiteral("Labels: \"%1\" is no label such as 0=Off")
                            .arg(QString::fromUtf8(part.data(), static_cast<int>(part.size()))));
        }
        else if (!NLabelFields::AddLabel({*value, part.substr(sign + 1)}, signal, details))
        {
            m_reports.Warning(place, QStringLiteral("Labels: %1 has a label already; the first "
                                                    "counts")
                                         .arg(*value));
        }
    }

    /** The fields of the line; cells that say nothing of its kind are reported. */
    CLabelFields Fields(bool NLabelCsv::t_Column::*isOfKind, eCOLUMN name, const QString& complaint)
    {
        CLabelFields fields;
        for (std::size_t i = 0; i < kColumns; ++i)
        {
            const NLabelCsv::t_Column& column = kColumn[i];
            const t_Cell& cell = m_cells[i];
            if (cell.text.empty())
            {
                continue;
            }
            if (!(column.*isOfKind))
            {
                m_reports.Warning(cell.place,
                                  QLatin1String(column.name) + QLatin1Char(' ') + complaint);
            }
            else if (column.field != eLABEL_FIELD::Count)
            {
                fields.Set(column.field, cell.text, cell.place);
            }
        }
        const t_Cell& cell = Cell(name);
        fields.Set(eLABEL_FIELD::Name, cell.text, cell.place);
        return fields;
    }

    std::vector<std::string> Names(eCOLUMN column) const
    {
        std::vector<std::string> names = NLabelTexts::Split(Cell(column).text);
        names.erase(std::remove(names.begin(), names.end(), std::string()), names.end());
        return names;
    }

    bool CountNames(const std::vector<std::string>& names)
    {
        return std::all_of(names.begin(), names.end(),
                           [this](const std::string&)
                           { return m_builder.AddItem(m_lines.Place()); });
    }

    void WarnOfStray(const t_Cell& cell)
    {
        if (!cell.text.empty())
        {
            m_reports.Warning(cell.place, QStringLiteral("\"%1\" stands in no column and is left "
                                                         "out")
                                              .arg(QString::fromStdString(cell.text)));
        }
    }

    void Fail(t_TextPlace place, const QString& text)
    {
        m_reports.Error(place, text);
        m_builder.Spoil();
    }

    struct t_HeadOfColumn
    {
        std::size_t number; ///< kColumns: not known here
        bool isNameless;
    };

    CLabelCsvLines m_lines;
    KW_LabelList& m_list;
    CLabelReports& m_reports;
    CLabelListBuilder m_builder;
    std::vector<t_HeadOfColumn> m_columns; ///< in the order of the file
    std::array<bool, kColumns> m_isThere{};
    std::array<t_Cell, kColumns> m_cells; ///< of the line, by column
};
} // namespace

bool NLabelFiles::ReadCsv(const QByteArray& text, KW_LabelList& list, CLabelReports& reports,
                          const KW_LabelReadOptions& options)
{
    const std::string_view bytes(text.constData(), static_cast<std::size_t>(text.size()));
    if (const auto place = NLabelTexts::FindUnholdable(bytes))
    {
        reports.Error(*place, NLabelHead::NotText());
        return false;
    }
    return CLabelCsvReader(bytes, list, reports, options).Read();
}
