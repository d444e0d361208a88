// SPDX-License-Identifier: MIT
#include "LabelFile.h"
#include "MaskDrawing.h"
#include "ValueText.h"
#include "WaveCommands.h"

#include <QJsonArray>
#include <cmath>

namespace
{
constexpr char kMaskFooter[] =
    "Masks are a line above and a line below a trace, in divisions of the screen. The test takes\n"
    "them at the levels and times at which they were made.\n"
    "\n"
    "Examples:\n"
    "  zelctl mask check examples/masks/pulse.xml\n"
    "  zelctl mask make --width-y 0.3 -o burst.xml examples/waves/burst.csv\n"
    "  zelctl mask test burst.xml examples/waves/burst.csv\n"
    "\n"
    "Exit status 0: nothing to report; 1: done, with reports or violations; 2: refused.\n"
    "\"zelctl mask COMMAND --help\" explains each.";

constexpr char kMaskCheckFooter[] =
    "Prints what is to be said of the file, each as \"file:line:column: text\". Exit status 0:\n"
    "nothing; 1: the file can be used; 2: it can not.\n"
    "\n"
    "Example:\n"
    "  zelctl mask check examples/masks/pulse.xml";

constexpr char kMaskShowFooter[] = "Example:\n"
                                   "  zelctl mask show examples/masks/pulse.xml --svg pulse.svg";

constexpr char kMaskTestFooter[] = "Lists the places where a trace of the record is beyond a line, "
                                   "and how far. Exit status 0: it\n"
                                   "passes; 1: it does not; 2: refused.\n"
                                   "\n"
                                   "Example:\n"
                                   "  zelctl mask test examples/masks/pulse.xml FILE --channel C1";

constexpr char kMaskMakeFooter[] =
    "The mask is laid around the whole trace, which fills the screen: ten divisions in time, six\n"
    "in level. The trace itself passes.\n"
    "\n"
    "Example:\n"
    "  zelctl mask make --width-y 0.3 -o burst.xml examples/waves/burst.csv";

constexpr UINT32 kMostViolations = 10000; ///< that are listed

KW_Mask RequireMask(CLabelFindings& findings, const std::string& file)
{
    KW_Mask mask;
    std::vector<KW_LabelReport> reports;
    const KW_ACCEPTANCE code = KW_ReadMaskFile(ToText(file), mask, reports);
    findings.Require(code, ToText(file), reports);
    return mask;
}

void AddMask(CReply& reply, const std::string& file, const KW_Mask& mask)
{
    const KW_MaskFrame& frame = mask.frame;
    reply
        .Line(QStringLiteral("%1: %2 points above, %3 below; %4 and %5 a division")
                  .arg(ToText(file))
                  .arg(mask.upper.size())
                  .arg(mask.lower.size())
                  .arg(KW_FormatNumber(frame.timeScale, eKW_UNIT_FREQ_SEC),
                       KW_FormatNumber(frame.levelScale, frame.unit)))
        .Field("file", ToText(file))
        .Field("upper", static_cast<qint64>(mask.upper.size()))
        .Field("lower", static_cast<qint64>(mask.lower.size()))
        .Field("unit", KW_GetUnitText(frame.unit));
}

struct t_MaskCheckOptions
{
    std::string file;

    void Declare(CLI::App& command) { command.add_option("file", file, "Mask")->required(); }

    t_Answer Run(CSession& session) const
    {
        CLabelFindings findings(session);
        const KW_Mask mask = RequireMask(findings, file);
        CReply reply(session, QStringLiteral("mask check"));
        AddMask(reply, file, mask);
        return findings.Send(reply);
    }
};

struct t_MaskShowOptions
{
    std::string file;
    std::string svg;

    void Declare(CLI::App& command)
    {
        command.add_option("file", file, "Mask")->required();
        command.add_option("--svg", svg, "Write the drawing to this file")->type_name("FILE");
    }

    t_Answer Run(CSession& session) const
    {
        CLabelFindings findings(session);
        const KW_Mask mask = RequireMask(findings, file);
        CReply reply(session, QStringLiteral("mask show"));
        AddMask(reply, file, mask);
        const t_Diagram diagram = DrawMask(mask);
        if (svg.empty())
        {
            constexpr int kWidthElsewhere = 80;
            const int width = GetTerminalWidth() > 0 ? GetTerminalWidth() : kWidthElsewhere;
            reply.Line({}).Lines(DrawInText(diagram, width));
        }
        else
        {
            WriteWhole(ToText(svg), DrawAsSvg({diagram}));
            reply.Line(QStringLiteral("wrote %1").arg(ToText(svg))).Field("svg", ToText(svg));
        }
        return findings.Send(reply);
    }
};

/** A record, and the trace of it that was asked for. */
struct t_ChosenTrace
{
    std::string wave;
    std::string channel;
    std::string interval;

    void Declare(CLI::App& command)
    {
        command.add_option("--channel", channel, "Trace; the first one otherwise")
            ->type_name("CHANNEL");
        DeclareInterval(command, interval);
    }
    CKWRecord Read(UINT32& trace, QStringList& notes) const
    {
        CKWRecord record = ReadWave(ToText(wave), notes, ReadWaveOptions(interval));
        trace = FindTrace(record, ToText(channel), ToText(wave));
        return record;
    }
};

void RequireDone(KW_ACCEPTANCE code, const QString& text)
{
    if (!KW_IsAccepted(code))
    {
        const bool isSaid = code == eKW_ACC_WRONG_KIND; // by the text
        throw CFailure(eSTATUS_USAGE, code,
                       isSaid ? text : text + QStringLiteral(": ") + KW_GetAcceptanceText(code));
    }
}

struct t_MaskTestOptions
{
    std::string file;
    t_ChosenTrace chosen;

    void Declare(CLI::App& command)
    {
        command.add_option("file", file, "Mask")->required();
        command.add_option("file2", chosen.wave, "File of a record")->required();
        chosen.Declare(command);
    }

    t_Answer Run(CSession& session) const
    {
        CLabelFindings findings(session);
        const KW_Mask mask = RequireMask(findings, file);
        QStringList notes;
        UINT32 trace = 0;
        const CKWRecord record = chosen.Read(trace, notes);
        std::vector<KW_MaskViolation> violations(kMostViolations);
        UINT32 count = 0;
        RequireDone(KW_FindMaskViolations(record, trace, mask, mask.frame, violations, count),
                    QStringLiteral("%1 of %2 can not be tested by a mask in %3")
                        .arg(GetTraceName(record, trace), ToText(chosen.wave),
                             KW_GetUnitText(mask.frame.unit)));
        violations.resize(std::min(count, kMostViolations));
        CReply reply(session, QStringLiteral("mask test"));
        Add(reply, record.GetTrace(trace), violations);
        reply
            .Line(count == 0 ? QStringLiteral("%1 passes").arg(GetTraceName(record, trace))
                             : QStringLiteral("%1 fails: %2 %3")
                                   .arg(GetTraceName(record, trace))
                                   .arg(count)
                                   .arg(count == 1 ? QStringLiteral("violation")
                                                   : QStringLiteral("violations")))
            .Field("passed", count == 0)
            .Field("count", static_cast<qint64>(count));
        if (count == 0)
        {
            return SendWithNotes(session, reply, notes + findings.GetLines());
        }
        t_Answer answer = reply.Send(eKW_ACC_OPERATION_FAILED, eSTATUS_REFUSED);
        answer.isDone = true;
        return answer;
    }

private:
    static void Add(CReply& reply, const KW_TraceInfo& info,
                    const std::vector<KW_MaskViolation>& violations)
    {
        const auto timeOf = [&info](UINT32 point)
        { return KW_FormatNumber(info.start + point * info.interval, eKW_UNIT_FREQ_SEC); };
        CTable table;
        table.Add({QStringLiteral("line"), QStringLiteral("from"), QStringLiteral("to"),
                   QStringLiteral("worst at"), QStringLiteral("divisions beyond")});
        QJsonArray json;
        for (const KW_MaskViolation& violation : violations)
        {
            const QString line = violation.line == eKW_ZEL_LIMIT_OVERFLOW ? QStringLiteral("upper")
                                                                          : QStringLiteral("lower");
            table.Add({line, timeOf(violation.first), timeOf(violation.last),
                       timeOf(violation.worst), QString::number(violation.excess, 'g', 4)});
            json.append(QJsonObject{{QStringLiteral("line"), line},
                                    {QStringLiteral("first"), static_cast<qint64>(violation.first)},
                                    {QStringLiteral("last"), static_cast<qint64>(violation.last)},
                                    {QStringLiteral("worst"), static_cast<qint64>(violation.worst)},
                                    {QStringLiteral("excess"), violation.excess}});
        }
        if (!violations.empty())
        {
            reply.Lines(table.GetLines(GetTerminalWidth()));
        }
        reply.Field("violations", json);
    }
};

struct t_MaskMakeOptions
{
    std::string file;
    t_ChosenTrace chosen;
    double widthX = 0.2;
    double widthY = 0.2;

    void Declare(CLI::App& command)
    {
        command.add_option("file", chosen.wave, "File of a record")->required();
        command.add_option("-o,--output", file, "Mask to write")->required()->type_name("FILE");
        command.add_option("--width-x", widthX, "Divisions to the left and right of the trace");
        command.add_option("--width-y", widthY, "Divisions above and below it");
        chosen.Declare(command);
    }

    t_Answer Run(CSession& session) const
    {
        QStringList notes;
        UINT32 trace = 0;
        const CKWRecord record = chosen.Read(trace, notes);
        KW_Mask mask;
        RequireDone(KW_MakeMask(record, trace, FrameAround(record, trace), widthX, widthY, mask),
                    QStringLiteral("no mask around %1 of %2")
                        .arg(GetTraceName(record, trace), ToText(chosen.wave)));
        std::vector<KW_LabelReport> reports;
        const KW_ACCEPTANCE code = KW_WriteMaskFile(ToText(file), mask, reports);
        CLabelFindings(session).Require(code, ToText(file), reports);
        CReply reply(session, QStringLiteral("mask make"));
        AddMask(reply, file, mask);
        return SendWithNotes(session, reply, notes);
    }
};
} // namespace

void AddMaskCommand(CLI::App& app, t_Run& run)
{
    if (!run.Declares("mask"))
    {
        return;
    }
    CLI::App& mask = *app.add_subcommand("mask", "Make, check and show masks, and test records");
    mask.footer(kMaskFooter);
    mask.require_subcommand(1);
    AddSubcommand<t_MaskCheckOptions>(mask, run, "check", "Say what is wrong with a mask",
                                      kMaskCheckFooter);
    AddSubcommand<t_MaskShowOptions>(mask, run, "show", "Draw a mask", kMaskShowFooter);
    AddSubcommand<t_MaskTestOptions>(mask, run, "test", "Test a record by a mask", kMaskTestFooter);
    AddSubcommand<t_MaskMakeOptions>(mask, run, "make", "Lay a mask around a trace",
                                     kMaskMakeFooter);
}
