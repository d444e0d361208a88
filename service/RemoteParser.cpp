// SPDX-License-Identifier: MIT
#include "RemoteMessage.h"

#include <cctype>
#include <limits>

namespace
{
using NServiceLimits::kLongestWord;
constexpr int kMostDigits = 255;
constexpr int kLargestExponent = 32000;

bool IsLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

/** What IEEE 488.2 takes for white space: every control character but the line feed. */
bool IsBlank(char c)
{
    return c > '\0' && c <= ' ' && c != '\n';
}

bool IsOfWord(char c)
{
    return IsLetter(c) || IsDigit(c) || c == '_';
}

bool IsOfSuffix(char c)
{
    return IsLetter(c) || c == '/' || c == '.' || c == '%';
}

int DigitOf(char c)
{
    const char capital = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return IsDigit(c) ? c - '0' : IsLetter(c) ? capital - 'A' + 10 : 99;
}
} // namespace

char CRemoteParser::Peek(int ahead) const
{
    return m_at + ahead < m_text.size() ? m_text[m_at + ahead] : '\n';
}

void CRemoteParser::SkipBlanks()
{
    while (IsBlank(Peek()))
    {
        ++m_at;
    }
}

t_RemoteError CRemoteParser::Fail(eREMOTE_ERROR number) const
{
    constexpr int kShown = 24;
    const int begin = std::max(0, std::min<int>(m_at, static_cast<int>(m_text.size()) - 1));
    return {number, QString::fromUtf8(m_text.mid(begin, kShown))};
}

bool CRemoteParser::IsAtEnd()
{
    while (IsBlank(Peek()) || Peek() == ';')
    {
        ++m_at;
    }
    return m_failed || m_at >= m_text.size();
}

t_RemoteError CRemoteParser::Next(t_RemoteUnit& unit)
{
    unit = {};
    t_RemoteError error = TakeHeader(unit);
    if (!error)
    {
        error = TakeParameters(unit);
    }
    m_failed = static_cast<bool>(error);
    return error;
}

QByteArray CRemoteParser::TakeWord()
{
    const int begin = m_at;
    while (IsOfWord(Peek()))
    {
        ++m_at;
    }
    return m_text.mid(begin, m_at - begin).toUpper();
}

t_RemoteError CRemoteParser::TakeHeader(t_RemoteUnit& unit)
{
    unit.isCommon = Peek() == '*';
    unit.isAbsolute = Peek() == ':';
    m_at += unit.isCommon || unit.isAbsolute ? 1 : 0;
    do
    {
        m_at += unit.words.empty() ? 0 : 1;
        if (!IsLetter(Peek()))
        {
            return Fail(IsOfWord(Peek()) || Peek() == '\n' ? eREMOTE_SYNTAX
                                                           : eREMOTE_INVALID_CHARACTER);
        }
        const int begin = m_at;
        unit.words.push_back(TakeWord());
        if (m_at - begin > kLongestWord)
        {
            return Fail(eREMOTE_MNEMONIC_TOO_LONG);
        }
        if (static_cast<int>(unit.words.size()) > m_bounds.depth)
        {
            return Fail(eREMOTE_UNDEFINED_HEADER);
        }
    } while (!unit.isCommon && Peek() == ':');
    unit.isQuery = Peek() == '?';
    m_at += unit.isQuery ? 1 : 0;
    const bool isEnd = IsBlank(Peek()) || Peek() == ';' || m_at >= m_text.size();
    return isEnd ? t_RemoteError{} : Fail(eREMOTE_INVALID_SEPARATOR);
}

t_RemoteError CRemoteParser::TakeParameters(t_RemoteUnit& unit)
{
    SkipBlanks();
    while (m_at < m_text.size() && Peek() != ';')
    {
        if (static_cast<int>(unit.data.size()) >= m_bounds.parameters)
        {
            return Fail(eREMOTE_PARAMETER_NOT_ALLOWED);
        }
        if (const t_RemoteError error = TakeData(unit.data.emplace_back()))
        {
            return error;
        }
        SkipBlanks();
        if (m_at >= m_text.size() || Peek() == ';')
        {
            break;
        }
        if (Peek() != ',')
        {
            return Fail(eREMOTE_INVALID_SEPARATOR);
        }
        ++m_at;
        SkipBlanks();
        if (m_at >= m_text.size() || Peek() == ';')
        {
            return Fail(eREMOTE_SYNTAX);
        }
    }
    return {};
}

t_RemoteError CRemoteParser::TakeData(t_RemoteData& data)
{
    const char c = Peek();
    if (IsLetter(c))
    {
        return TakeCharacters(data);
    }
    if (IsDigit(c) || c == '+' || c == '-' || c == '.')
    {
        return TakeNumber(data);
    }
    if (c == '"' || c == '\'')
    {
        return TakeString(data);
    }
    if (c != '#')
    {
        return Fail(c == ',' ? eREMOTE_SYNTAX : eREMOTE_INVALID_CHARACTER);
    }
    switch (Peek(1))
    {
    case 'H':
    case 'h':
        return TakeDigits(data, 16);
    case 'Q':
    case 'q':
        return TakeDigits(data, 8);
    case 'B':
    case 'b':
        return TakeDigits(data, 2);
    default:
        return TakeBlock(data);
    }
}

t_RemoteError CRemoteParser::TakeCharacters(t_RemoteData& data)
{
    const int begin = m_at;
    data.kind = t_RemoteData::eKIND::Character;
    TakeWord();
    data.text = m_text.mid(begin, m_at - begin);
    return m_at - begin > kLongestWord ? Fail(eREMOTE_CHARACTER_DATA_TOO_LONG) : t_RemoteError{};
}

t_RemoteError CRemoteParser::TakeNumber(t_RemoteData& data)
{
    data.kind = t_RemoteData::eKIND::Number;
    const int begin = m_at;
    m_at += Peek() == '+' || Peek() == '-' ? 1 : 0;
    int digits = 0;
    int points = 0;
    for (; IsDigit(Peek()) || (Peek() == '.' && points == 0); ++m_at)
    {
        (Peek() == '.' ? points : digits) += 1;
    }
    if (digits == 0)
    {
        return Fail(eREMOTE_INVALID_NUMBER);
    }
    if (digits > kMostDigits)
    {
        return Fail(eREMOTE_TOO_MANY_DIGITS);
    }
    data.text = m_text.mid(begin, m_at - begin);
    if (const t_RemoteError error = TakeExponent(data))
    {
        return error;
    }
    SkipBlanks();
    const int suffix = m_at;
    while (IsOfSuffix(Peek()) || (m_at > suffix && IsDigit(Peek())))
    {
        ++m_at;
    }
    data.suffix = m_text.mid(suffix, m_at - suffix).toUpper();
    return data.suffix.size() > kLongestWord ? Fail(eREMOTE_INVALID_SUFFIX) : t_RemoteError{};
}

/** "E" with digits behind it, blanks between them allowed; else a suffix begins there. */
t_RemoteError CRemoteParser::TakeExponent(t_RemoteData& data)
{
    int ahead = 0;
    while (IsBlank(Peek(ahead)))
    {
        ++ahead;
    }
    if (Peek(ahead) != 'E' && Peek(ahead) != 'e')
    {
        return {};
    }
    do
    {
        ++ahead;
    } while (IsBlank(Peek(ahead)));
    const char sign = Peek(ahead);
    ahead += sign == '+' || sign == '-' ? 1 : 0;
    if (!IsDigit(Peek(ahead)))
    {
        return {};
    }
    m_at += ahead;
    int exponent = 0;
    for (; IsDigit(Peek()); ++m_at)
    {
        exponent = std::min(10 * exponent + (Peek() - '0'), kLargestExponent + 1);
    }
    data.text += (sign == '-' ? "e-" : "e") + QByteArray::number(exponent);
    return exponent > kLargestExponent ? Fail(eREMOTE_EXPONENT_TOO_LARGE) : t_RemoteError{};
}

t_RemoteError CRemoteParser::TakeString(t_RemoteData& data)
{
    data.kind = t_RemoteData::eKIND::String;
    const char quote = Peek();
    for (++m_at; m_at < m_text.size(); ++m_at)
    {
        if (Peek() != quote)
        {
            data.text += Peek();
        }
        else if (Peek(1) == quote)
        {
            data.text += quote;
            ++m_at;
        }
        else
        {
            ++m_at;
            return {};
        }
    }
    return Fail(eREMOTE_INVALID_STRING);
}

t_RemoteError CRemoteParser::TakeDigits(t_RemoteData& data, int base)
{
    data.kind = t_RemoteData::eKIND::Digits;
    m_at += 2;
    const int begin = m_at;
    UINT64 number = 0;
    bool fits = true;
    for (; DigitOf(Peek()) < base; ++m_at)
    {
        fits = fits && number <= std::numeric_limits<UINT64>::max() / static_cast<UINT64>(base);
        number = number * static_cast<UINT64>(base) + static_cast<UINT64>(DigitOf(Peek()));
    }
    if (m_at == begin || IsOfWord(Peek()))
    {
        return Fail(eREMOTE_INVALID_NUMBER);
    }
    // What 64 bits can not hold is above every maximum: the next number says so.
    data.text = fits ? QByteArray::number(static_cast<qulonglong>(number)) : "18446744073709551616";
    return {};
}

t_RemoteError CRemoteParser::TakeBlock(t_RemoteData& data)
{
    data.kind = t_RemoteData::eKIND::Block;
    ++m_at;
    if (!IsDigit(Peek()))
    {
        return Fail(eREMOTE_INVALID_BLOCK);
    }
    const int digits = Peek() - '0';
    ++m_at;
    if (digits == 0)
    {
        data.text = m_text.mid(m_at);
        m_at = static_cast<int>(m_text.size());
        return {};
    }
    INT64 length = 0;
    for (int i = 0; i < digits; ++i, ++m_at)
    {
        if (!IsDigit(Peek()))
        {
            return Fail(eREMOTE_INVALID_BLOCK);
        }
        length = 10 * length + (Peek() - '0');
    }
    if (length > m_text.size() - m_at)
    {
        return Fail(eREMOTE_INVALID_BLOCK);
    }
    data.text = m_text.mid(m_at, static_cast<int>(length));
    m_at += static_cast<int>(length);
    return {};
}
