// SPDX-License-Identifier: MIT
#include "LabelList/DbcNames.h"
#include "LabelList/DbcReader.h"
#include "LabelList/LabelBounds.h"
#include "LabelList/LabelConditions.h"

#include <algorithm>
#include <charconv>

namespace
{
/** Names with blanks that a message's signals are looked for by: each costs every look. */
constexpr std::size_t kMaxOddNames = 64;

/** "M", "m3" or "m3M"; "m" lacks its number. */
bool IsMark(std::string_view word)
{
    if (word == "M")
    {
        return true;
    }
    if (word.empty() || word.front() != 'm')
    {
        return false;
    }
    word.remove_prefix(1);
    word.remove_suffix(!word.empty() && word.back() == 'M' ? 1 : 0);
    return std::all_of(word.begin(), word.end(), [](char c) { return c >= '0' && c <= '9'; });
}

bool IsOdd(std::string_view name)
{
    return name.find_first_of(" \t,") != std::string_view::npos;
}
} // namespace

t_DbcSignal* NDbcDraft::FindSignal(t_DbcMessage& message, std::string_view name)
{
    auto& order = message.byName;
    const auto nameOf = [&](UINT32 i) { return message.signalList[i].name; };
    if (order.size() != message.signalList.size())
    {
        order.clear();
        for (UINT32 i = 0; i < message.signalList.size(); ++i)
        {
            order.push_back(i);
        }
        std::sort(order.begin(), order.end(),
                  [&](UINT32 a, UINT32 b)
                  {
                      const int compared = nameOf(a).compare(nameOf(b));
                      return compared < 0 || (compared == 0 && a < b);
                  });
    }
    const auto found =
        std::lower_bound(order.begin(), order.end(), name,
                         [&](UINT32 i, std::string_view wanted) { return nameOf(i) < wanted; });
    return found != order.end() && nameOf(*found) == name ? &message.signalList[*found] : nullptr;
}

bool CDbcReader::ReadMessage()
{
    if (m_draft.messages.size() >= NLabelBounds::kMaxMessages)
    {
        m_isBroken = true;
        return Fail(m_keyword.place,
                    QString::fromLatin1("more than %1 messages").arg(NLabelBounds::kMaxMessages));
    }
    if (CDbcLexer(m_lexer).TakeDigits() == "3221225472")
    {
        return KeepSignalsWithoutMessage();
    }
    m_isMessage = true;
    m_draft.messages.emplace_back();
    t_DbcMessage& message = m_draft.messages.back();
    message.place = m_keyword.place;
    message.isBad = !ReadMessageHead(message);
    return !message.isBad;
}

/** "BO_ number name: length sender". */
bool CDbcReader::ReadMessageHead(t_DbcMessage& message)
{
    if (!ReadNumber(message))
    {
        return false;
    }
    m_draft.byNumber.emplace(message.number, m_draft.messages.size() - 1);
    message.name = m_lexer.TakeToColon();
    if (message.name.empty())
    {
        return FailExpected(QString::fromLatin1("the name of a message and a \":\""));
    }
    if (!ExpectSign(':') || !ReadInteger(message.length, "the length of a message"))
    {
        return false;
    }
    const t_DbcToken next = m_lexer.Peek();
    if (next.startsLine || next.kind == e_DbcToken::End || next.IsWord("SG_"))
    {
        Warn(next.place,
             QString::fromLatin1("message %1: the sender is missing; it is taken for nobody")
                 .arg(Shown(message.name)));
        return true;
    }
    return ReadNames(message.details.senders);
}

bool CDbcReader::ReadNumber(t_DbcMessage& message)
{
    const t_TextPlace place = m_lexer.Peek().place;
    UINT32 inFile = 0;
    if (!ReadInteger(inFile, "the number of a message"))
    {
        return false;
    }
    message.number = NDbcDraft::NumberOf(inFile);
    const UINT32 identifier = inFile & ~NDbcDraft::kExtended;
    if (identifier > NDbcDraft::kLastExtended)
    {
        return Fail(place,
                    QString::fromLatin1("identifier %1 has more than 29 bits").arg(identifier));
    }
    if (message.number != inFile)
    {
        Warn(place, QString::fromLatin1("identifier %1 has more than 11 bits; it is taken for an "
                                        "extended one, whose number is %2")
                        .arg(inFile)
                        .arg(message.number));
    }
    return true;
}

/** Names of nodes with commas between them, up to the end of the line or the statement. The word
   for nobody is none. */
bool CDbcReader::ReadNames(std::vector<std::string>& names)
{
    bool isFirst = true;
    bool isComma = false;
    for (t_DbcToken next = m_lexer.Peek(); next.kind != e_DbcToken::End; next = m_lexer.Peek())
    {
        if (m_lexer.TakeSign(','))
        {
            if (isComma || isFirst)
            {
                Warn(next.place, QString::fromLatin1("a name is missing before the \",\""));
            }
            isComma = true;
            isFirst = false;
            continue;
        }
        const bool isName =
            !(next.startsLine && !isComma) && !StartsStatement(next) && CDbcLexer::StartsName(next);
        const std::string_view name = isName ? m_lexer.TakeName() : std::string_view();
        if (name.empty())
        {
            break;
        }
        if (!isFirst && !isComma)
        {
            Warn(next.place,
                 QString::fromLatin1("the \",\" before %1 is missing").arg(Shown(name)));
        }
        isFirst = false;
        isComma = false;
        if (!AddName(names, name))
        {
            return false;
        }
    }
    return true;
}

bool CDbcReader::AddName(std::vector<std::string>& names, std::string_view name)
{
    if (name == NDbcNames::kNobody)
    {
        return true;
    }
    names.push_back(Name(name));
    return CountRecord();
}

/** "SG_ name mark : start|length@order sign (factor,offset) [minimum|maximum] "unit" receivers". */
bool CDbcReader::ReadSignal()
{
    if (!m_isMessage)
    {
        return Fail(m_keyword.place, QString::fromLatin1("a signal without a message before it"));
    }
    t_DbcMessage& message = m_draft.messages.back();
    t_DbcSignal signal;
    signal.place = m_keyword.place;
    const bool isRead = ReadSignalName(signal) && ReadBits(signal) && ReadScaling(signal) &&
                        ReadUnit(signal) && ReadReceivers(signal) &&
                        AddSignal(message, std::move(signal));
    message.isBad = message.isBad || !isRead;
    return isRead;
}

bool CDbcReader::ReadSignalName(t_DbcSignal& signal)
{
    const t_TextPlace place = m_lexer.Peek().place;
    const std::string_view words = m_lexer.TakeToColon();
    if (words.empty())
    {
        return FailExpected(QString::fromLatin1("the name of a signal and a \":\""));
    }
    signal.name = words;
    const std::size_t blank = words.find_last_of(" \t");
    const std::string_view mark =
        blank == std::string_view::npos ? std::string_view() : words.substr(blank + 1);
    if (IsMark(mark))
    {
        signal.name = words.substr(0, words.find_last_not_of(" \t", blank) + 1);
        return ReadMark(mark, place, signal) && ExpectSign(':');
    }
    return ExpectSign(':');
}

bool CDbcReader::ReadMark(std::string_view mark, t_TextPlace place, t_DbcSignal& signal)
{
    signal.details.isMultiplexor = mark.back() == 'M';
    if (mark == "M")
    {
        return true;
    }
    signal.isMultiplexed = true;
    mark.remove_prefix(1);
    mark.remove_suffix(signal.details.isMultiplexor ? 1 : 0);
    if (mark.empty())
    {
        Warn(place,
             QString::fromLatin1("signal %1: the mark of a multiplexed signal has no number; 0 is "
                                 "taken")
                 .arg(Shown(signal.name)));
        return true;
    }
    const char* const end = mark.data() + mark.size();
    return std::from_chars(mark.data(), end, signal.page).ec == std::errc() ||
           Fail(place, QString::fromLatin1("signal %1: multiplexor value %2 is out of range")
                           .arg(Shown(signal.name), Shown(mark)));
}

bool CDbcReader::ReadBits(t_DbcSignal& signal)
{
    UINT32 order = 0;
    if (!ReadInteger(signal.startBit, "a start bit") || !ExpectSign('|') ||
        !ReadInteger(signal.bitLength, "a length in bits") || !ExpectSign('@'))
    {
        return false;
    }
    const t_DbcToken token = m_lexer.Peek();
    if (!ReadInteger(order, "a byte order"))
    {
        return false;
    }
    if (order > 1)
    {
        return Fail(token.place,
                    QString::fromLatin1("byte order %1: it is 0 for big-endian or 1 for "
                                        "little-endian signals")
                        .arg(order));
    }
    signal.isBigEndian = order == 0;
    const std::string_view sign = m_lexer.TakeCharacter("+-");
    if (sign.empty())
    {
        return FailExpected(QString::fromLatin1("\"+\" or \"-\" behind the byte order"));
    }
    signal.isSigned = sign == "-";
    return true;
}

bool CDbcReader::ReadScaling(t_DbcSignal& signal)
{
    return ExpectSign('(') && ReadDouble(signal.factor) && ExpectSign(',') &&
           ReadDouble(signal.offset) && ExpectSign(')') && ExpectSign('[') &&
           ReadDouble(signal.minimum) && ExpectSign('|') && ReadDouble(signal.maximum) &&
           ExpectSign(']');
}

/** A unit in several lines is a quote without its partner. */
bool CDbcReader::ReadUnit(t_DbcSignal& signal)
{
    const t_DbcToken token = m_lexer.Peek();
    const bool isText = token.kind == e_DbcToken::Text || token.kind == e_DbcToken::OpenText;
    if (isText && token.text.find_first_of("\r\n") != std::string_view::npos)
    {
        return Fail(token.place, QString::fromLatin1("a unit has no end in its line"));
    }
    return ReadText(signal.unit, "a unit");
}

bool CDbcReader::ReadReceivers(t_DbcSignal& signal)
{
    const t_DbcToken next = m_lexer.Peek();
    if (next.startsLine || next.kind == e_DbcToken::End || next.IsWord("SG_"))
    {
        Warn(next.place,
             QString::fromLatin1("signal %1: the receivers are missing; nobody is taken")
                 .arg(Shown(signal.name)));
        return true;
    }
    return ReadNames(signal.details.receivers);
}

bool CDbcReader::AddSignal(t_DbcMessage& message, t_DbcSignal&& signal)
{
    if (message.isBad)
    {
        return true;
    }
    if (message.signalList.size() >= NLabelBounds::kMaxSignalsPerMessage)
    {
        std::vector<t_DbcSignal>().swap(message.signalList);
        return Fail(signal.place, QString::fromLatin1("message %1: more than %2 signals")
                                      .arg(Shown(message.name))
                                      .arg(NLabelBounds::kMaxSignalsPerMessage));
    }
    if (++m_signalCount > NLabelBounds::kMaxSignals)
    {
        m_isBroken = true;
        return Fail(
            signal.place,
            QString::fromLatin1("more than %1 signals in all").arg(NLabelBounds::kMaxSignals));
    }
    if (IsOdd(signal.name) && message.oddNames.size() < kMaxOddNames)
    {
        message.oddNames.push_back(static_cast<UINT32>(message.signalList.size()));
    }
    message.signalList.push_back(std::move(signal));
    return true;
}

/** "BO_TX_BU_ number : senders;". */
bool CDbcReader::ReadSenders()
{
    t_DbcMessage* message = nullptr;
    bool isKept = false;
    if (!FindMessage(message, isKept))
    {
        return false;
    }
    if (message == nullptr)
    {
        return PassOver(isKept);
    }
    m_lexer.TakeSign(':');
    std::vector<std::string> further;
    if (!ReadNames(further))
    {
        return false;
    }
    auto& senders = message->details.senders;
    const auto usual = senders.empty() ? further.end()
                                       : std::find(further.begin(), further.end(), senders.front());
    if (usual != further.end())
    {
        further.erase(usual);
    }
    senders.insert(senders.end(), further.begin(), further.end());
    return ExpectEnd();
}

/** "SIG_VALTYPE_ number signal : 1;" for a float, 2 for a double. */
bool CDbcReader::ReadValueType()
{
    t_DbcMessage* message = nullptr;
    t_DbcSignal* signal = nullptr;
    bool isKept = false;
    if (!FindMessage(message, isKept) || (message != nullptr && !FindSignal(*message, signal)))
    {
        return false;
    }
    if (signal == nullptr)
    {
        return PassOver(isKept);
    }
    m_lexer.TakeSign(':');
    const t_TextPlace place = m_lexer.Peek().place;
    UINT32 kind = 0;
    if (!ReadInteger(kind, "0, 1 or 2 for a whole number, a float or a double"))
    {
        return false;
    }
    if (kind > 2)
    {
        return Fail(place,
                    QString::fromLatin1("%1 is no type: 0 is a whole number, 1 a float, 2 a double")
                        .arg(kind));
    }
    signal->floatKind = kind;
    return ExpectEnd();
}

/** "SG_MUL_VAL_ number signal multiplexor 0-3, 7-7;". */
bool CDbcReader::ReadPages()
{
    t_DbcMessage* message = nullptr;
    t_DbcSignal* signal = nullptr;
    t_DbcSignal* multiplexor = nullptr;
    bool isKept = false;
    if (!FindMessage(message, isKept) || (message != nullptr && !FindSignal(*message, signal)) ||
        (signal != nullptr && !FindSignal(*message, multiplexor)))
    {
        return false;
    }
    if (multiplexor == nullptr)
    {
        return PassOver(isKept);
    }
    std::vector<KW_RawRange> ranges;
    while (m_lexer.Peek().kind == e_DbcToken::Number || m_lexer.TakeSign(','))
    {
        if (!ReadPage(ranges) || !CountRecord())
        {
            return false;
        }
    }
    return TakePages(*signal, *multiplexor, std::move(ranges)) && ExpectEnd();
}

bool CDbcReader::ReadPage(std::vector<KW_RawRange>& ranges)
{
    const t_TextPlace place = m_lexer.Peek().place;
    const std::string_view first = m_lexer.TakeDigits();
    const std::string_view last = m_lexer.TakeCharacter("-").empty() ? first : m_lexer.TakeDigits();
    const auto read = [](std::string_view digits, UINT64& number)
    {
        const char* const end = digits.data() + digits.size();
        return !digits.empty() && std::from_chars(digits.data(), end, number).ec == std::errc();
    };
    KW_RawRange range;
    if (!read(first, range.first) || !read(last, range.last) || range.last < range.first)
    {
        return Fail(place, QString::fromLatin1("values of a multiplexor expected, such as 0-3"));
    }
    ranges.push_back(range);
    return true;
}

bool CDbcReader::TakePages(t_DbcSignal& signal, t_DbcSignal& multiplexor,
                           std::vector<KW_RawRange>&& ranges)
{
    const bool isItself = &signal == &multiplexor;
    if (ranges.empty() || isItself)
    {
        Warn(m_keyword.place,
             (isItself ? QString::fromLatin1(
                             "signal %1 can not select itself; the statement is left out")
                       : QString::fromLatin1("signal %1 has no values with which it is there; the "
                                             "statement is left out"))
                 .arg(Shown(signal.name)));
        return true;
    }
    auto& selectedBy = signal.details.selectedBy;
    if (!signal.multiplexor.empty() && signal.multiplexor != multiplexor.name)
    {
        Warn(m_keyword.place,
             QString::fromLatin1("signal %1 has another multiplexor already; this one "
                                 "counts")
                 .arg(Shown(signal.name)));
        selectedBy.clear();
    }
    selectedBy.insert(selectedBy.end(), ranges.begin(), ranges.end());
    signal.multiplexor = multiplexor.name;
    multiplexor.details.isMultiplexor = true;
    return true;
}
