// SPDX-License-Identifier: MIT
#include "WaveCsvLines.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace
{
bool IsBlank(char character)
{
    return character == ' ' || character == '\t' || character == '\r';
}

/** Cuts blanks off both ends; answers how many there were in front. */
std::size_t Trim(std::string_view& text)
{
    std::size_t front = 0;
    while (front < text.size() && IsBlank(text[front]))
    {
        ++front;
    }
    text.remove_prefix(front);
    while (!text.empty() && IsBlank(text.back()))
    {
        text.remove_suffix(1);
    }
    return front;
}

char FindSeparator(std::string_view line)
{
    for (const char separator : {'\t', ';'})
    {
        if (line.find(separator) != std::string_view::npos)
        {
            return separator;
        }
    }
    return ',';
}

t_CsvCell MakeCell(std::string_view text, std::size_t column)
{
    column += Trim(text);
    if (text.size() >= 2 && text.front() == '"' && text.back() == '"')
    {
        text = text.substr(1, text.size() - 2);
        column += 1 + Trim(text);
    }
    return {text, column};
}
} // namespace

CCsvLines::CCsvLines(std::string_view text) : m_rest(text)
{
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (m_rest.substr(0, kByteOrderMark.size()) == kByteOrderMark)
    {
        m_rest.remove_prefix(kByteOrderMark.size());
    }
}

std::string_view CCsvLines::TakeLine()
{
    const std::size_t end = std::min(m_rest.find('\n'), m_rest.size());
    const std::string_view line = m_rest.substr(0, end);
    m_rest.remove_prefix(std::min(end + 1, m_rest.size()));
    ++m_line;
    return line;
}

bool CCsvLines::Next(std::vector<t_CsvCell>& cells)
{
    std::string_view line;
    for (std::string_view shown; shown.empty() || shown.front() == '#';)
    {
        if (m_rest.empty())
        {
            return false;
        }
        line = TakeLine();
        shown = line;
        Trim(shown);
    }
    const bool isFirst = m_separator == '\0';
    m_separator = isFirst ? FindSeparator(line) : m_separator;
    cells.clear();
    std::size_t begin = 0;
    bool isQuoted = false;
    for (std::size_t i = 0; i <= line.size(); ++i)
    {
        const bool isEnd = i == line.size();
        isQuoted = isQuoted != (!isEnd && line[i] == '"');
        if (isEnd || (line[i] == m_separator && !isQuoted))
        {
            cells.push_back(MakeCell(line.substr(begin, i - begin), begin + 1));
            begin = i + 1;
        }
    }
    m_endsOpen = isFirst ? cells.size() > 1 && cells.back().text.empty() : m_endsOpen;
    if (m_endsOpen && cells.size() > 1 && cells.back().text.empty())
    {
        cells.pop_back();
    }
    return true;
}

bool CCsvLines::Parse(std::string_view text, double& number) const
{
    std::array<char, 64> copy{};
    if (text.empty() || text.size() > copy.size())
    {
        return false;
    }
    std::copy(text.begin(), text.end(), copy.begin());
    if (m_separator != ',')
    {
        std::replace(copy.begin(), copy.end(), ',', '.');
    }
    const char* const end = copy.data() + text.size();
    const char* const begin = copy.data() + (copy[0] == '+' ? 1 : 0);
    double read = 0;
    const auto [stop, error] = std::from_chars(begin, end, read);
    if (error != std::errc() || stop != end)
    {
        return false;
    }
    number = read;
    return true;
}

QString CCsvLines::GetHint(std::string_view text) const
{
    return m_separator == ',' && text.find('"') != std::string_view::npos
               ? QStringLiteral("; a quote stands alone")
               : QString();
}
