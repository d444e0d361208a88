// SPDX-License-Identifier: MIT
#include "EnumText.h"
#include "LabelCommands.h"
#include "LabelDrawing.h"
#include "NearestNames.h"

#include <QJsonArray>
#include <algorithm>

namespace
{
constexpr char kLabelShowFooter[] =
    "Without a message: the messages of the list. With one, by its name or identifier: its "
    "signals\n"
    "and where they stand in the payload, a byte in a line, bit 7 first (of SENT a nibble, bit 3\n"
    "first). Each signal has its letters there, with \"^\" at its most and \"_\" at its least\n"
    "significant bit; bits of no signal are dots. What is multiplexed is drawn once for each set\n"
    "of values that selects the same signals; with --mux what is there with these values.\n"
    "\n"
    "Examples:\n"
    "  zelctl labels show examples/labels/vehicle.dbc\n"
    "  zelctl labels show examples/labels/vehicle.dbc 0x124\n"
    "  zelctl labels show examples/labels/vehicle.dbc EngineData --mux Mode=3";

constexpr int kTextWidth = 80;
constexpr std::size_t kMostPages = 16;

struct t_LabelShowOptions
{
    std::string file;
    std::string message;
    std::vector<std::string> multiplex;
    bool skipsBad = false;

    void Declare(CLI::App& command)
    {
        command.add_option("file", file, "Label list: .dbc, .xml or .csv")->required();
        command.add_option("message", message, "Name or identifier, such as 0x123");
        command.add_option("--mux", multiplex, "Draw what is there with this value: NAME=VALUE")
            ->type_name("NAME=VALUE")
            ->allow_extra_args(false);
        DeclareSkipping(command, skipsBad);
    }

    t_Answer Run(CSession& session) const;

private:
    t_Multiplex GetMultiplex(const std::vector<const KW_LabelEntry*>& entries) const;
};

QString GetMessageText(const KW_LabelEntry& entry)
{
    QStringList parts{GetCountText(entry.message.getLength(), QStringLiteral("byte"))};
    const QString bits = ToText(entry.message.getIdentifierFormat());
    if (bits != QLatin1String("0"))
    {
        parts.prepend(bits + QStringLiteral(" bits"));
    }
    if (entry.details.isFd)
    {
        parts << (entry.details.hasBitRateSwitch ? QStringLiteral("CAN FD with bit rate switch")
                                                 : QStringLiteral("CAN FD"));
    }
    if (entry.details.cycleTime)
    {
        parts << GetCycleText(*entry.details.cycleTime);
    }
    if (!entry.details.senders.empty())
    {
        parts << QStringLiteral("from ") + ToText(entry.details.senders);
    }
    return QStringLiteral("%1 %2: %3")
        .arg(GetIdentifierText(entry.message), ToText(entry.message.getName()),
             parts.join(QStringLiteral(", ")));
}

/** Words in lines of a reader's width. */
QStringList Wrap(const QStringList& words, int indent, const QString& separator)
{
    const QString margin(indent, QLatin1Char(' '));
    QStringList lines;
    for (const QString& word : words)
    {
        const bool fits =
            !lines.isEmpty() && lines.back().size() + separator.size() + word.size() <= kTextWidth;
        if (fits)
        {
            lines.back() += separator + word;
        }
        else
        {
            lines << margin + word;
        }
    }
    return lines;
}

QStringList WrapText(const std::string& text, int indent)
{
    return Wrap(ToText(text).simplified().split(QLatin1Char(' ')), indent, QStringLiteral(" "));
}

/** What stands below the line of a signal: when it is there, its comment and its labels. */
QStringList GetSignalNotes(const KW_LabelSignal& signal)
{
    constexpr int kIndent = 7;
    QStringList lines;
    const QString condition = GetConditionText(*signal.details);
    if (!condition.isEmpty())
    {
        lines << Wrap((QStringLiteral("when ") + condition).split(QLatin1Char(' ')), kIndent,
                      QStringLiteral(" "));
    }
    if (signal.details->isMultiplexor)
    {
        lines << Wrap({QStringLiteral("selects other signals")}, kIndent, {});
    }
    if (!signal.details->receivers.empty())
    {
        lines << WrapText("for " + ToText(signal.details->receivers).toStdString(), kIndent);
    }
    if (!signal.details->comment.empty())
    {
        lines << WrapText(signal.details->comment, kIndent);
    }
    QStringList labels;
    for (const auto& [raw, label] : GetLabels(signal))
    {
        labels << QStringLiteral("%1 = %2").arg(raw, label.simplified());
    }
    return lines + Wrap(labels, kIndent, QStringLiteral("; "));
}

QStringList GetSignalLines(const KW_LabelEntry& entry)
{
    constexpr int kName = 1;
    constexpr int kUnit = 9;
    CTable table({{kName, 8}, {kUnit, 4}});
    table.Add({{},
               QStringLiteral("signal"),
               QStringLiteral("start"),
               QStringLiteral("bits"),
               QStringLiteral("order"),
               QStringLiteral("type"),
               QStringLiteral("factor"),
               QStringLiteral("offset"),
               QStringLiteral("range"),
               QStringLiteral("unit")});
    const auto all = KW_GetSignals(entry);
    for (std::size_t i = 0; i < all.size(); ++i)
    {
        const CLabelListSignal& signal = *all[i].signal;
        table.Add({GetLetters(i), ToText(signal.getName()), QString::number(signal.getStartBit()),
                   QString::number(signal.getBitLength()), GetOrderText(signal),
                   GetTypeText(signal), GetNumberText(signal.getFactor()),
                   GetNumberText(signal.getOffset()),
                   GetNumberText(signal.getMinimum()) + QStringLiteral(" … ") +
                       GetNumberText(signal.getMaximum()),
                   ToText(signal.getUnit())});
    }
    const QStringList rows = table.GetLines(GetTerminalWidth());
    QStringList lines{rows.front()};
    for (std::size_t i = 0; i < all.size(); ++i)
    {
        lines << rows[static_cast<int>(i) + 1];
        lines << GetSignalNotes(all[i]);
    }
    return lines;
}

QStringList GetDrawings(const KW_LabelList& list, const KW_LabelEntry& entry,
                        const t_Multiplex& multiplex)
{
    if (!multiplex.empty())
    {
        return DrawPayload(list, entry, GetPage(entry, multiplex).signals);
    }
    const t_LabelPages pages = GetPages(entry, kMostPages);
    QStringList lines;
    for (const t_LabelPage& page : pages.pages)
    {
        if (!lines.isEmpty())
        {
            lines << QString();
        }
        if (!page.title.isEmpty())
        {
            lines << page.title + QLatin1Char(':');
        }
        lines << DrawPayload(list, entry, page.signals);
    }
    if (pages.more > 0)
    {
        lines
            << QStringLiteral("\nand %1 more; --mux NAME=VALUE draws one of them").arg(pages.more);
    }
    return lines;
}

void AddMessage(const KW_LabelList& list, const KW_LabelEntry& entry, const t_Multiplex& multiplex,
                CReply& reply)
{
    reply.Line(GetMessageText(entry));
    if (!entry.details.comment.empty())
    {
        reply.Lines(WrapText(entry.details.comment, 2));
    }
    if (!entry.message.getSignals().empty())
    {
        reply.Line({}).Lines(GetSignalLines(entry));
    }
    reply.Line({}).Lines(GetDrawings(list, entry, multiplex));
}

void AddTable(const KW_LabelList& list, CReply& reply)
{
    constexpr int kName = 1;
    constexpr int kSenders = 5;
    CTable table({{kSenders, 8}, {kName, 8}});
    table.Add({QStringLiteral("id"), QStringLiteral("message"), QStringLiteral("bytes"),
               QStringLiteral("signals"), QStringLiteral("cycle"), QStringLiteral("from")});
    for (const KW_LabelEntry& entry : list.messages)
    {
        table.Add({GetIdentifierText(entry.message), ToText(entry.message.getName()),
                   QString::number(entry.message.getLength()) +
                       QLatin1String(entry.details.isFd ? " FD" : ""),
                   QString::number(entry.message.getSignals().size()),
                   entry.details.cycleTime ? GetCycleText(*entry.details.cycleTime) : QString(),
                   ToText(entry.details.senders)});
    }
    reply.Lines(table.GetLines(GetTerminalWidth()));
}

t_Multiplex t_LabelShowOptions::GetMultiplex(const std::vector<const KW_LabelEntry*>& entries) const
{
    if (multiplex.empty())
    {
        return {};
    }
    QStringList names;
    for (const KW_LabelEntry* const entry : entries)
    {
        for (const auto& [key, details] : entry->details.signalDetails)
        {
            names << ToText(details.multiplexor);
        }
    }
    names.removeAll({});
    names.removeDuplicates();
    t_Multiplex values;
    for (const std::string& written : multiplex)
    {
        const QString text = ToText(written);
        const QString name = text.section(QLatin1Char('='), 0, -2);
        bool isNumber = false;
        const UINT64 value = text.section(QLatin1Char('='), -1).toULongLong(&isNumber, 0);
        if (!isNumber || name.isEmpty())
        {
            throw CFailure(eSTATUS_USAGE,
                           QStringLiteral("--mux takes NAME=VALUE, not \"%1\"").arg(text));
        }
        if (!names.contains(name))
        {
            throw CFailure(eSTATUS_USAGE, QStringLiteral("nothing is multiplexed by \"%1\"%2")
                                              .arg(name, DidYouMean(GetNearestNames(name, names))));
        }
        values[name.toStdString()] = value;
    }
    return values;
}

t_Answer t_LabelShowOptions::Run(CSession& session) const
{
    if (message.empty() && !multiplex.empty())
    {
        throw CFailure(eSTATUS_USAGE, QStringLiteral("--mux needs a message to draw"));
    }
    CLabelFindings findings(session);
    const KW_LabelList list = findings.Require(file, skipsBad);
    const auto entries = FindMessages(list, ToText(message), ToText(file));
    const t_Multiplex values = GetMultiplex(entries);
    CReply reply(session, QStringLiteral("labels show"));
    if (reply.IsDocument())
    {
        QJsonArray json;
        for (const KW_LabelEntry* const entry : entries)
        {
            json.append(ToJson(*entry));
        }
        reply.Field("list", ToJson(list)).Field("messages", json);
    }
    else if (message.empty())
    {
        reply.Line(QStringLiteral("%1: %2, %3")
                       .arg(ToText(file), GetEnumText(list.protocol), GetSizeText(list)));
        AddTable(list, reply);
    }
    else
    {
        for (const KW_LabelEntry* const entry : entries)
        {
            if (entry != entries.front())
            {
                reply.Line({});
            }
            AddMessage(list, *entry, values, reply);
        }
    }
    return findings.Send(reply);
}
} // namespace

std::vector<const KW_LabelEntry*> FindMessages(const KW_LabelList& list, const QString& wanted,
                                               const QString& file)
{
    bool isNumber = false;
    const UINT32 identifier = wanted.toUInt(&isNumber, 0);
    std::vector<const KW_LabelEntry*> named;
    std::vector<const KW_LabelEntry*> numbered;
    QStringList names;
    for (const KW_LabelEntry& entry : list.messages)
    {
        names << ToText(entry.message.getName());
        if (wanted.isEmpty() || names.back() == wanted)
        {
            named.push_back(&entry);
        }
        if (isNumber && entry.message.getIdentifier() == identifier)
        {
            numbered.push_back(&entry);
        }
    }
    if (named.empty() && numbered.empty() && !wanted.isEmpty())
    {
        throw CFailure(eSTATUS_USAGE,
                       QStringLiteral("%1 has no message \"%2\"%3")
                           .arg(file, wanted, DidYouMean(GetNearestNames(wanted, names))));
    }
    return named.empty() ? numbered : named;
}

void AddLabelShow(CLI::App& labels, t_Run& run)
{
    AddSubcommand<t_LabelShowOptions>(labels, run, "show", "Show messages, signals and their bits",
                                      kLabelShowFooter);
}
