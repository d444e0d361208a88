// SPDX-License-Identifier: MIT
#include "FrameText.h"

#include <bit>
#include <charconv>
#include <cmath>

namespace
{
using t_Message = CLabelListDecoder::t_Message;
using t_Signal = CLabelListDecoder::t_Signal;
using t_Value = CLabelListDecoder::t_Value;

constexpr UINT32 kBitsOfRaw = 64;

template <typename TNumber>
void AddWhole(TNumber number, std::string& text)
{
    char digits[24];
    const auto end = std::to_chars(std::begin(digits), std::end(digits), number).ptr;
    text.append(digits, static_cast<std::size_t>(end - digits));
}

void AddValue(double value, std::string& text)
{
    CLabelListDecoder::t_TextBuffer buffer;
    text += CLabelListDecoder::Format(value, buffer);
}

void AddRaw(const t_Value& value, const t_FrameTexts::t_SignalTexts& texts, std::string& text)
{
    if (texts.isSigned)
    {
        AddWhole(std::bit_cast<INT64>(value.raw << texts.unusedBits) >> texts.unusedBits, text);
    }
    else
    {
        AddWhole(value.raw, text);
    }
}

/** "123" with the digits of its length, as logs have it. */
std::string GetHexadecimal(UINT32 identifier, UINT32 identifierBits)
{
    char digits[16];
    const auto end = std::to_chars(std::begin(digits), std::end(digits), identifier, 16).ptr;
    std::string text(digits, static_cast<std::size_t>(end - digits));
    for (char& digit : text)
    {
        digit = static_cast<char>(digit >= 'a' ? digit - 'a' + 'A' : digit);
    }
    const std::size_t width = (identifierBits + 3) / 4;
    return std::string(width > text.size() ? width - text.size() : 0, '0') + text;
}

/** The texts of the signals, of which a form has the names and units as it writes them. */
template <typename TMake>
t_FrameTexts PrepareSignals(const t_Message& message, std::string head, const TMake& make)
{
    t_FrameTexts texts{std::move(head), {}};
    for (const t_Signal& signal : CLabelListDecoder::SignalsOf(message))
    {
        const auto [before, after] = make(signal);
        texts.signalTexts.push_back(
            {before, after, signal.valueType == eKW_SIGNAL_TRANSLATION_VALUE_TYPE_SIGNED_INT,
             kBitsOfRaw - signal.bitLength});
    }
    return texts;
}

const t_FrameTexts::t_SignalTexts& TextsOf(const t_DecodedFrame& frame, const t_FrameTexts& texts,
                                           const t_Value& value)
{
    const t_Signal* const first = CLabelListDecoder::SignalsOf(*frame.message).data();
    return texts.signalTexts[static_cast<std::size_t>(value.signal - first)];
}

/** Control characters, which would break lines and columns, become blanks. */
std::string OneLine(std::string text)
{
    for (char& c : text)
    {
        c = static_cast<unsigned char>(c) < 0x20 || c == 0x7F ? ' ' : c;
    }
    return text;
}

std::size_t WidthOf(std::string_view text)
{
    std::size_t width = 0;
    for (const char c : text)
    {
        width += (static_cast<unsigned char>(c) & 0xC0U) != 0x80U ? 1U : 0U;
    }
    return width;
}

void Pad(std::size_t used, std::size_t width, std::string& text)
{
    text.append(used < width ? width - used : 0, ' ');
}

class CFrameTable : public CFrameText
{
public:
    explicit CFrameTable(std::size_t messageWidth) : m_messageWidth(messageWidth) {}

    t_FrameTexts Prepare(const t_Message& message, UINT32 identifier,
                         UINT32 identifierBits) const override
    {
        constexpr std::size_t kIdentifierWidth = 8;
        std::string head;
        const std::string digits = GetHexadecimal(identifier, identifierBits);
        Pad(digits.size(), kIdentifierWidth, head);
        const std::string name = OneLine(CLabelListDecoder::NameOf(message));
        head += digits + "  " + name;
        Pad(WidthOf(name), m_messageWidth, head);
        return PrepareSignals(
            message, head,
            [](const t_Signal& signal)
            {
                return std::pair(OneLine(signal.name) + " = ",
                                 signal.unit.empty() ? std::string() : ' ' + OneLine(signal.unit));
            });
    }

    void Add(const t_DecodedFrame& frame, const t_FrameTexts& texts,
             std::string& text) const override
    {
        constexpr std::size_t kTimeWidth = 17; // of seconds since 1970 with microseconds
        constexpr std::size_t kBusWidth = 5;
        Pad(frame.time.size(), kTimeWidth, text);
        text += frame.time;
        text += "  ";
        text += frame.bus;
        Pad(frame.bus.size(), kBusWidth, text);
        text += "  ";
        text += texts.head;
        const char* separator = "  ";
        for (const t_Value& value : frame.values)
        {
            text += separator;
            separator = "; ";
            AddSignal(value, TextsOf(frame, texts, value), text);
        }
        text.erase(text.find_last_not_of(' ') + 1);
        text += '\n';
    }

private:
    static void AddSignal(const t_Value& value, const t_FrameTexts::t_SignalTexts& texts,
                          std::string& text)
    {
        text += texts.before;
        if (value.signal->isReadable)
        {
            AddValue(value.value, text);
        }
        else
        {
            text += "???";
        }
        text += texts.after;
        if (value.label != nullptr)
        {
            text += " (";
            text += OneLine(*value.label);
            text += ')';
        }
    }

    std::size_t m_messageWidth;
};

/** A field as CSV has it: in quotes where a comma, a quote or a line end stands in it. */
void AddField(std::string_view field, std::string& text)
{
    if (field.find_first_of(",\"\r\n") == std::string_view::npos)
    {
        text += field;
        return;
    }
    text += '"';
    for (const char c : field)
    {
        text.append(c == '"' ? 2 : 1, c);
    }
    text += '"';
}

std::string Field(std::string_view field)
{
    std::string text;
    AddField(field, text);
    return text;
}

class CFrameCsv : public CFrameText
{
public:
    std::string GetHead() const override
    {
        return "time,bus,id,message,signal,raw,value,unit,text\n";
    }

    t_FrameTexts Prepare(const t_Message& message, UINT32 identifier,
                         UINT32 identifierBits) const override
    {
        return PrepareSignals(
            message,
            ",0x" + GetHexadecimal(identifier, identifierBits) + ',' +
                Field(CLabelListDecoder::NameOf(message)) + ',',
            [](const t_Signal& signal)
            { return std::pair(Field(signal.name) + ',', ',' + Field(signal.unit) + ','); });
    }

    void Add(const t_DecodedFrame& frame, const t_FrameTexts& texts,
             std::string& text) const override
    {
        const std::size_t begin = text.size();
        text += frame.time;
        text += ',';
        AddField(frame.bus, text);
        text += texts.head;
        const std::size_t length = text.size() - begin;
        for (std::size_t i = 0; i < frame.values.size(); ++i)
        {
            if (i > 0)
            {
                text.append(text, begin, length);
            }
            AddSignal(frame.values[i], TextsOf(frame, texts, frame.values[i]), text);
        }
        if (frame.values.empty())
        {
            text.resize(begin);
        }
    }

private:
    static void AddSignal(const t_Value& value, const t_FrameTexts::t_SignalTexts& texts,
                          std::string& text)
    {
        text += texts.before;
        AddRaw(value, texts, text);
        text += ',';
        AddValue(value.value, text);
        text += texts.after;
        if (value.label != nullptr)
        {
            AddField(*value.label, text);
        }
        text += '\n';
    }
};

/** A text as JSON has it. */
void AddString(std::string_view string, std::string& text)
{
    constexpr char kDigits[] = "0123456789abcdef";
    text += '"';
    for (const char c : string)
    {
        const auto code = static_cast<unsigned char>(c);
        if (code < 0x20)
        {
            text += "\\u00";
            text += kDigits[code >> 4U];
            text += kDigits[code & 15U];
            continue;
        }
        text.append(c == '"' || c == '\\' ? 1 : 0, '\\');
        text += c;
    }
    text += '"';
}

std::string String(std::string_view string)
{
    std::string text;
    AddString(string, text);
    return text;
}

class CFrameJson : public CFrameText
{
public:
    t_FrameTexts Prepare(const t_Message& message, UINT32 identifier,
                         UINT32 identifierBits) const override
    {
        constexpr UINT32 kStandardBits = 11;
        std::string head = ",\"id\":";
        AddWhole(identifier, head);
        head += identifierBits > kStandardBits ? ",\"extended\":true" : ",\"extended\":false";
        head += ",\"message\":" + String(CLabelListDecoder::NameOf(message)) + ",\"signals\":[";
        return PrepareSignals(message, head,
                              [](const t_Signal& signal)
                              {
                                  return std::pair("{\"name\":" + String(signal.name) + ",\"raw\":",
                                                   ",\"unit\":" + String(signal.unit) +
                                                       ",\"text\":");
                              });
    }

    void Add(const t_DecodedFrame& frame, const t_FrameTexts& texts,
             std::string& text) const override
    {
        text += "{\"time\":";
        text += frame.time.empty() ? "null" : frame.time;
        text += ",\"bus\":";
        AddString(frame.bus, text);
        text += texts.head;
        for (const t_Value& value : frame.values)
        {
            AddSignal(value, TextsOf(frame, texts, value), text);
            text += &value == &frame.values.back() ? "}" : "},";
        }
        text += "]}\n";
    }

private:
    static void AddSignal(const t_Value& value, const t_FrameTexts::t_SignalTexts& texts,
                          std::string& text)
    {
        text += texts.before;
        AddRaw(value, texts, text);
        text += ",\"value\":";
        if (std::isfinite(value.value))
        {
            AddValue(value.value, text);
        }
        else
        {
            text += "null";
        }
        text += texts.after;
        AddString(value.label != nullptr ? std::string_view(*value.label) : std::string_view(),
                  text);
    }
};
} // namespace

std::unique_ptr<CFrameText> MakeFrameTable(std::size_t messageWidth)
{
    return std::make_unique<CFrameTable>(messageWidth);
}

std::unique_ptr<CFrameText> MakeFrameCsv()
{
    return std::make_unique<CFrameCsv>();
}

std::unique_ptr<CFrameText> MakeFrameJson()
{
    return std::make_unique<CFrameJson>();
}
