// SPDX-License-Identifier: MIT
#include "LabelList/DbcText.h"

#include "KWTypes.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace
{
/** Characters of 0x80 to 0x9f. */
constexpr std::array<UINT16, 32> kWindows1252 = {
    0x20ac, 0x0081, 0x201a, 0x0192, 0x201e, 0x2026, 0x2020, 0x2021, 0x02c6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008d, 0x017d, 0x008f, 0x0090, 0x2018, 0x2019, 0x201c, 0x201d, 0x2022,
    0x2013, 0x2014, 0x02dc, 0x2122, 0x0161, 0x203a, 0x0153, 0x009d, 0x017e, 0x0178};
constexpr UINT8 kFirst = 0x80;
constexpr UINT8 kBehind = 0xa0;

UINT8 ByteAt(std::string_view text, std::size_t at)
{
    return at < text.size() ? static_cast<UINT8>(text[at]) : UINT8{0};
}

bool IsContinuation(UINT8 byte)
{
    return (byte & 0xc0U) == 0x80U;
}

/** Bytes of the character that begins there; 0 for none. */
std::size_t LengthAt(std::string_view text, std::size_t at)
{
    const UINT8 first = ByteAt(text, at);
    const UINT8 second = ByteAt(text, at + 1);
    if (first < 0x80)
    {
        return 1;
    }
    if (first < 0xc2 || first > 0xf4 || !IsContinuation(second))
    {
        return 0;
    }
    if (first < 0xe0)
    {
        return 2;
    }
    const bool isThird = IsContinuation(ByteAt(text, at + 2));
    if (first < 0xf0)
    {
        const bool isOverlong = first == 0xe0 && second < 0xa0;
        const bool isSurrogate = first == 0xed && second >= 0xa0;
        return isThird && !isOverlong && !isSurrogate ? 3 : 0;
    }
    const bool isOutside = (first == 0xf0 && second < 0x90) || (first == 0xf4 && second >= 0x90);
    return isThird && IsContinuation(ByteAt(text, at + 3)) && !isOutside ? 4 : 0;
}

void AppendCharacter(std::string& text, UINT16 character)
{
    if (character >= 0x800)
    {
        text += static_cast<char>(0xe0U | character >> 12U);
        text += static_cast<char>(0x80U | (character >> 6U & 0x3fU));
    }
    else
    {
        text += static_cast<char>(0xc0U | character >> 6U);
    }
    text += static_cast<char>(0x80U | (character & 0x3fU));
}

/** The byte of a character of two or three bytes; 0 for none. */
UINT8 ByteOf(UINT32 character)
{
    if (character >= kBehind && character <= 0xff)
    {
        return static_cast<UINT8>(character);
    }
    const auto* const found = std::find(kWindows1252.begin(), kWindows1252.end(), character);
    return found != kWindows1252.end() ? static_cast<UINT8>(kFirst + (found - kWindows1252.begin()))
                                       : UINT8{0};
}

bool IsBlank(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

void AppendText(std::string& to, std::string_view bytes, bool isUtf8)
{
    if (isUtf8)
    {
        to.append(bytes);
    }
    else
    {
        NDbcText::AppendWindows1252(to, bytes);
    }
}

/** Whether the text has to be looked at byte by byte. */
bool IsSpecial(char c)
{
    return c == '\\' || c == '\r' || static_cast<UINT8>(c) >= kFirst;
}

/** Line ends of other systems become line feeds. */
void UnifyLineEnds(std::string& text)
{
    std::size_t kept = 0;
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        const bool isHalf = text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n';
        if (!isHalf)
        {
            text[kept++] = text[i] == '\r' ? '\n' : text[i];
        }
    }
    text.resize(kept);
}

/** Of the backslashes before a quote one half: of all that is left by the lexer, the last quote of
    the text included, which is not part of it. */
void RemoveEscapes(std::string& text)
{
    std::size_t kept = 0;
    std::size_t slashes = 0;
    for (std::size_t i = 0; i <= text.size(); ++i)
    {
        const bool isEnd = i == text.size();
        if (isEnd || text[i] == '"')
        {
            kept -= slashes - slashes / 2;
        }
        slashes = !isEnd && text[i] == '\\' ? slashes + 1 : 0;
        if (!isEnd)
        {
            text[kept++] = text[i];
        }
    }
    text.resize(kept);
}
} // namespace

std::size_t NDbcText::AsciiLength(std::string_view bytes)
{
    constexpr UINT64 kUpperBits = 0x8080808080808080U;
    UINT64 word = 0;
    std::size_t at = 0;
    for (; at + sizeof(word) <= bytes.size(); at += sizeof(word))
    {
        std::memcpy(&word, bytes.data() + at, sizeof(word));
        if ((word & kUpperBits) != 0)
        {
            break;
        }
    }
    while (at < bytes.size() && ByteAt(bytes, at) < kFirst)
    {
        ++at;
    }
    return at;
}

bool NDbcText::IsUtf8(std::string_view bytes)
{
    for (std::size_t at = AsciiLength(bytes); at < bytes.size();
         at += AsciiLength(bytes.substr(at)))
    {
        const std::size_t length = LengthAt(bytes, at);
        if (length == 0)
        {
            return false;
        }
        at += length;
    }
    return true;
}

void NDbcText::AppendWindows1252(std::string& text, std::string_view bytes)
{
    for (const char c : bytes)
    {
        const auto byte = static_cast<UINT8>(c);
        if (byte < kFirst)
        {
            text += c;
        }
        else
        {
            AppendCharacter(text, byte < kBehind ? kWindows1252[byte - kFirst] : UINT16{byte});
        }
    }
}

bool NDbcText::ToWindows1252(std::string_view text, std::string& bytes)
{
    bytes.reserve(text.size());
    for (std::size_t at = 0; at < text.size();)
    {
        const std::size_t length = LengthAt(text, at);
        if (length == 0 || length > 3)
        {
            return false;
        }
        const auto bits = [&](std::size_t i) { return ByteAt(text, at + i) & 0x3fU; };
        const UINT32 character = length == 2 ? (ByteAt(text, at) & 0x1fU) << 6U | bits(1)
                                 : length == 3
                                     ? (ByteAt(text, at) & 0x0fU) << 12U | bits(1) << 6U | bits(2)
                                     : ByteAt(text, at);
        const UINT8 byte = length == 1 ? static_cast<UINT8>(character) : ByteOf(character);
        if (length > 1 && byte == 0)
        {
            return false;
        }
        bytes += static_cast<char>(byte);
        at += length;
    }
    return true;
}

std::string NDbcText::Unquoted(std::string_view bytes, bool isUtf8)
{
    if (std::none_of(bytes.begin(), bytes.end(), IsSpecial))
    {
        return std::string(bytes);
    }
    std::string text;
    AppendText(text, bytes, isUtf8);
    RemoveEscapes(text);
    UnifyLineEnds(text);
    return text;
}

void NDbcText::AppendQuoted(std::string& to, std::string_view text)
{
    to += '"';
    std::size_t slashes = 0;
    for (const char c : text)
    {
        if (c == '"')
        {
            to.append(slashes + 1, '\\');
        }
        slashes = c == '\\' ? slashes + 1 : 0;
        to += c;
    }
    to.append(slashes, '\\');
    to += '"';
}

std::string NDbcText::InOneLine(std::string_view statement, bool isUtf8)
{
    std::string line;
    bool isQuoted = false;
    std::size_t slashes = 0;
    for (const char c : statement)
    {
        const bool isEscaped = slashes % 2 == 1;
        slashes = c == '\\' ? slashes + 1 : 0;
        if (c == '"')
        {
            isQuoted = !isQuoted || isEscaped;
        }
        if (isQuoted || !IsBlank(c))
        {
            line += c;
        }
        else if (!line.empty() && line.back() != ' ')
        {
            line += ' ';
        }
    }
    while (!line.empty() && line.back() == ' ')
    {
        line.pop_back();
    }
    std::string text;
    AppendText(text, line, isUtf8);
    UnifyLineEnds(text);
    return text;
}
