// SPDX-License-Identifier: MIT
#include "LabelList/LabelTexts.h"

#include <algorithm>
#include <charconv>

namespace
{
constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

/** What the first byte of a sequence says of its length, and the first code point that needs it. */
struct t_Lead
{
    std::size_t length;
    UINT32 payload;
    UINT32 lowest;
};

t_Lead LeadOf(UINT8 byte)
{
    if (byte < 0x80U)
    {
        return {1, byte, 0};
    }
    if ((byte & 0xE0U) == 0xC0U)
    {
        return {2, byte & 0x1FU, 0x80};
    }
    if ((byte & 0xF0U) == 0xE0U)
    {
        return {3, byte & 0x0FU, 0x800};
    }
    return (byte & 0xF8U) == 0xF0U ? t_Lead{4, byte & 0x07U, 0x10000} : t_Lead{0, 0, 0};
}

bool IsHoldable(UINT32 character)
{
    constexpr UINT32 kLast = 0x10FFFF;
    const bool isSurrogate = character >= 0xD800 && character <= 0xDFFF;
    return character >= 0x20 ? character <= kLast && !isSurrogate && (character & ~1U) != 0xFFFE
                             : character == '\t' || character == '\n' || character == '\r';
}

/** Bytes of the character that a text begins with; 0 when no file can hold it. */
std::size_t HoldableLength(std::string_view text)
{
    const auto first = static_cast<UINT8>(text.front());
    if (first >= 0x20U && first < 0x80U) // most are
    {
        return 1;
    }
    const t_Lead lead = LeadOf(first);
    if (lead.length == 0 || lead.length > text.size())
    {
        return 0;
    }
    UINT32 character = lead.payload;
    for (std::size_t i = 1; i < lead.length; ++i)
    {
        const auto byte = static_cast<UINT8>(text[i]);
        if ((byte & 0xC0U) != 0x80U)
        {
            return 0;
        }
        character = character << 6U | (byte & 0x3FU);
    }
    return character >= lead.lowest && IsHoldable(character) ? lead.length : 0;
}

template <typename T>
std::optional<T> ReadWhole(std::string_view text, int base)
{
    T value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, base);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(value)
                                                                    : std::nullopt;
}

bool IsWord(std::string_view text, std::string_view word)
{
    return std::equal(text.begin(), text.end(), word.begin(), word.end(),
                      [](char a, char b)
                      { return (a >= 'A' && a <= 'Z' ? a - 'A' + 'a' : a) == b; });
}
} // namespace

std::optional<t_TextPlace> NLabelTexts::FindUnholdable(std::string_view text)
{
    t_TextPlace place{1, 1};
    while (!text.empty())
    {
        const std::size_t length = HoldableLength(text);
        if (length == 0)
        {
            return place;
        }
        const bool isEnd = text.front() == '\n';
        place.line += isEnd ? 1 : 0;
        place.column = isEnd ? 1 : place.column + static_cast<UINT32>(length);
        text.remove_prefix(length);
    }
    return std::nullopt;
}

std::string NLabelTexts::Holdable(std::string_view text, std::size_t& replaced)
{
    std::string held;
    while (!text.empty())
    {
        const std::size_t length = HoldableLength(text);
        held += length == 0 ? kReplacement : text.substr(0, length);
        replaced += length == 0 ? 1 : 0;
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return held;
}

std::string NLabelTexts::TextOf(double value)
{
    constexpr std::size_t kLongest = 32;
    char text[kLongest];
    return {text, std::to_chars(text, text + kLongest, value).ptr};
}

std::optional<double> NLabelTexts::ReadReal(std::string_view text)
{
    double value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(value)
                                                                    : std::nullopt;
}

std::optional<INT64> NLabelTexts::ReadInteger(std::string_view text)
{
    return ReadWhole<INT64>(text, 10);
}

std::optional<UINT32> NLabelTexts::ReadUnsigned(std::string_view text)
{
    return ReadWhole<UINT32>(text, 10);
}

std::optional<UINT32> NLabelTexts::ReadIdentifier(std::string_view text)
{
    const bool isHex = text.substr(0, 2) == "0x" || text.substr(0, 2) == "0X";
    return isHex ? ReadWhole<UINT32>(text.substr(2), 16) : ReadUnsigned(text);
}

std::optional<bool> NLabelTexts::ReadFlag(std::string_view text)
{
    const auto isOneOf = [text](auto... words) { return (IsWord(text, words) || ...); };
    if (isOneOf("yes", "true", "1"))
    {
        return true;
    }
    return isOneOf("no", "false", "0") ? std::optional(false) : std::nullopt;
}

std::string NLabelTexts::Join(const std::vector<std::string>& parts)
{
    std::string text;
    for (const std::string& part : parts)
    {
        text += &part == &parts.front() ? "" : ";";
        for (const char c : part)
        {
            text += c == ';' || c == '\\' ? "\\" : "";
            text += c;
        }
    }
    return text;
}

std::vector<std::string> NLabelTexts::Split(std::string_view text)
{
    std::vector<std::string> parts;
    if (!text.empty())
    {
        parts.emplace_back();
    }
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        const bool isEscaped =
            text[i] == '\\' && i + 1 < text.size() && (text[i + 1] == ';' || text[i + 1] == '\\');
        if (isEscaped)
        {
            parts.back() += text[++i];
        }
        else if (text[i] == ';')
        {
            parts.emplace_back();
        }
        else
        {
            parts.back() += text[i];
        }
    }
    return parts;
}

std::string_view NLabelTexts::Trimmed(std::string_view text)
{
    const auto first = text.find_first_not_of(" \t");
    return first == std::string_view::npos
               ? std::string_view()
               : text.substr(first, text.find_last_not_of(" \t") - first + 1);
}
