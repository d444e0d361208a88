// SPDX-License-Identifier: MIT
#include "LabelList/LabelCsvLines.h"

#include "LabelList/LabelBounds.h"

#include <algorithm>

CLabelCsvLines::CLabelCsvLines(std::string_view text, CLabelReports& reports)
    : m_text(text.substr(0, 3) == "\xEF\xBB\xBF" ? text.substr(3) : text), m_reports(reports)
{
}

bool CLabelCsvLines::Next()
{
    while (!m_isBroken && !IsAtEnd())
    {
        if (!ReadLine())
        {
            return false;
        }
        if (std::any_of(m_cells.begin(), m_cells.end(),
                        [](const t_Cell& cell) { return !cell.text.empty(); }))
        {
            return true;
        }
    }
    return false;
}

bool CLabelCsvLines::ReadLine()
{
    m_cells.clear();
    for (;;)
    {
        if (m_cells.size() == NLabelBounds::kMaxColumns)
        {
            return Break(m_here,
                         QStringLiteral("more than %1 columns").arg(NLabelBounds::kMaxColumns));
        }
        if (!ReadCell())
        {
            return false;
        }
        if (IsAtEnd() || IsLineEnd())
        {
            break;
        }
        Step(); // over the separator
    }
    while (!IsAtEnd() && m_text[m_at] != '\n')
    {
        Step(); // over the "\r" of a line end
    }
    if (!IsAtEnd())
    {
        Step();
    }
    return true;
}

bool CLabelCsvLines::ReadCell()
{
    t_Cell& cell = m_cells.emplace_back();
    cell.place = m_here;
    const bool isQuoted = !IsAtEnd() && m_text[m_at] == '"';
    if (isQuoted && !ReadQuoted(cell.text))
    {
        return false;
    }
    const auto isSeparator = [this](char c)
    { return m_separator == '\0' ? c == ',' || c == ';' : c == m_separator; };
    while (!isQuoted && !IsAtEnd() && !IsLineEnd() && !isSeparator(m_text[m_at]))
    {
        cell.text += m_text[m_at];
        Step();
    }
    if (IsAtEnd() || IsLineEnd())
    {
        return true;
    }
    if (!isSeparator(m_text[m_at]))
    {
        return Break(m_here, QStringLiteral("text behind the closing quotation mark"));
    }
    m_separator = m_text[m_at];
    return true;
}

bool CLabelCsvLines::ReadQuoted(std::string& text)
{
    const t_TextPlace opened = m_here;
    for (Step(); !IsAtEnd(); Step())
    {
        if (m_text[m_at] != '"')
        {
            text += m_text[m_at];
            continue;
        }
        if (m_at + 1 == m_text.size() || m_text[m_at + 1] != '"')
        {
            Step();
            return true;
        }
        Step();
        text += '"';
    }
    return Break(opened, QStringLiteral("a quotation mark that nothing closes"));
}

bool CLabelCsvLines::Break(t_TextPlace place, const QString& what)
{
    m_reports.Error(place, what);
    m_isBroken = true;
    return false;
}

bool CLabelCsvLines::IsLineEnd() const
{
    const bool isReturn =
        m_text[m_at] == '\r' && (m_at + 1 == m_text.size() || m_text[m_at + 1] == '\n');
    return isReturn || m_text[m_at] == '\n';
}

void CLabelCsvLines::Step()
{
    const bool isEnd = m_text[m_at++] == '\n';
    m_here = isEnd ? t_TextPlace{m_here.line + 1, 1} : t_TextPlace{m_here.line, m_here.column + 1};
}
