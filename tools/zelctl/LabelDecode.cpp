// SPDX-License-Identifier: MIT
#include "EnumText.h"
#include "FrameText.h"
#include "LabelCommands.h"
#include "LabelList/FrameLog.h"
#include "LabelText.h"
#include "LogInput.h"
#include "NearestNames.h"

#include <QSet>
#include <algorithm>
#include <charconv>
#include <unordered_map>

namespace
{
constexpr char kLabelDecodeFooter[] =
    "Takes frames as candump logs and prints them, and .asc, from a file or while they arrive.\n"
    "Each frame is a line of a table; with --csv each signal is a line, with the columns\n"
    "  time,bus,id,message,signal,raw,value,unit,text\n"
    "and with --json each frame is an object in a line:\n"
    "  {\"time\", \"bus\", \"id\", \"extended\", \"message\",\n"
    "   \"signals\": [{\"name\", \"raw\", \"value\", \"unit\", \"text\"}]}\n"
    "Times are seconds with the digits of the log, null where it has none. Raw is the number that\n"
    "the bits are, signed or not (of floats their bits), text its label; a value that is no "
    "finite\n"
    "number is null. In CSV an identifier is 0x with 3 digits, an extended one with 8.\n"
    "What the list does not name, remote and error frames, and lines that are none are counted on\n"
    "the standard error.\n"
    "Exit status 0: decoded; 1: with reports on the list or lines not understood; 2: refused.\n"
    "\n"
    "Examples:\n"
    "  candump can0 | zelctl labels decode --list vehicle.dbc\n"
    "  zelctl labels decode --list examples/labels/vehicle.dbc examples/labels/drive.log\n"
    "  zelctl labels decode --list vehicle.dbc FILE --csv --message EngineData\n"
    "  zelctl --json labels decode --list vehicle.dbc FILE --signal EngineData/EngineSpeed";

constexpr UINT32 kStandardBits = 11;
constexpr UINT32 kExtendedBits = 29;

/** What was found in a log, beside the frames that were decoded. */
struct t_LogCounts
{
    UINT64 frames = 0;
    UINT64 unknown = 0; ///< no message of the list
    UINT64 remote = 0;
    UINT64 errors = 0;
    UINT64 badLines = 0;
    UINT64 firstBadLine = 0; ///< from 1
};

/** The messages and signals that are wanted; all where nothing was named. */
class CFrameFilter
{
public:
    CFrameFilter(const KW_LabelList& list, const std::vector<std::string>& messages,
                 const std::vector<std::string>& signals, const QString& file);

    bool HasMessage(UINT32 identifierBits, UINT32 identifier) const
    {
        return m_messages.empty() || m_messages.count(Key(identifierBits, identifier)) > 0;
    }
    bool IsForSignals() const { return !m_signals.isEmpty(); }
    bool HasSignal(const std::string& message, const std::string& signal) const
    {
        return m_signals.contains(ToText(signal)) ||
               m_signals.contains(ToText(message) + QLatin1Char('/') + ToText(signal));
    }

private:
    static UINT64 Key(UINT32 identifierBits, UINT32 identifier)
    {
        return UINT64{identifierBits} << 32U | identifier;
    }

    std::map<UINT64, bool> m_messages;
    QSet<QString> m_signals;
};

CFailure UnknownSignal(const QString& file, const QString& name, const QSet<QString>& known)
{
    QStringList alike; // with the message where one was named
    for (const QString& signal : known)
    {
        if (signal.contains(QLatin1Char('/')) == name.contains(QLatin1Char('/')))
        {
            alike << signal;
        }
    }
    alike.sort();
    return {eSTATUS_USAGE, QStringLiteral("%1 has no signal \"%2\"%3")
                               .arg(file, name, DidYouMean(GetNearestNames(name, alike)))};
}

CFrameFilter::CFrameFilter(const KW_LabelList& list, const std::vector<std::string>& messages,
                           const std::vector<std::string>& signals, const QString& file)
{
    for (const std::string& name : messages)
    {
        for (const KW_LabelEntry* const entry : FindMessages(list, ToText(name), file))
        {
            m_messages[Key(ToText(entry->message.getIdentifierFormat()).toUInt(),
                           entry->message.getIdentifier())] = true;
        }
    }
    if (signals.empty())
    {
        return;
    }
    QSet<QString> known;
    for (const KW_LabelEntry& entry : list.messages)
    {
        for (const KW_LabelSignal& shown : KW_GetSignals(entry))
        {
            const QString name = ToText(shown.signal->getName());
            known << name << ToText(entry.message.getName()) + QLatin1Char('/') + name;
        }
    }
    for (const std::string& name : signals)
    {
        if (!known.contains(ToText(name)))
        {
            throw UnknownSignal(file, ToText(name), known);
        }
        m_signals.insert(ToText(name));
    }
}

/** Seconds with six digits behind the point, or with nine where the log has more. */
std::string_view FormatTime(const KW_LoggedFrame& frame, std::array<char, 40>& buffer)
{
    if (!frame.hasTime)
    {
        return {};
    }
    constexpr INT64 kSecond = 1'000'000'000;
    constexpr INT64 kMicrosecond = 1'000;
    char* place = buffer.data();
    const bool isNegative = frame.nanoseconds < 0;
    const INT64 seconds = frame.nanoseconds / kSecond;
    INT64 rest = frame.nanoseconds % kSecond;
    rest = isNegative ? -rest : rest;
    if (isNegative)
    {
        *place++ = '-';
    }
    place =
        std::to_chars(place, buffer.data() + buffer.size(), isNegative ? -seconds : seconds).ptr;
    *place++ = '.';
    const bool isFine = rest % kMicrosecond != 0;
    const int digits = isFine ? 9 : 6;
    rest = isFine ? rest : rest / kMicrosecond;
    for (int i = digits - 1; i >= 0; --i)
    {
        place[i] = static_cast<char>('0' + rest % 10);
        rest /= 10;
    }
    return {buffer.data(), static_cast<std::size_t>(place + digits - buffer.data())};
}

/** Decodes lines of a log and writes what they say. */
class CLogDecoding
{
public:
    CLogDecoding(const KW_LabelList& list, const CFrameFilter& filter, const CFrameText& form,
                 COutput& output)
        : m_decoder(list), m_filter(filter), m_form(form), m_output(output)
    {
        m_text.reserve(2 * kBlock);
        m_text += form.GetHead();
    }

    /** False when nobody reads the output any more. */
    bool TakeLine(std::string_view line)
    {
        ++m_lines;
        switch (m_reader.Read(line, m_frame))
        {
        case CFrameLogReader::e_Line::Frame:
            TakeFrame();
            break;
        case CFrameLogReader::e_Line::NotUnderstood:
            m_counts.firstBadLine = m_counts.badLines++ == 0 ? m_lines : m_counts.firstBadLine;
            break;
        case CFrameLogReader::e_Line::Nothing:
            break;
        }
        if (m_text.size() >= kBlock)
        {
            Flush();
        }
        return !m_output.IsClosed();
    }

    void Flush()
    {
        m_output.Block(m_text);
        m_text.clear();
    }

    const t_LogCounts& GetCounts() const { return m_counts; }

private:
    using t_Value = CLabelListDecoder::t_Value;

    static constexpr std::size_t kBlock = std::size_t{256} << 10U;

    /** A message of the list, as frames need it. */
    struct t_Known
    {
        t_FrameTexts texts;
        std::vector<t_Value> values;
        std::vector<bool> isWanted; ///< by signal; empty when all are
        bool isShown = false;
    };

    void TakeFrame()
    {
        ++m_counts.frames;
        if (m_frame.isError || m_frame.isRemote)
        {
            ++(m_frame.isError ? m_counts.errors : m_counts.remote);
            return;
        }
        const UINT32 bits = m_frame.isExtended ? kExtendedBits : kStandardBits;
        const auto* const message = m_decoder.Find(bits, m_frame.identifier);
        if (message == nullptr)
        {
            ++m_counts.unknown;
            return;
        }
        t_Known& known = Know(*message, bits);
        if (known.isShown)
        {
            Show(*message, known);
        }
    }

    t_Known& Know(const CLabelListDecoder::t_Message& message, UINT32 bits)
    {
        const auto [place, isNew] = m_known.try_emplace(&message);
        if (isNew)
        {
            Prepare(message, bits, place->second);
        }
        return place->second;
    }

    void Prepare(const CLabelListDecoder::t_Message& message, UINT32 bits, t_Known& known) const
    {
        const auto all = CLabelListDecoder::SignalsOf(message);
        known.texts = m_form.Prepare(message, m_frame.identifier, bits);
        known.values.resize(all.size());
        known.isShown = m_filter.HasMessage(bits, m_frame.identifier);
        if (!m_filter.IsForSignals())
        {
            return;
        }
        for (const CLabelListDecoder::t_Signal& signal : all)
        {
            known.isWanted.push_back(
                m_filter.HasSignal(CLabelListDecoder::NameOf(message), signal.name));
        }
        known.isShown = known.isShown && std::find(known.isWanted.begin(), known.isWanted.end(),
                                                   true) != known.isWanted.end();
    }

    void Show(const CLabelListDecoder::t_Message& message, t_Known& known)
    {
        std::size_t count = CLabelListDecoder::Decode(message, m_frame.Payload(), known.values);
        if (!known.isWanted.empty())
        {
            count = KeepWanted(message, known, count);
            if (count == 0)
            {
                return;
            }
        }
        m_form.Add({FormatTime(m_frame, m_time), m_frame.bus, &message,
                    std::span<const t_Value>(known.values).first(count)},
                   known.texts, m_text);
    }

    static std::size_t KeepWanted(const CLabelListDecoder::t_Message& message, t_Known& known,
                                  std::size_t count)
    {
        const auto* const first = CLabelListDecoder::SignalsOf(message).data();
        const auto begin = known.values.begin();
        const auto end = std::remove_if(
            begin, begin + static_cast<std::ptrdiff_t>(count),
            [&](const t_Value& value)
            { return !known.isWanted[static_cast<std::size_t>(value.signal - first)]; });
        return static_cast<std::size_t>(end - begin);
    }

    CLabelListDecoder m_decoder;
    const CFrameFilter& m_filter;
    const CFrameText& m_form;
    COutput& m_output;
    CFrameLogReader m_reader;
    KW_LoggedFrame m_frame;
    std::array<char, 40> m_time{};
    std::unordered_map<const CLabelListDecoder::t_Message*, t_Known> m_known;
    std::string m_text;
    t_LogCounts m_counts;
    UINT64 m_lines = 0;
};

struct t_LabelDecodeOptions
{
    std::string list;
    std::string log = "-";
    std::vector<std::string> messages;
    std::vector<std::string> signalNames;
    bool isCsv = false;
    bool skipsBad = false;

    void Declare(CLI::App& command)
    {
        command.add_option("--list", list, "Label list: .dbc, .xml or .csv")
            ->required()
            ->type_name("FILE");
        command.add_option("log", log, "Log; \"-\", as when left out, is the standard input");
        command.add_flag("--csv", isCsv, "A line for each signal");
        command.add_option("--message", messages, "These messages only, by name or identifier")
            ->type_name("NAME")
            ->allow_extra_args(false);
        command
            .add_option("--signal", signalNames,
                        "These signals only, by their name or MESSAGE/SIGNAL")
            ->type_name("NAME")
            ->allow_extra_args(false);
        DeclareSkipping(command, skipsBad);
    }

    t_Answer Run(CSession& session) const;

private:
    std::unique_ptr<CFrameText> MakeForm(CSession& session, const KW_LabelList& labels) const;
    void ShowCounts(CSession& session, const t_LogCounts& counts) const;
};

std::unique_ptr<CFrameText> t_LabelDecodeOptions::MakeForm(CSession& session,
                                                           const KW_LabelList& labels) const
{
    if (session.GetStyle().json)
    {
        return MakeFrameJson();
    }
    if (isCsv)
    {
        return MakeFrameCsv();
    }
    constexpr std::size_t kWidest = 32;
    std::size_t width = 0;
    for (const KW_LabelEntry& entry : labels.messages)
    {
        width = std::max(width,
                         static_cast<std::size_t>(ToText(entry.message.getName()).toUcs4().size()));
    }
    return MakeFrameTable(std::min(width, kWidest));
}

void t_LabelDecodeOptions::ShowCounts(CSession& session, const t_LogCounts& counts) const
{
    QStringList parts;
    const auto add = [&parts](UINT64 count, const char* what)
    {
        if (count > 0)
        {
            parts << QStringLiteral("%1 %2").arg(count).arg(QLatin1String(what));
        }
    };
    add(counts.unknown, "not in the list");
    add(counts.remote, "remote");
    add(counts.errors, "of errors");
    if (!parts.isEmpty())
    {
        session.GetOutput().Problem(QStringLiteral("%1: %2 left out: %3")
                                        .arg(ToText(log),
                                             GetCountText(counts.frames, QStringLiteral("frame"))
                                                 .prepend(QStringLiteral("of ")),
                                             parts.join(QStringLiteral(", "))));
    }
    if (counts.badLines > 0)
    {
        session.GetOutput().Problem(
            QStringLiteral("%1:%2: %3 not understood, of which this is the first")
                .arg(ToText(log))
                .arg(counts.firstBadLine)
                .arg(GetCountText(counts.badLines, QStringLiteral("line"))));
    }
}

t_Answer t_LabelDecodeOptions::Run(CSession& session) const
{
    if (isCsv && session.GetStyle().json)
    {
        throw CFailure(eSTATUS_USAGE, QStringLiteral("--csv and --json exclude each other"));
    }
    CLabelFindings findings(session);
    const KW_LabelList labels = findings.Require(list, skipsBad);
    if (labels.protocol != eKW_ZEL_SERIALBUS_PROTOCOL_CAN)
    {
        throw CFailure(eSTATUS_USAGE, QStringLiteral("%1 is a list of %2; logs are of CAN")
                                          .arg(ToText(list), GetEnumText(labels.protocol)));
    }
    const CFrameFilter filter(labels, messages, signalNames, ToText(list));
    const auto form = MakeForm(session, labels);
    CLogInput input(ToText(log));
    findings.Show();
    CLogDecoding decoding(labels, filter, *form, session.GetOutput());
    input.Read([&](std::string_view line) { return decoding.TakeLine(line); },
               [&] { decoding.Flush(); });
    decoding.Flush();
    const t_LogCounts& counts = decoding.GetCounts();
    ShowCounts(session, counts);
    if (counts.frames == 0 && counts.badLines > 0)
    {
        throw CFailure(eSTATUS_USAGE, QStringLiteral("\"%1\" has no frames as candump and .asc "
                                                     "have them")
                                          .arg(ToText(log)));
    }
    if (findings.IsEmpty() && counts.badLines == 0)
    {
        return {};
    }
    return {eSTATUS_REFUSED, eKW_ACC_WARNING, true};
}
} // namespace

void AddLabelDecode(CLI::App& labels, t_Run& run)
{
    AddSubcommand<t_LabelDecodeOptions>(labels, run, "decode", "Show the signals of logged frames",
                                        kLabelDecodeFooter);
}
