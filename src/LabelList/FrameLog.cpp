// SPDX-License-Identifier: MIT
#include "LabelList/FrameLog.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <optional>

using e_Line = CFrameLogReader::e_Line;

namespace
{
constexpr std::size_t kLongestLine = 4096;
constexpr UINT32 kClassicalBytes = 8;
constexpr UINT32 kMaxCode = 15; ///< of a length
constexpr INT64 kSecond = 1'000'000'000;
constexpr INT64 kLatest = 9'000'000'000; ///< second that a time can lie in

/** The words of a line, between blanks. */
class CWords
{
public:
    explicit CWords(std::string_view line) : m_rest(line) { SkipBlanks(); }

    /** The next word, empty at the end. */
    std::string_view Next()
    {
        const auto end = std::find_if(m_rest.begin(), m_rest.end(), IsBlank);
        const auto length = static_cast<std::size_t>(end - m_rest.begin());
        const std::string_view word = m_rest.substr(0, length);
        m_rest.remove_prefix(length);
        SkipBlanks();
        return word;
    }
    /** What is left, without blanks in front. */
    std::string_view Rest() const { return m_rest; }

private:
    static bool IsBlank(char c) { return c == ' ' || c == '\t'; }

    void SkipBlanks()
    {
        const auto end = std::find_if_not(m_rest.begin(), m_rest.end(), IsBlank);
        m_rest.remove_prefix(static_cast<std::size_t>(end - m_rest.begin()));
    }

    std::string_view m_rest;
};

std::optional<UINT32> ReadNumber(std::string_view text, int base)
{
    UINT32 number = 0;
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, number, base);
    return read.ec == std::errc() && read.ptr == end ? std::optional(number) : std::nullopt;
}

std::optional<UINT32> ReadUpTo(UINT32 highest, std::string_view text, int base)
{
    const auto number = ReadNumber(text, base);
    return number && *number <= highest ? number : std::nullopt;
}

/** "1436509052.249713" in nanoseconds; digits behind the ninth do not count. */
std::optional<INT64> ReadSeconds(std::string_view text)
{
    const std::size_t point = std::min(text.find('.'), text.size());
    INT64 seconds = 0;
    const auto read = std::from_chars(text.data(), text.data() + point, seconds);
    if (read.ec != std::errc() || read.ptr != text.data() + point || seconds < 0 ||
        seconds > kLatest)
    {
        return std::nullopt;
    }
    INT64 nanoseconds = 0;
    INT64 digit = kSecond;
    for (const char c : text.substr(std::min(point + 1, text.size())))
    {
        if (c < '0' || c > '9')
        {
            return std::nullopt;
        }
        digit /= 10;
        nanoseconds += digit * (c - '0');
    }
    return seconds * kSecond + nanoseconds;
}

/** "2015-07-10 06:17:32.249713" as of UTC. */
std::optional<INT64> ReadDate(std::string_view text)
{
    constexpr std::size_t kSeconds = 17; // where they stand
    const auto number = [text](std::size_t first, std::size_t count, UINT32 highest)
    { return ReadUpTo(highest, text.substr(first, count), 10); };
    if (text.size() < kSeconds + 2 || text[4] != '-' || text[7] != '-' || text[13] != ':' ||
        text[16] != ':')
    {
        return std::nullopt;
    }
    const auto year = number(0, 4, 2200), month = number(5, 2, 12), day = number(8, 2, 31);
    const auto hour = number(11, 2, 23), minute = number(14, 2, 59);
    const auto seconds = ReadSeconds(text.substr(kSeconds));
    if (!year || !month || !day || !hour || !minute || !seconds)
    {
        return std::nullopt;
    }
    const std::chrono::year_month_day date{std::chrono::year(static_cast<int>(*year)),
                                           std::chrono::month(*month), std::chrono::day(*day)};
    const INT64 days = std::chrono::sys_days(date).time_since_epoch().count();
    const INT64 minutes = (days * 24 + *hour) * 60 + *minute;
    return date.ok() && days >= 0 ? std::optional(minutes * 60 * kSecond + *seconds) : std::nullopt;
}

int HexDigit(char c)
{
    return c >= '0' && c <= '9'   ? c - '0'
           : c >= 'A' && c <= 'F' ? c - 'A' + 10
           : c >= 'a' && c <= 'f' ? c - 'a' + 10
                                  : -1;
}

/** The byte that a text begins with; negative for none. */
int HexByte(std::string_view text)
{
    const int upper = text.size() < 2 ? -1 : HexDigit(text[0]);
    const int lower = text.size() < 2 ? -1 : HexDigit(text[1]);
    return upper < 0 || lower < 0 ? -1 : 16 * upper + lower;
}

bool SetIdentifier(const std::optional<UINT32>& number, bool isExtended, KW_LoggedFrame& frame)
{
    constexpr UINT32 kStandard = 0x7ff;
    constexpr UINT32 kExtended = 0x1fffffff;
    frame.identifier = number.value_or(0);
    frame.isExtended = isExtended;
    return number && *number <= (isExtended ? kExtended : kStandard);
}

/** candump's: three digits, or eight of an extended one or of an error. */
bool ReadIdentifier(std::string_view text, KW_LoggedFrame& frame)
{
    constexpr UINT32 kError = 0x20000000;
    const bool isLong = text.size() == 8;
    auto number = isLong || text.size() == 3 ? ReadNumber(text, 16) : std::nullopt;
    if (number && (*number & kError) != 0)
    {
        frame.isError = true;
        number = *number & ~kError;
    }
    return SetIdentifier(number, isLong, frame);
}

UINT32 LongestOf(const KW_LoggedFrame& frame)
{
    return frame.isFd ? static_cast<UINT32>(KW_LoggedFrame::kLongest) : kClassicalBytes;
}

/** "11223344" or "11.22.33.44"; behind eight bytes also "_9" to "_F", a length code that means
   eight bytes, too. */
bool ReadDigits(std::string_view text, KW_LoggedFrame& frame)
{
    frame.length = 0;
    while (!text.empty() && frame.length < LongestOf(frame))
    {
        const int byte = HexByte(text);
        if (byte < 0)
        {
            return false;
        }
        frame.bytes[frame.length++] = static_cast<UINT8>(byte);
        const bool isParted = text.size() > 2 && text[2] == '.';
        text.remove_prefix(isParted ? 3 : 2);
    }
    const bool hasCode = text.size() == 2 && text[0] == '_' && frame.length == kClassicalBytes;
    return text.empty() || (hasCode && HexDigit(text[1]) > static_cast<int>(kClassicalBytes));
}

/** "123#11223344", "123#R4", "123##1112233". */
bool ReadCompact(std::string_view text, KW_LoggedFrame& frame)
{
    const std::size_t sign = std::min(text.find('#'), text.size() - 1);
    std::string_view data = text.substr(sign + 1);
    if (!ReadIdentifier(text.substr(0, sign), frame))
    {
        return false;
    }
    frame.isRemote = !data.empty() && data[0] == 'R';
    frame.isFd = !data.empty() && data[0] == '#';
    if (frame.isRemote)
    {
        const auto length = data.size() == 1 ? 0 : ReadUpTo(kMaxCode, data.substr(1), 16);
        frame.length = length.value_or(0);
        return length.has_value();
    }
    if (frame.isFd)
    {
        const bool hasFlags = data.size() > 1 && HexDigit(data[1]) >= 0;
        return hasFlags && ReadDigits(data.substr(2), frame);
    }
    return ReadDigits(data, frame);
}

/** Bytes as words of their own. */
bool ReadBytes(CWords& words, int base, KW_LoggedFrame& frame)
{
    for (UINT32 i = 0; i < frame.length; ++i)
    {
        constexpr UINT32 kByte = 0xff;
        const auto byte = ReadUpTo(kByte, words.Next(), base);
        if (!byte)
        {
            return false;
        }
        frame.bytes[i] = static_cast<UINT8>(*byte);
    }
    return true;
}

/** "123   [8]  11 22 33 44 55 66 77 88", behind which may stand the bytes as characters or what
    kind of frame it is. */
bool ReadPrinted(std::string_view identifier, CWords words, KW_LoggedFrame& frame)
{
    const std::string_view length = words.Next();
    const bool isBracketed = length.size() >= 3 && length.front() == '[' && length.back() == ']';
    if (!isBracketed || !ReadIdentifier(identifier, frame))
    {
        return false;
    }
    frame.isRemote = words.Rest() == "remote request";
    frame.isFd = length.size() == 4 && !frame.isRemote;
    const auto number = ReadUpTo(frame.isRemote ? kMaxCode : LongestOf(frame),
                                 length.substr(1, length.size() - 2), 10);
    frame.length = number.value_or(0);
    if (!number || frame.isRemote)
    {
        return number.has_value();
    }
    constexpr int kHex = 16;
    const bool isRead = ReadBytes(words, kHex, frame);
    const std::string_view rest = words.Rest();
    return isRead && (rest.empty() || rest.front() == '\'' || rest == "ERRORFRAME");
}

/** ".asc" has an "x" behind extended ones. */
bool ReadAscIdentifier(std::string_view text, int base, KW_LoggedFrame& frame)
{
    const bool isExtended = !text.empty() && text.back() == 'x';
    return SetIdentifier(ReadNumber(text.substr(0, text.size() - (isExtended ? 1 : 0)), base),
                         isExtended, frame);
}

e_Line FrameIf(bool isRead)
{
    return isRead ? e_Line::Frame : e_Line::NotUnderstood;
}

/** What "Rx" or "Tx" stands in front of: "d 8 11 22 33 44 55 66 77 88", "r", "r 8". */
bool ReadAscData(CWords words, int base, KW_LoggedFrame& frame)
{
    const std::string_view kind = words.Next();
    const auto code = ReadUpTo(kMaxCode, words.Next(), base);
    frame.isRemote = kind == "r";
    if (frame.isRemote)
    {
        frame.length = code.value_or(0);
        return true;
    }
    frame.length = std::min(code.value_or(0), kClassicalBytes);
    return kind == "d" && code && ReadBytes(words, base, frame);
}

/** What stands behind "1 123": a frame that was on the bus, or another event. */
e_Line ReadAscClassical(std::string_view identifier, CWords words, int base, KW_LoggedFrame& frame)
{
    if (identifier == "ErrorFrame")
    {
        frame.isError = true;
        return e_Line::Frame;
    }
    const bool hasIdentifier = ReadAscIdentifier(identifier, base, frame);
    const std::string_view direction = words.Next();
    if (direction == "Rx" || direction == "Tx")
    {
        return FrameIf(hasIdentifier && ReadAscData(words, base, frame));
    }
    return hasIdentifier && direction.empty() ? e_Line::NotUnderstood : e_Line::Nothing;
}

/** What stands behind "CANFD": "1 Rx 123 name 1 0 9 12 …", of which the name may be missing, then
    times and flags; also classical frames. */
e_Line ReadAscFd(CWords words, int base, KW_LoggedFrame& frame)
{
    constexpr UINT32 kRemoteFlag = 0x10;
    constexpr UINT32 kFdFlag = 0x1000;
    frame.bus = words.Next();
    const std::string_view direction = words.Next();
    if (direction == "TxRq")
    {
        return e_Line::Nothing;
    }
    const bool hasIdentifier = ReadAscIdentifier(words.Next(), base, frame);
    std::string_view bitRateSwitch = words.Next();
    if (bitRateSwitch != "0" && bitRateSwitch != "1")
    {
        bitRateSwitch = words.Next();
    }
    const auto errorState = ReadUpTo(1, words.Next(), base);
    const auto code = ReadUpTo(kMaxCode, words.Next(), base);
    const auto length = ReadUpTo(KW_LoggedFrame::kLongest, words.Next(), 10);
    if (!hasIdentifier || !ReadUpTo(1, bitRateSwitch, base) || !errorState || !code || !length)
    {
        return e_Line::NotUnderstood;
    }
    frame.length = *length;
    const bool isRead = ReadBytes(words, base, frame);
    words.Next(); // how long it took
    words.Next(); // how many bits it had
    const UINT32 flags = ReadNumber(words.Next(), 16).value_or(kFdFlag);
    frame.isRemote = (flags & kRemoteFlag) != 0;
    frame.isFd = (flags & kFdFlag) != 0 && !frame.isRemote;
    const bool fits = frame.isRemote || *length <= LongestOf(frame);
    frame.length = frame.isRemote ? *code : *length;
    return FrameIf(isRead && fits && (direction == "Rx" || direction == "Tx"));
}

bool BeginsWithDigit(std::string_view text)
{
    return !text.empty() && text.front() >= '0' && text.front() <= '9';
}
} // namespace

e_Line CFrameLogReader::Read(std::string_view line, KW_LoggedFrame& frame) noexcept
{
    while (!line.empty() && (line.back() == '\n' || line.back() == '\r'))
    {
        line.remove_suffix(1);
    }
    CWords words(line);
    // The explanation of an error frame by `candump -e`.
    const bool isExplanation = m_wasError && !line.empty() && line.front() == '\t';
    if (words.Rest().empty() || isExplanation)
    {
        return e_Line::Nothing;
    }
    frame.hasTime = frame.isExtended = frame.isFd = frame.isRemote = frame.isError = false;
    frame.nanoseconds = 0;
    frame.identifier = frame.length = 0;
    const e_Line kind = line.size() > kLongestLine      ? e_Line::NotUnderstood
                        : ReadHeader(words.Rest())      ? e_Line::Nothing
                        : BeginsWithDigit(words.Rest()) ? ReadAsc(words.Rest(), frame)
                                                        : ReadCandump(words.Rest(), frame);
    m_wasError = kind == e_Line::Frame && frame.isError;
    return kind;
}

bool CFrameLogReader::ReadHeader(std::string_view line) noexcept
{
    const auto begins = [line](std::string_view text)
    { return line.substr(0, text.size()) == text; };
    if (begins("base "))
    {
        m_base = line.find("dec") != std::string_view::npos ? 10 : 16;
        m_isRelative = line.find("relative") != std::string_view::npos;
        return true;
    }
    return begins("//") || begins("date ") || begins("Begin Trigger") || begins("End Trigger") ||
           begins("internal events logged") || begins("no internal events logged");
}

e_Line CFrameLogReader::ReadCandump(std::string_view line, KW_LoggedFrame& frame) noexcept
{
    const std::size_t end = line.front() == '(' ? line.find(')') : 0;
    if (end == std::string_view::npos)
    {
        return e_Line::NotUnderstood;
    }
    if (end > 0)
    {
        const std::string_view text = line.substr(1, end - 1);
        const auto time = text.find('-') < text.size() ? ReadDate(text) : ReadSeconds(text);
        frame.hasTime = time.has_value();
        frame.nanoseconds = time.value_or(0);
        if (!time)
        {
            return e_Line::NotUnderstood;
        }
    }
    CWords words(line.substr(end > 0 ? end + 1 : 0));
    frame.bus = words.Next();
    std::string_view next = words.Next();
    if (next.find('#') < next.size())
    {
        const std::string_view direction = words.Rest();
        const bool isWhole = direction.empty() || direction == "R" || direction == "T";
        return FrameIf(isWhole && ReadCompact(next, frame));
    }
    if (next == "RX" || next == "TX")
    {
        words.Next(); // bit rate switch
        words.Next(); // error state
        next = words.Next();
    }
    return FrameIf(ReadPrinted(next, words, frame));
}

e_Line CFrameLogReader::ReadAsc(std::string_view line, KW_LoggedFrame& frame) noexcept
{
    CWords words(line);
    const auto time = ReadSeconds(words.Next());
    if (!time || (m_isRelative && *time >= (kLatest + 1) * kSecond - m_nanoseconds))
    {
        return e_Line::NotUnderstood;
    }
    m_nanoseconds = *time + (m_isRelative ? m_nanoseconds : 0);
    frame.hasTime = true;
    frame.nanoseconds = m_nanoseconds;
    frame.bus = words.Next();
    if (frame.bus == "CANFD")
    {
        return ReadAscFd(words, m_base, frame);
    }
    if (!ReadNumber(frame.bus, 10))
    {
        return frame.bus.empty() ? e_Line::NotUnderstood : e_Line::Nothing;
    }
    const std::string_view identifier = words.Next();
    return identifier.empty() ? e_Line::NotUnderstood
                              : ReadAscClassical(identifier, words, m_base, frame);
}
