// SPDX-License-Identifier: MIT
#include "EnumText.h"
#include "ValueText.h"
#include "WaveCommands.h"
#include "WaveDrawing.h"
#include "WaveFrames.h"

#include <QDateTime>
#include <QJsonArray>
#include <array>
#include <cmath>

namespace
{
constexpr char kWaveShowFooter[] =
    "Draws each trace, and says how many points it has and between which values they lie. Times\n"
    "are against the trigger. A column of the drawing goes from the lowest to the highest value "
    "in\n"
    "it, so that no peak is lost; invalid points are gaps. Frames of a bus are listed.\n"
    "\n"
    "Examples:\n"
    "  zelctl wave show examples/waves/burst.csv\n"
    "  zelctl wave show examples/waves/burst.csv --channel C1 --from 0 --to 2ms --svg burst.svg\n"
    "  zelctl wave show examples/waves/burst.csv --columns 20    lowest and highest of each";

constexpr char kWaveInfoFooter[] = "Example:\n"
                                   "  zelctl wave info examples/waves/burst.csv";

constexpr int kMostColumns = 100000;

QJsonValue NumberOrNull(double number)
{
    return std::isfinite(number) ? QJsonValue(number) : QJsonValue();
}

QString FlagsText(UINT32 flags)
{
    QStringList texts;
    if ((flags & eKW_TRACE_ABOVE_RANGE) != 0)
    {
        texts << QStringLiteral("above range");
    }
    if ((flags & eKW_TRACE_BELOW_RANGE) != 0)
    {
        texts << QStringLiteral("below range");
    }
    return texts.join(QStringLiteral(", "));
}

const char* FormatText(KW_SAMPLE_FORMAT format)
{
    static constexpr const char* kTexts[] = {"16 bit", "float", "min/max", "lines", "frames"};
    static_assert(std::size(kTexts) == eKW_SAMPLES_COUNT);
    return kTexts[format];
}

class CWaveInfo
{
public:
    CWaveInfo(CSession& session, const CKWRecord& record) : m_session(session), m_record(record) {}

    void AddTo(CReply& reply, const std::vector<UINT32>& traces) const
    {
        CTable table;
        table.Add({QStringLiteral("trace"),
                   QStringLiteral("format"),
                   QStringLiteral("points"),
                   QStringLiteral("interval"),
                   QStringLiteral("start"),
                   QStringLiteral("minimum"),
                   QStringLiteral("maximum"),
                   QStringLiteral("invalid"),
                   {}});
        QJsonArray json;
        for (const UINT32 trace : traces)
        {
            const t_WaveFigures figures = GetWaveFigures(m_record, trace);
            table.Add(MakeRow(trace, figures));
            json.append(MakeObject(trace, figures));
        }
        const KW_RecordInfo info = m_record.GetInfo();
        reply.Lines(GetRecordLines(info)).Lines(table.GetLines(GetTerminalWidth()));
        reply.Field("number", static_cast<qint64>(info.number))
            .Field("triggerTime", QString::number(info.triggerTime))
            .Field("maskResult", static_cast<int>(info.maskResult))
            .Field("traces", json);
    }

private:
    QString Show(double number, KW_UNIT unit) const
    {
        const bool exact = m_session.GetStyle().exact;
        constexpr int kDigitsOfFloats = 7;
        const double shown =
            exact ? number : QByteArray::number(number, 'g', kDigitsOfFloats).toDouble();
        return std::isnan(number) ? QStringLiteral("–") : KW_FormatNumber(shown, unit, exact);
    }

    QStringList MakeRow(UINT32 trace, const t_WaveFigures& figures) const
    {
        const KW_TraceInfo& info = figures.info;
        QStringList notes;
        if (info.settlingPoints > 0)
        {
            notes << QStringLiteral("%1 settling").arg(info.settlingPoints);
        }
        if (info.flags != 0)
        {
            notes << FlagsText(info.flags);
        }
        const KW_UNIT unit = info.unit == eKW_UNIT_NOT_DEFINED ? eKW_UNIT_NONE : info.unit;
        return {GetTraceName(m_record, trace),       QLatin1String(FormatText(info.format)),
                QString::number(info.count),         Show(info.interval, eKW_UNIT_FREQ_SEC),
                Show(info.start, eKW_UNIT_FREQ_SEC), Show(figures.range.minimum, unit),
                Show(figures.range.maximum, unit),   QString::number(figures.invalid),
                notes.join(QStringLiteral(", "))};
    }

    QJsonObject MakeObject(UINT32 trace, const t_WaveFigures& figures) const
    {
        const KW_TraceInfo& info = figures.info;
        return {{QStringLiteral("trace"), GetTraceName(m_record, trace)},
                {QStringLiteral("format"), QLatin1String(FormatText(info.format))},
                {QStringLiteral("unit"), KW_GetUnitText(info.unit)},
                {QStringLiteral("points"), static_cast<qint64>(info.count)},
                {QStringLiteral("settling"), static_cast<qint64>(info.settlingPoints)},
                {QStringLiteral("invalid"), static_cast<qint64>(figures.invalid)},
                {QStringLiteral("interval"), info.interval},
                {QStringLiteral("start"), info.start},
                {QStringLiteral("scale"), info.scale},
                {QStringLiteral("offset"), info.offset},
                {QStringLiteral("flags"), static_cast<qint64>(info.flags)},
                {QStringLiteral("minimum"), NumberOrNull(figures.range.minimum)},
                {QStringLiteral("maximum"), NumberOrNull(figures.range.maximum)}};
    }

    static QStringList GetRecordLines(const KW_RecordInfo& info)
    {
        QStringList lines;
        if (info.number > 0)
        {
            lines << QStringLiteral("record %1").arg(info.number);
        }
        if (info.triggerTime != 0)
        {
            const QDateTime time =
                QDateTime::fromMSecsSinceEpoch(info.triggerTime / 1000000, Qt::UTC);
            lines << QStringLiteral("triggered ") + time.toString(Qt::ISODateWithMs);
        }
        if (info.maskResult != eKW_MASK_NOT_TESTED)
        {
            lines << (info.maskResult == eKW_MASK_PASSED ? QStringLiteral("passed the mask")
                                                         : QStringLiteral("failed the mask"));
        }
        return lines.isEmpty() ? lines : QStringList{lines.join(QStringLiteral(", "))};
    }

    CSession& m_session;
    const CKWRecord& m_record;
};

std::vector<UINT32> ChooseTraces(const CKWRecord& record, const std::vector<std::string>& channels,
                                 const QString& fileName)
{
    std::vector<UINT32> traces;
    for (const std::string& channel : channels)
    {
        traces.push_back(FindTrace(record, ToText(channel), fileName));
    }
    for (UINT32 i = FindTrace(record, {}, fileName); channels.empty() && i < record.GetTraceCount();
         ++i)
    {
        if (record.GetTrace(i).count > 0)
        {
            traces.push_back(i);
        }
    }
    return traces;
}

/** As lines, or to a file where it has a name. */
void AddDrawing(const std::vector<t_Diagram>& diagrams, const QString& svg, CReply& reply)
{
    if (!svg.isEmpty())
    {
        WriteWhole(svg, DrawAsSvg(diagrams));
        reply.Line(QStringLiteral("wrote %1").arg(svg)).Field("svg", svg);
        return;
    }
    constexpr int kWidthElsewhere = 80;
    const int width = GetTerminalWidth() > 0 ? GetTerminalWidth() : kWidthElsewhere;
    for (const t_Diagram& diagram : diagrams)
    {
        reply.Line({}).Line(diagram.title).Lines(DrawInText(diagram, width));
    }
}

struct t_WaveInfoOptions
{
    std::string file;
    std::string interval;

    void Declare(CLI::App& command)
    {
        command.add_option("file", file, "File of a record")->required();
        DeclareInterval(command, interval);
    }

    t_Answer Run(CSession& session) const
    {
        QStringList notes;
        const CKWRecord record = ReadWave(ToText(file), notes, ReadWaveOptions(interval));
        CReply reply(session, QStringLiteral("wave info"));
        CWaveInfo(session, record).AddTo(reply, ChooseTraces(record, {}, ToText(file)));
        return SendWithNotes(session, reply, notes);
    }
};

struct t_WaveShowOptions
{
    std::string file;
    std::vector<std::string> channels;
    std::string from;
    std::string to;
    std::string svg;
    std::string interval;
    std::string interpolation;
    int columns = 0;

    void Declare(CLI::App& command)
    {
        command.add_option("file", file, "File of a record")->required();
        DeclareChannels(command, channels);
        command.add_option("--from", from, "Where the drawing begins, against the trigger")
            ->type_name("TIME");
        command.add_option("--to", to, "Where it ends")->type_name("TIME");
        command.add_option("--svg", svg, "Write the drawing to this file")->type_name("FILE");
        command
            .add_option("--columns", columns,
                        "List lowest and highest value of so many columns instead of drawing")
            ->type_name("COUNT");
        command.add_option("--interpolation", interpolation,
                           "Between points: LINEAR, SINX or SAMPLE_HOLD");
        DeclareInterval(command, interval);
    }

    t_Answer Run(CSession& session) const
    {
        QStringList notes;
        const CKWRecord record = ReadWave(ToText(file), notes, ReadWaveOptions(interval));
        const std::vector<UINT32> traces = ChooseTraces(record, channels, ToText(file));
        const t_WaveView view = ReadView(record, traces);
        CReply reply(session, QStringLiteral("wave show"));
        CWaveInfo(session, record).AddTo(reply, traces);
        if (columns != 0)
        {
            AddColumns(record, traces, view, reply);
        }
        else if (svg.empty())
        {
            AddDrawing(DrawWave(record, traces, view), {}, reply);
        }
        AddFrames(record, traces, reply);
        if (!svg.empty())
        {
            AddDrawing(DrawWave(record, traces, view), ToText(svg), reply);
        }
        return SendWithNotes(session, reply, notes);
    }

private:
    t_WaveView ReadView(const CKWRecord& record, const std::vector<UINT32>& traces) const
    {
        t_WaveView view = GetWholeView(record, traces);
        if (!from.empty())
        {
            view.from = ReadDouble(ToText(from), eKW_UNIT_FREQ_SEC, QStringLiteral("--from"));
        }
        if (!to.empty())
        {
            view.to = ReadDouble(ToText(to), eKW_UNIT_FREQ_SEC, QStringLiteral("--to"));
        }
        if (!interpolation.empty())
        {
            view.interpolation = ReadEnum<KW_ZEL_INTERPOLATION_MODE>(
                ToText(interpolation), QStringLiteral("--interpolation"));
        }
        std::array<KW_MinMax, 1> tried{};
        for (const UINT32 trace : traces)
        {
            const KW_TraceInfo info = record.GetTrace(trace);
            const double first = (view.from - info.start) / info.interval;
            const double count = (view.to - view.from) / info.interval;
            if (KW_IsCurve(info.format) &&
                !KW_IsAccepted(record.GetColumns(trace, first, count, tried)))
            {
                throw CFailure(eSTATUS_USAGE,
                               QStringLiteral("from %1 to %2 is no stretch of %3")
                                   .arg(KW_FormatNumber(view.from, eKW_UNIT_FREQ_SEC),
                                        KW_FormatNumber(view.to, eKW_UNIT_FREQ_SEC),
                                        GetTraceName(record, trace)));
            }
        }
        if (!(view.to > view.from) || std::isinf(view.to - view.from))
        {
            throw CFailure(eSTATUS_USAGE, QStringLiteral("--to has to lie behind --from"));
        }
        return view;
    }

    static void AddFrames(const CKWRecord& record, const std::vector<UINT32>& traces, CReply& reply)
    {
        for (const UINT32 trace : traces)
        {
            if (record.GetTrace(trace).format == eKW_SAMPLES_FRAMES)
            {
                reply.Line({}).Line(GetTraceName(record, trace));
                reply.Lines(GetFrameLines(record, trace));
                reply.Field("frames", GetFrameObjects(record, trace));
            }
        }
    }

    void AddColumns(const CKWRecord& record, const std::vector<UINT32>& traces,
                    const t_WaveView& view, CReply& reply) const
    {
        if (columns < 1 || columns > kMostColumns)
        {
            throw CFailure(
                eSTATUS_USAGE,
                QStringLiteral("--columns: %1 is not from 1 to %2").arg(columns).arg(kMostColumns));
        }
        QJsonObject json;
        for (const UINT32 trace : traces)
        {
            QJsonArray pairs;
            CTable table;
            const double width = (view.to - view.from) / columns;
            double time = view.from;
            for (const KW_MinMax& column : GetViewColumns(record, trace, view, columns))
            {
                table.Add(
                    {QString::number(time, 'g', 9), Text(column.minimum), Text(column.maximum)});
                pairs.append(
                    QJsonArray{NumberOrNull(column.minimum), NumberOrNull(column.maximum)});
                time += width;
            }
            reply.Line({}).Line(GetTraceName(record, trace)).Lines(table.GetLines(0));
            json[GetTraceName(record, trace)] = pairs;
        }
        reply.Field("columns", json);
    }

    static QString Text(double number)
    {
        return std::isnan(number) ? QStringLiteral("–") : QString::number(number, 'g', 9);
    }
};
} // namespace

void AddWavePicture(CSession& session, const CKWRecord& record, const QString& svg, CReply& reply)
{
    const std::vector<UINT32> traces = ChooseTraces(record, {}, {});
    CWaveInfo(session, record).AddTo(reply, traces);
    AddDrawing(DrawWave(record, traces, GetWholeView(record, traces)), svg, reply);
}

void AddWaveShow(CLI::App& wave, t_Run& run)
{
    AddSubcommand<t_WaveShowOptions>(wave, run, "show", "Draw a record", kWaveShowFooter);
    AddSubcommand<t_WaveInfoOptions>(wave, run, "info", "Say what is in a file of a record",
                                     kWaveInfoFooter);
}
