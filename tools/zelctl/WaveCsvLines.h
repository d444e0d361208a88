// SPDX-License-Identifier: MIT
#pragma once

#include "KWTypes.h"

#include <QString>
#include <string_view>
#include <vector>

/** A cell of a table, without blanks and quotes around it. */
struct t_CsvCell
{
    std::string_view text;
    std::size_t column; ///< of its first byte in the line, from 1
};

/** Lines of a table whose cells are parted by tabs, semicolons or commas: by the first of these
    that the first line has. Blank lines and those that begin with "#" are passed over. */
class CCsvLines
{
public:
    explicit CCsvLines(std::string_view text);

    /** The cells of the next line; false behind the last one. A separator at the end of each line
        makes no cell. */
    bool Next(std::vector<t_CsvCell>& cells);
    /** Number of the line that Next gave, from 1. */
    UINT32 GetLine() const { return m_line; }

    /** Reads a number; with a decimal comma where commas part no cells. */
    bool Parse(std::string_view text, double& number) const;
    /** What may help who reads that a text is no number. */
    QString GetHint(std::string_view text) const;

private:
    std::string_view TakeLine();

    std::string_view m_rest;
    UINT32 m_line = 0;
    char m_separator = '\0'; ///< not known before the first line
    bool m_endsOpen = false; ///< the first line ends with a separator
};
