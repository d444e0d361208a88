// SPDX-License-Identifier: MIT
#pragma once

#include "LabelList/LabelReports.h"

#include <string>
#include <string_view>
#include <vector>

/**
 * Lines of a CSV text by RFC 4180, within which line ends may be CRLF or LF and the fields may be
 * parted by "," or ";": whichever stands behind the first one.
 */
class CLabelCsvLines
{
public:
    struct t_Cell
    {
        std::string text;
        t_TextPlace place;
    };

    /** `text` is UTF-8, with or without a byte order mark. */
    CLabelCsvLines(std::string_view text, CLabelReports& reports);

    /** Goes to the next line that is not empty: of its cells or at all. False at the end, and when
        a line is none, which is reported. */
    bool Next();

    bool IsBroken() const { return m_isBroken; }
    /** Whether the line has no end: the file may have been cut off within it. */
    bool IsOpen() const { return IsAtEnd() && !m_text.empty() && m_text.back() != '\n'; }
    const std::vector<t_Cell>& Cells() const { return m_cells; }
    t_TextPlace Place() const { return m_cells.front().place; }

private:
    bool ReadLine();
    bool ReadCell();
    bool ReadQuoted(std::string& text);
    bool Break(t_TextPlace place, const QString& what);
    bool IsLineEnd() const;
    bool IsAtEnd() const { return m_at == m_text.size(); }
    void Step();

    std::string_view m_text;
    CLabelReports& m_reports;
    std::size_t m_at = 0;
    t_TextPlace m_here{1, 1};
    char m_separator = '\0'; ///< none: not known yet
    std::vector<t_Cell> m_cells;
    bool m_isBroken = false;
};
