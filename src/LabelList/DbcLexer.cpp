// SPDX-License-Identifier: MIT
#include "LabelList/DbcLexer.h"

#include <algorithm>
#include <cstring>

namespace
{
bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool IsLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
           static_cast<UINT8>(c) >= 0x80;
}

bool IsWordPart(char c)
{
    return IsLetter(c) || IsDigit(c);
}

bool IsNumberPart(char c)
{
    return IsWordPart(c) || c == '.' || c == '#';
}

/** The end of a file of old systems, 0x1a, is a blank, too. */
bool IsBlank(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r') || c == '\x1a';
}

bool EndsName(char c)
{
    return IsBlank(c) || c == ',' || c == ';' || c == ':' || c == '"';
}

bool StartsNumber(const char* at, const char* end)
{
    const bool isSigned = *at == '+' || *at == '-';
    at += isSigned ? 1 : 0;
    const bool isPoint = at < end && *at == '.';
    at += isPoint ? 1 : 0;
    return at < end && IsDigit(*at);
}

const char* EndOfNumber(const char* at, const char* end)
{
    for (++at; at < end; ++at)
    {
        const bool isExponent = (*at == '+' || *at == '-') && (at[-1] == 'e' || at[-1] == 'E');
        if (!IsNumberPart(*at) && !isExponent)
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
    const bool isNext = m_token.kind == e_DbcToken::Sign && m_token.text.front() == sign;
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
        m_token.kind == e_DbcToken::Number ? std::find_if_not(begin, m_end, IsDigit) : begin;
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

std::string_view CDbcLexer::TakeName()
{
    const char* const begin = m_token.begin;
    const char* const end = std::find_if(begin, m_end, EndsName);
    if (end != begin)
    {
        MoveTo(end);
    }
    return {begin, static_cast<std::size_t>(end - begin)};
}

std::string_view CDbcLexer::TakeToColon()
{
    const char* const begin = m_token.begin;
    const char* end = std::find_if(
        begin, m_end, [](char c) { return c == ':' || c == '"' || c == ';' || c == '\n'; });
    if (end == m_end || *end != ':')
    {
        return {};
    }
    const char* const colon = end;
    while (end > begin && IsBlank(end[-1]))
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
                        (left == text.size() || EndsName(m_token.begin[text.size()]));
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
    for (; m_at < m_end && IsBlank(*m_at); ++m_at)
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
    if (IsLetter(*begin))
    {
        m_token.kind = e_DbcToken::Word;
        m_at = std::find_if_not(m_at, m_end, IsWordPart);
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
