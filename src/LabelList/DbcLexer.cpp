// SPDX-License-Identifier: MIT
#include "LabelList/DbcLexer.h"

#include <algorithm>
#include <array>

namespace
{
/** What a byte can be; a table, as every byte of a file is asked. */
enum e_Character : UINT8
{
    Digit = 1,
    Letter = 2,
    NumberPart = 4, ///< beside digits and letters
    Blank = 8,      ///< also 0x1a, which ends files of old systems
    NameEnd = 16,
};

constexpr std::array<UINT8, 256> Kinds()
{
    std::array<UINT8, 256> kinds{};
    for (std::size_t i = 0; i < kinds.size(); ++i)
    {
        const bool isLetter = (i >= 'a' && i <= 'z') || (i >= 'A' && i <= 'Z') || i == '_';
        const bool isBlank = i == ' ' || (i >= '\t' && i <= '\r') || i == 0x1a;
        const bool isEnd = i == ',' || i == ';' || i == ':' || i == '"';
        kinds[i] = static_cast<UINT8>((i >= '0' && i <= '9' ? Digit : 0) |
                                      (isLetter || i >= 0x80 ? Letter : 0) |
                                      (i == '.' || i == '#' ? NumberPart : 0) |
                                      (isBlank ? Blank | NameEnd : 0) | (isEnd ? NameEnd : 0));
    }
    return kinds;
}

constexpr auto kKinds = Kinds();

bool Is(char c, int kinds)
{
    return (kKinds[static_cast<UINT8>(c)] & kinds) != 0;
}

/** Bytes that are looked through for a colon: many lines without one take no longer. */
constexpr std::ptrdiff_t kLongestName = 1024;

bool IsControl(char c)
{
    return static_cast<UINT8>(c) < 0x20 && c != '\t';
}

/** The first byte that is none of these kinds. */
const char* SkipAll(const char* at, const char* end, int kinds)
{
    while (at < end && Is(*at, kinds))
    {
        ++at;
    }
    return at;
}

/** The first byte that is one of these kinds. */
const char* SkipTo(const char* at, const char* end, int kinds)
{
    while (at < end && !Is(*at, kinds))
    {
        ++at;
    }
    return at;
}

bool StartsNumber(const char* at, const char* end)
{
    const bool isSigned = *at == '+' || *at == '-';
    at += isSigned ? 1 : 0;
    const bool isPoint = at < end && *at == '.';
    at += isPoint ? 1 : 0;
    return at < end && Is(*at, Digit);
}

const char* EndOfNumber(const char* at, const char* end)
{
    for (++at; at < end; ++at)
    {
        const bool isExponent = (*at == '+' || *at == '-') && (at[-1] == 'e' || at[-1] == 'E');
        if (!Is(*at, Digit | Letter | NumberPart) && !isExponent)
        {
            break;
        }
    }
    return at;
}
} // namespace

CDbcLexer::CDbcLexer(std::string_view text)
    : m_at(text.data()), m_end(text.data() + text.size()), m_lineBegin(text.data())
{
    Advance();
}

t_DbcToken CDbcLexer::Take()
{
    const t_DbcToken token = m_token;
    Advance();
    return token;
}

bool CDbcLexer::TakeSign(char sign)
{
    const bool isNext = m_token.IsSign(sign);
    if (isNext)
    {
        Advance();
    }
    return isNext;
}

std::string_view CDbcLexer::TakeDigits()
{
    const char* const begin = m_token.begin;
    const char* const end =
        m_token.kind == e_DbcToken::Number ? SkipAll(begin, m_end, Digit) : begin;
    if (end != begin)
    {
        MoveTo(end);
    }
    return {begin, static_cast<std::size_t>(end - begin)};
}

std::string_view CDbcLexer::TakeCharacter(std::string_view characters)
{
    const char* const begin = m_token.begin;
    const bool isNext = begin != m_end && characters.find(*begin) != std::string_view::npos;
    if (isNext)
    {
        MoveTo(begin + 1);
    }
    return {begin, isNext ? std::size_t{1} : std::size_t{0}};
}

bool CDbcLexer::StartsName(const t_DbcToken& token)
{
    return token.kind == e_DbcToken::Number ||
           (token.kind == e_DbcToken::Word && token.text != "SG_" && token.text != "BO_");
}

std::string_view CDbcLexer::TakeName()
{
    const char* const begin = m_token.begin;
    const char* const end = SkipTo(begin, m_end, NameEnd);
    if (end != begin)
    {
        MoveTo(end);
    }
    return {begin, static_cast<std::size_t>(end - begin)};
}

std::string_view CDbcLexer::TakeToColon()
{
    const char* const begin = m_token.begin;
    const char* const last = begin + std::min<std::ptrdiff_t>(m_end - begin, kLongestName);
    const char* end = begin;
    while (end < last && *end != ':' && *end != '"' && *end != ';' && !IsControl(*end))
    {
        ++end;
    }
    if (end == last || *end != ':')
    {
        return {};
    }
    const char* const colon = end;
    while (end > begin && Is(end[-1], Blank))
    {
        --end;
    }
    if (end != begin)
    {
        MoveTo(colon);
    }
    return {begin, static_cast<std::size_t>(end - begin)};
}

bool CDbcLexer::TakeExactly(std::string_view text)
{
    const auto left = static_cast<std::size_t>(m_end - m_token.begin);
    const bool isNext = left >= text.size() &&
                        std::string_view(m_token.begin, text.size()) == text &&
                        (left == text.size() || Is(m_token.begin[text.size()], NameEnd));
    if (isNext)
    {
        MoveTo(m_token.begin + text.size());
    }
    return isNext;
}

void CDbcLexer::GoTo(const t_DbcToken& token)
{
    m_at = token.begin;
    m_lineBegin = token.lineBegin;
    m_line = token.place.line;
    m_isLineStart = token.startsLine;
    Advance();
}

void CDbcLexer::SkipLine()
{
    GoTo(m_token);
    m_at = std::find(m_token.begin, m_end, '\n');
    m_lineBegin = m_token.lineBegin;
    m_line = m_token.place.line;
    Advance();
}

/** Goes on within the line of the word that comes next. */
void CDbcLexer::MoveTo(const char* to)
{
    m_at = to;
    m_lineBegin = m_token.lineBegin;
    m_line = m_token.place.line;
    m_isLineStart = false;
    Advance();
}

void CDbcLexer::SkipBlanks()
{
    for (; m_at < m_end && Is(*m_at, Blank); ++m_at)
    {
        if (*m_at == '\n')
        {
            ++m_line;
            m_lineBegin = m_at + 1;
            m_isLineStart = true;
        }
    }
}

void CDbcLexer::Advance()
{
    SkipBlanks();
    m_token.begin = m_at;
    m_token.lineBegin = m_lineBegin;
    m_token.place = {m_line, static_cast<UINT32>(m_at - m_lineBegin) + 1};
    m_token.startsLine = m_isLineStart;
    m_isLineStart = false;
    if (m_at == m_end)
    {
        m_token.kind = e_DbcToken::End;
        m_token.text = {};
        return;
    }
    if (*m_at == '"')
    {
        ReadText();
        return;
    }
    const char* const begin = m_at++;
    if (Is(*begin, Letter))
    {
        m_token.kind = e_DbcToken::Word;
        m_at = SkipAll(m_at, m_end, Digit | Letter);
    }
    else if (StartsNumber(begin, m_end))
    {
        m_token.kind = e_DbcToken::Number;
        m_at = EndOfNumber(begin, m_end);
    }
    else
    {
        m_token.kind = e_DbcToken::Sign;
    }
    m_token.text = {begin, static_cast<std::size_t>(m_at - begin)};
}

/** A quote behind an odd number of backslashes is part of the text. */
void CDbcLexer::ReadText()
{
    const char* const begin = ++m_at;
    std::size_t slashes = 0;
    for (; m_at < m_end && (*m_at != '"' || slashes % 2 == 1); ++m_at)
    {
        slashes = *m_at == '\\' ? slashes + 1 : 0;
        if (*m_at == '\n')
        {
            ++m_line;
            m_lineBegin = m_at + 1;
        }
    }
    m_token.kind = m_at < m_end ? e_DbcToken::Text : e_DbcToken::OpenText;
    m_token.text = {begin, static_cast<std::size_t>(m_at - begin)};
    m_at += m_at < m_end ? 1 : 0;
}
