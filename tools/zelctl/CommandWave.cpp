// SPDX-License-Identifier: MIT
#include "ValueText.h"
#include "WaveCommands.h"
#include "WaveFormats.h"

#include <QJsonArray>
#include <cmath>

namespace
{
constexpr char kWaveFooter[] =
    "Records are what one trigger caught: the traces of all channels. Files are record files\n"
    "(.rec), sounds (.wav) or tables (.csv, .tsv, .txt); what is read is known by its first "
    "bytes.\n"
    "\n"
    "Example:\n"
    "  zelctl wave show examples/waves/burst.csv\n"
    "\n"
    "Exit status 0: done; 1: done, with something to report; 2: refused.\n"
    "\"zelctl wave COMMAND --help\" explains each.";

constexpr char kWaveConvertFooter[] =
    "The format is that which the name ends in. What it does not hold is reported (status 1). An\n"
    "older file of the name stands until the new one is whole.\n"
    "\n"
    "Examples:\n"
    "  zelctl wave convert examples/waves/burst.csv burst.rec\n"
    "  zelctl wave convert examples/waves/burst.csv burst.wav --channel C1\n"
    "  zelctl wave convert examples/waves/burst.csv fast.rec --interval 1us";

/** The record with some of its traces only. */
CKWRecord Choose(const CKWRecord& record, const std::vector<std::string>& channels,
                 const QString& fileName)
{
    if (channels.empty())
    {
        return record;
    }
    t_WaveDraft draft;
    draft.info = record.GetInfo();
    for (const std::string& channel : channels)
    {
        const UINT32 trace = FindTrace(record, ToText(channel), fileName);
        const std::span<const std::byte> samples = record.GetSamples(trace);
        draft.traces.push_back(record.GetTrace(trace));
        draft.samples.emplace_back(samples.begin(), samples.end());
    }
    return draft.Make(fileName);
}

struct t_WaveConvertOptions
{
    std::string from;
    std::string to;
    std::vector<std::string> channels;
    std::string interval;

    void Declare(CLI::App& command)
    {
        command.add_option("file", from, "File to read")->required();
        command.add_option("file2", to, "File to write")->required();
        DeclareChannels(command, channels);
        DeclareInterval(command, interval);
    }

    t_Answer Run(CSession& session) const
    {
        RequireWaveName(ToText(to));
        QStringList notes;
        const CKWRecord record = Choose(ReadWave(ToText(from), notes, ReadWaveOptions(interval)),
                                        channels, ToText(from));
        WriteWave(ToText(to), record, notes);
        CReply reply(session, QStringLiteral("wave convert"));
        reply.Line(QStringLiteral("wrote %1").arg(ToText(to))).Field("file", ToText(to));
        return SendWithNotes(session, reply, notes);
    }
};
} // namespace

void DeclareChannels(CLI::App& command, std::vector<std::string>& channels)
{
    command.add_option("--channel", channels, "Only these traces, such as C1,M1")
        ->delimiter(',')
        ->allow_extra_args(false)
        ->type_name("CHANNEL");
}

void DeclareInterval(CLI::App& command, std::string& interval)
{
    command
        .add_option("--interval", interval,
                    "Time between the points of a table, whose own times then do not count")
        ->type_name("TIME");
}

t_WaveOptions ReadWaveOptions(const std::string& interval)
{
    t_WaveOptions options;
    if (!interval.empty())
    {
        options.interval =
            ReadDouble(ToText(interval), eKW_UNIT_FREQ_SEC, QStringLiteral("--interval"));
        if (!(options.interval > 0) || !std::isfinite(options.interval))
        {
            throw CFailure(eSTATUS_USAGE,
                           QStringLiteral("--interval: \"%1\" is no time between two points")
                               .arg(ToText(interval)));
        }
    }
    return options;
}

t_Answer SendWithNotes(CSession& session, CReply& reply, const QStringList& notes)
{
    reply.Field("notes", QJsonArray::fromStringList(notes));
    if (notes.isEmpty())
    {
        return reply.Send();
    }
    t_Answer answer = reply.Send(eKW_ACC_WARNING, eSTATUS_REFUSED);
    answer.isDone = true;
    for (const QString& note : notes)
    {
        if (!reply.IsDocument())
        {
            session.GetOutput().Problem(note);
        }
    }
    return answer;
}

void AddWaveCommand(CLI::App& app, t_Run& run)
{
    if (!run.Declares("wave"))
    {
        return;
    }
    CLI::App& wave = *app.add_subcommand("wave", "Show and convert records of samples");
    wave.footer(kWaveFooter);
    wave.require_subcommand(1);
    AddWaveShow(wave, run);
    AddSubcommand<t_WaveConvertOptions>(wave, run, "convert", "Write a record in another format",
                                        kWaveConvertFooter);
}
