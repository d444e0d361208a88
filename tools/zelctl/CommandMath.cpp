// SPDX-License-Identifier: MIT
#include "EnumText.h"
#include "Mathematics/Mathematics.h"
#include "ValueText.h"
#include "WaveCommands.h"
#include "WaveFormats.h"

#include <QFileInfo>
#include <QJsonArray>
#include <array>
#include <optional>

namespace
{
constexpr char kMathFooter[] =
    "Computes the curve M1 as the mathematics channel does. C1, C2, C3, C4 and R1 are the traces "
    "of\n"
    "the files in their order. An expression is made of them, of numbers with V, A, W, Ohm, s or "
    "Hz\n"
    "directly behind them, of + - * /, brackets, abs() and sqr(). Instead of it, the name of an\n"
    "operation is applied to the first trace, or to the first two: ADD, SUBTRACT, MULTIPLY, "
    "DIVIDE,\n"
    "ABS, INVERT, RECIPROCAL, SQUARE, SQRT, LOG10, LN, DERIVATIVE, INTEGRAL, LOW_PASS, HIGH_PASS.\n"
    "\n"
    "Examples:\n"
    "  zelctl math C1*C2 examples/waves/burst.csv\n"
    "  zelctl math LOW_PASS examples/waves/burst.csv --frequency 2kHz -o slow.rec\n"
    "  zelctl math --check \"sqr(C1)/50Ohm\"\n"
    "\n"
    "Exit status 0: done; 1: the expression can not be computed, or there is something to report;\n"
    "2: a file or a word can not be used.";

constexpr std::array<KW_ZEL_CHANNEL, 5> kChannels{eKW_ZEL_CHANNEL_C1, eKW_ZEL_CHANNEL_C2,
                                                  eKW_ZEL_CHANNEL_C3, eKW_ZEL_CHANNEL_C4,
                                                  eKW_ZEL_CHANNEL_R1};
constexpr const char* kNames[] = {"C1", "C2", "C3", "C4", "R1"};

/** The traces of several files as those of one record. */
class CSources
{
public:
    void Add(const QString& fileName, const t_WaveOptions& options)
    {
        const CKWRecord record = ReadWave(fileName, m_notes, options);
        m_draft.info = m_draft.traces.empty() ? record.GetInfo() : m_draft.info;
        for (UINT32 i = 0; i < record.GetTraceCount(); ++i)
        {
            KW_TraceInfo trace = record.GetTrace(i);
            if (trace.count == 0 || !KW_IsCurve(trace.format))
            {
                continue;
            }
            const std::size_t place = m_draft.traces.size();
            if (place == kChannels.size())
            {
                throw CFailure(eSTATUS_USAGE,
                               QStringLiteral("%1: more than five traces: choose with \"zelctl "
                                              "wave convert --channel\"")
                                   .arg(fileName));
            }
            m_lines << QStringLiteral("%1: %2 of %3")
                           .arg(QLatin1String(kNames[place]), GetTraceName(record, i),
                                QFileInfo(fileName).fileName());
            trace.channel = kChannels[place];
            const std::span<const std::byte> samples = record.GetSamples(i);
            m_draft.traces.push_back(trace);
            m_draft.samples.emplace_back(samples.begin(), samples.end());
        }
    }

    CKWRecord Make(const QString& fileName) { return m_draft.Make(fileName); }
    const QStringList& Lines() const { return m_lines; }
    QStringList& Notes() { return m_notes; }
    const std::vector<KW_TraceInfo>& Traces() const { return m_draft.traces; }

private:
    t_WaveDraft m_draft;
    QStringList m_lines;
    QStringList m_notes;
};

/** The operation of a name; nothing for what may be an expression. */
std::optional<KW_ZEL_MATHEMATICS_TYPE> OperationOf(const QString& text)
{
    const auto found = GetStaticEnumNameInfo<KW_ZEL_MATHEMATICS_TYPE>().ConvertName(text);
    return found.match == CEnumNameInfo::eMATCH::One
               ? std::optional(static_cast<KW_ZEL_MATHEMATICS_TYPE>(found.value))
               : std::nullopt;
}

struct t_MathOptions
{
    std::string expression;
    std::vector<std::string> waves;
    std::string output;
    std::string svg;
    std::string interval;
    std::string frequency;
    std::string start;
    bool isCheck = false;
    bool isFloat = false;

    void Declare(CLI::App& command)
    {
        command.add_option("expression", expression, "What to compute")->required();
        command.add_option("wave", waves, "Files of records");
        command.add_flag("--check", isCheck, "Only say what the expression is");
        command.add_option("-o,--output", output, "Write the curve to this file")
            ->type_name("FILE");
        command.add_option("--svg", svg, "Write the drawing to this file")->type_name("FILE");
        command.add_flag("--float", isFloat, "Compute numbers instead of a curve with 16 bit");
        command.add_option("--frequency", frequency, "Corner of a filter, 1 MHz by default")
            ->type_name("FREQUENCY");
        command.add_option("--start", start, "Value of an integral at the left edge")
            ->type_name("VALUE");
        DeclareInterval(command, interval);
    }

    t_Answer Run(CSession& session) const
    {
        const QString text = ToText(expression);
        const auto operation = OperationOf(text);
        CKWMathExpression read;
        KW_MathError error;
        if (!operation && !KW_IsAccepted(read.Read(text, error)))
        {
            return Refuse(session, error);
        }
        return isCheck ? Check(session, read) : Compute(session, operation);
    }

private:
    /** The place below the text, and what is wrong there. */
    t_Answer Refuse(CSession& session, const KW_MathError& error) const
    {
        const QString text = ToText(expression);
        CReply reply(session, QStringLiteral("math"));
        reply.Line(text).Line(QString(static_cast<int>(error.column) - 1, QLatin1Char(' ')) +
                              QLatin1Char('^'));
        reply.Field("expression", text)
            .Field("isValid", false)
            .Field("column", static_cast<int>(error.column))
            .Field("error", error.text);
        const t_Answer answer = reply.Send(eKW_ACC_BAD_TEXT, eSTATUS_REFUSED);
        if (!reply.IsDocument())
        {
            session.GetOutput().Problem(
                QStringLiteral("column %1: %2").arg(error.column).arg(error.text));
        }
        return answer;
    }

    t_Answer Check(CSession& session, const CKWMathExpression& read) const
    {
        if (!read)
        {
            throw CFailure(eSTATUS_USAGE, QStringLiteral("--check: \"%1\" is an operation; checked "
                                                         "are expressions such as C1+C2")
                                              .arg(ToText(expression)));
        }
        QStringList lines;
        QJsonArray json;
        for (const KW_MathElement& element : read.GetElements())
        {
            const QString name = KW_WriteMathElements({element});
            const QString type =
                GetStaticEnumNameInfo<KW_ZEL_MATH_ELEMENT_TYPE>().GetName(element.type);
            lines << QStringLiteral("%1 %2").arg(name, -8).arg(type.toLower());
            json.append(QJsonObject{{QStringLiteral("text"), name},
                                    {QStringLiteral("type"), type},
                                    {QStringLiteral("column"), static_cast<int>(element.column)}});
        }
        std::array<KW_UNIT, eKW_MATH_CHANNELS> units{};
        units.fill(eKW_UNIT_LEVEL_V);
        const KW_UNIT unit = read.GetUnit(units);
        const QString unitText = unit == eKW_UNIT_NOT_DEFINED ? QStringLiteral("not defined")
                                 : unit == eKW_UNIT_NONE      ? QStringLiteral("none")
                                                              : KW_GetUnitText(unit);
        CReply reply(session, QStringLiteral("math"));
        reply.Lines(lines)
            .Line(QStringLiteral("unit %1, of channels in V").arg(unitText))
            .Field("expression", ToText(expression))
            .Field("isValid", true)
            .Field("elements", json)
            .Field("unit", unitText);
        return reply.Send();
    }

    KW_MathSettings Settings(std::optional<KW_ZEL_MATHEMATICS_TYPE> operation) const
    {
        KW_MathSettings settings;
        settings.usesExpression = !operation;
        settings.type = operation.value_or(settings.type);
        settings.expression = ToText(expression);
        settings.format = isFloat ? eKW_SAMPLES_FLOAT : eKW_SAMPLES_INT16;
        if (!frequency.empty())
        {
            settings.filterFrequency =
                ReadDouble(ToText(frequency), eKW_UNIT_FREQ_HZ, QStringLiteral("--frequency"));
        }
        if (!start.empty())
        {
            settings.integralStart =
                ReadDouble(ToText(start), eKW_UNIT_NONE, QStringLiteral("--start"));
        }
        return settings;
    }

    t_Answer Compute(CSession& session, std::optional<KW_ZEL_MATHEMATICS_TYPE> operation) const
    {
        if (waves.empty())
        {
            throw CFailure(eSTATUS_USAGE,
                           QStringLiteral("a file with samples is missing; \"--check\" "
                                          "looks at an expression alone"));
        }
        if (!output.empty())
        {
            RequireWaveName(ToText(output));
        }
        CSources sources;
        for (const std::string& wave : waves)
        {
            sources.Add(ToText(wave), ReadWaveOptions(interval));
        }
        CKWMathematics mathematics;
        KW_MathError error;
        KW_ACCEPTANCE code = mathematics.Configure(Settings(operation), error);
        CKWRecord curve;
        code = KW_IsAccepted(code) ? mathematics.Compute(sources.Make(ToText(waves.front())), curve)
                                   : code;
        if (!KW_IsAccepted(code))
        {
            throw CFailure(eSTATUS_USAGE, code, Explain(code, sources));
        }
        CReply reply(session, QStringLiteral("math"));
        reply.Lines(sources.Lines()).Field("sources", QJsonArray::fromStringList(sources.Lines()));
        AddWavePicture(session, curve, ToText(svg), reply);
        if (!output.empty())
        {
            WriteWave(ToText(output), curve, sources.Notes());
            reply.Line(QStringLiteral("wrote %1").arg(ToText(output)))
                .Field("file", ToText(output));
        }
        return SendWithNotes(session, reply, sources.Notes());
    }

    static QString Explain(KW_ACCEPTANCE code, const CSources& sources)
    {
        switch (code)
        {
        case eKW_ACC_NOT_FOUND:
            return QStringLiteral("a source is missing; there is %1")
                .arg(sources.Lines().join(QStringLiteral(", ")));
        case eKW_ACC_WRONG_KIND:
            return QStringLiteral("pairs of minimum and maximum have no derivative and no filter, "
                                  "and need sources at the same times");
        default:
            return KW_GetAcceptanceText(code);
        }
    }
};
} // namespace

void AddMathCommand(CLI::App& app, t_Run& run)
{
    AddCommand<t_MathOptions>(app, run, "math", "Compute a curve from records of samples",
                              kMathFooter);
}
