// SPDX-License-Identifier: MIT
#include "WaveDrawing.h"

#include "KWTexts.h"
#include "WaveFile.h"
#include "WaveFormats.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace
{
constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

/** Where a time stands in a trace. */
double PositionOf(const KW_TraceInfo& trace, double time)
{
    return (time - trace.start) / trace.interval;
}

/** A power of a thousand with the prefix that stands for it, for numbers up to `most`. */
struct t_Prefix
{
    double factor;
    const char16_t* text;
};

t_Prefix FindPrefix(double most)
{
    static constexpr t_Prefix kPrefixes[] = {{1e9, u"G"},  {1e6, u"M"},  {1e3, u"k"}, {1.0, u""},
                                             {1e-3, u"m"}, {1e-6, u"µ"}, {1e-9, u"n"}};
    for (const t_Prefix& prefix : kPrefixes)
    {
        if (most >= prefix.factor)
        {
            return prefix;
        }
    }
    return most > 0 ? t_Prefix{1e-12, u"p"} : t_Prefix{1.0, u""};
}

/** Units that are counted in thousands; others, such as dB, are written as they are. */
bool TakesPrefix(KW_UNIT unit)
{
    const QString text = KW_FormatNumber(1000.0, unit);
    return text.startsWith(QLatin1String("1 k"));
}

/** An axis from `least` to `most`, in the prefix that suits it. */
t_Diagram::t_Axis MakeAxis(double least, double most, KW_UNIT unit, const QString& name, int lines,
                           double& factor)
{
    const double greatest = std::max(std::abs(least), std::abs(most));
    const t_Prefix prefix = TakesPrefix(unit) ? FindPrefix(greatest) : t_Prefix{1.0, u""};
    const QString text = unit == eKW_UNIT_NOT_DEFINED ? QString() : KW_GetUnitText(unit);
    const QString shown = QString::fromUtf16(prefix.text) + text;
    factor = prefix.factor;
    return {name.isEmpty() || shown.isEmpty() ? name + shown : name + QLatin1String(" / ") + shown,
            least / factor, most / factor, GetGridStep((most - least) / factor, lines)};
}

/** Room above and below a curve; some for one that is flat. */
KW_MinMax Widen(const KW_MinMax& range)
{
    if (std::isnan(range.minimum))
    {
        return {-1.0, 1.0};
    }
    const double height = range.maximum - range.minimum;
    const double flat = range.maximum == 0.0 ? 1.0 : std::abs(range.maximum);
    const double room = height > 1e-9 * flat ? 0.05 * height : 0.5 * flat;
    return {range.minimum - room, range.maximum + room};
}

KW_MinMax RangeOf(const std::vector<KW_MinMax>& columns)
{
    KW_MinMax range{kNone, kNone};
    for (const KW_MinMax& column : columns)
    {
        range.minimum = std::fmin(range.minimum, column.minimum);
        range.maximum = std::fmax(range.maximum, column.maximum);
    }
    return range;
}

t_Diagram::t_Axis MakeTimeAxis(const t_WaveView& view)
{
    constexpr int kGridLines = 8;
    double factor = 1.0;
    return MakeAxis(view.from, view.to, eKW_UNIT_FREQ_SEC, QStringLiteral("time"), kGridLines,
                    factor);
}

t_Diagram DrawTrace(const CKWRecord& record, UINT32 trace, const t_WaveView& view)
{
    constexpr int kGridLines = 4;
    const KW_MinMax range = Widen(RangeOf(GetViewColumns(record, trace, view, 1)));
    double factor = 1.0;
    t_Diagram diagram{
        GetTraceName(record, trace),
        MakeTimeAxis(view),
        MakeAxis(range.minimum, range.maximum, record.GetTrace(trace).unit, {}, kGridLines, factor),
        {},
        {}};
    diagram.curves.emplace_back(
        [=](int columns)
        {
            std::vector<t_Extent> extents;
            for (const KW_MinMax& column : GetViewColumns(record, trace, view, columns))
            {
                extents.push_back({column.minimum / factor, column.maximum / factor});
            }
            return extents;
        });
    return diagram;
}

std::vector<t_Extent> GetLineExtents(const CKWRecord& record, UINT32 trace, const t_WaveView& view,
                                     UINT32 line, int columns)
{
    constexpr double kHigh = 0.6; ///< of the room of a line
    const KW_TraceInfo info = record.GetTrace(trace);
    const double first = PositionOf(info, view.from);
    std::vector<KW_LineStates> states(static_cast<std::size_t>(columns));
    record.GetLines(trace, first, PositionOf(info, view.to) - first, states);
    std::vector<t_Extent> extents;
    for (const KW_LineStates& state : states)
    {
        const bool always = (state.always >> line & 1U) != 0;
        const bool once = (state.once >> line & 1U) != 0;
        const bool isGap = always && !once;
        extents.push_back({isGap ? kNone : line + (always ? kHigh : 0.0),
                           isGap ? kNone : line + (once ? kHigh : 0.0)});
    }
    return extents;
}

t_Diagram DrawLines(const CKWRecord& record, UINT32 trace, const t_WaveView& view)
{
    t_Diagram diagram{QStringLiteral("D0 to D7"),
                      MakeTimeAxis(view),
                      {QStringLiteral("line"), -0.25, kLines - 0.25, 1.0},
                      {},
                      {}};
    for (UINT32 line = 0; line < kLines; ++line)
    {
        diagram.curves.emplace_back([=](int columns)
                                    { return GetLineExtents(record, trace, view, line, columns); });
    }
    return diagram;
}
} // namespace

t_WaveView GetWholeView(const CKWRecord& record, const std::vector<UINT32>& traces)
{
    t_WaveView view;
    bool isFirst = true;
    for (const UINT32 trace : traces)
    {
        const KW_TraceInfo info = record.GetTrace(trace);
        if (info.format == eKW_SAMPLES_FRAMES)
        {
            continue;
        }
        const UINT32 settling = std::min(info.settlingPoints, info.count - 1);
        const double from = info.start + settling * info.interval;
        const double to = info.start + std::max(info.count - 1, settling + 1) * info.interval;
        view.from = isFirst ? from : std::min(view.from, from);
        view.to = isFirst ? to : std::max(view.to, to);
        isFirst = false;
    }
    view.to = isFirst ? 1.0 : view.to;
    return view;
}

std::vector<KW_MinMax> GetViewColumns(const CKWRecord& record, UINT32 trace, const t_WaveView& view,
                                      int columns)
{
    const KW_TraceInfo info = record.GetTrace(trace);
    const double first = PositionOf(info, view.from);
    std::vector<KW_MinMax> found(static_cast<std::size_t>(columns), {kNone, kNone});
    record.GetColumns(trace, first, PositionOf(info, view.to) - first, found, view.interpolation);
    return found;
}

std::vector<t_Diagram> DrawWave(const CKWRecord& record, const std::vector<UINT32>& traces,
                                const t_WaveView& view)
{
    std::vector<t_Diagram> diagrams;
    for (const UINT32 trace : traces)
    {
        const KW_SAMPLE_FORMAT format = record.GetTrace(trace).format;
        if (KW_IsCurve(format))
        {
            diagrams.push_back(DrawTrace(record, trace, view));
        }
        else if (format == eKW_SAMPLES_LINES)
        {
            diagrams.push_back(DrawLines(record, trace, view));
        }
    }
    return diagrams;
}

t_WaveFigures GetWaveFigures(const CKWRecord& record, UINT32 trace)
{
    t_WaveFigures figures{record.GetTrace(trace), 0, {kNone, kNone}};
    const KW_TraceInfo& info = figures.info;
    if (info.count == 0 || !KW_IsCurve(info.format))
    {
        return figures;
    }
    std::array<KW_MinMax, 1> whole{};
    record.GetColumns(trace, 0, info.count, whole);
    figures.range = whole[0];
    const CWaveValues values(record, trace);
    for (UINT32 i = 0; i < info.count; ++i)
    {
        figures.invalid += std::isnan(values.Get(i)) ? 1U : 0U;
    }
    return figures;
}
