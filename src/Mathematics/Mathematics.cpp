// SPDX-License-Identifier: MIT
#include "Mathematics/Mathematics.h"

#include "Mathematics/Evaluation.h"
#include "Mathematics/UnitRules.h"
#include "Streams/Acquisition.h"
#include "Streams/Extremes.h"
#include "Streams/Slots.h"

#include <algorithm>
#include <cmath>

using namespace NMathematics;

namespace
{
constexpr UINT32 kMostRecords = 64;

struct t_Limits
{
    double value;
    double least;
    double most;
};

KW_ACCEPTANCE CheckNumbers(const KW_MathSettings& settings)
{
    // Ways of rounding in a tree may leave numbers beside their limits by a bit.
    const t_Limits limits[] = {
        {settings.filterFrequency, std::numeric_limits<double>::min(), 1e30},
        {settings.integralStart, -1e30, 1e30},
        {settings.scale.scale, 0.999e-12, 1.001e12},
        {settings.scale.position, -4.001, 4.001},
    };
    for (const t_Limits& row : limits)
    {
        if (!(row.value >= row.least && row.value <= row.most))
        {
            return std::isnan(row.value)   ? eKW_ACC_NOT_A_NUMBER
                   : row.value < row.least ? eKW_ACC_BELOW_MINIMUM
                                           : eKW_ACC_ABOVE_MAXIMUM;
        }
    }
    return eKW_ACC_OK;
}

bool IsSource(KW_ZEL_CHANNEL channel)
{
    return (channel >= eKW_ZEL_CHANNEL_C1 && channel <= eKW_ZEL_CHANNEL_C4) ||
           channel == eKW_ZEL_CHANNEL_R1;
}

bool IsKnown(const KW_MathSettings& settings)
{
    const bool isOperation = settings.type >= eKW_ZEL_MATHEMATICS_TYPE_ADD &&
                             settings.type <= eKW_ZEL_MATHEMATICS_TYPE_HIGH_PASS &&
                             IsSource(settings.sourceA) &&
                             (!HasTwoSources(settings.type) || IsSource(settings.sourceB));
    return (settings.usesExpression || isOperation) &&
           (settings.format == eKW_SAMPLES_INT16 || settings.format == eKW_SAMPLES_FLOAT);
}

/** A trace of a record. */
struct t_Place
{
    const CKWRecord* record = nullptr; ///< null: there is none
    UINT32 trace = 0;
};

template <class TCheck>
t_Place FindTrace(const CKWRecord& record, TCheck isWanted)
{
    for (UINT32 i = 0; i < record.GetTraceCount(); ++i)
    {
        const KW_TraceInfo info = record.GetTrace(i);
        if (info.count > 0 && isWanted(info))
        {
            return {&record, i};
        }
    }
    return {};
}

t_Place FindSource(KW_ZEL_CHANNEL channel, const CKWRecord& record, const CKWRecord& reference)
{
    const auto isIt = [channel](const KW_TraceInfo& info) { return info.channel == channel; };
    t_Place place = FindTrace(record, isIt);
    if (place.record == nullptr && channel == eKW_ZEL_CHANNEL_R1)
    {
        place = FindTrace(reference, isIt);
        place = place.record != nullptr
                    ? place
                    : FindTrace(reference, [](const KW_TraceInfo&) { return true; });
    }
    return place;
}
} // namespace

/** What is computed, and the memory that it is computed in. */
struct NMathematics::t_Curve
{
    explicit t_Curve(UINT32 count) : records(count) {}

    std::shared_ptr<const t_Program> program;
    KW_MathSettings settings;
    KW_MathScale scale; ///< of the last result
    std::vector<CKWRecord> records;
    std::vector<float> scratch;
    t_Task task; ///< of the record that is being computed

    KW_ACCEPTANCE Bind(const CKWRecord& record, const CKWRecord& reference);
    KW_ACCEPTANCE CheckSources() const;
    bool HasPairs() const;
    void FindScale();
    KW_MinMax Range();
    KW_MinMax RangeOfPairs() const;
    KW_UNIT Unit() const;
    KW_TraceInfo DescribeTrace() const;
    UINT32 FillReals(CKWRecordMaker& maker);
    UINT32 FillWords(CKWRecordMaker& maker, CQuantizer quantizer);
    UINT32 FillPairs(CKWRecordMaker& maker, CQuantizer quantizer) const;

    template <class TTake>
    void EachBlock(TTake take) const
    {
        for (UINT32 first = 0; first < task.grid.count; first += kBlock)
        {
            take(first, std::min(kBlock, task.grid.count - first));
        }
    }
};

/** Finds the traces, and on which points the result stands. */
KW_ACCEPTANCE t_Curve::Bind(const CKWRecord& record, const CKWRecord& reference)
{
    task.program = program.get();
    task.grid = {};
    std::array<t_Place, eKW_MATH_CHANNELS> places;
    for (const KW_ZEL_CHANNEL channel : program->sources)
    {
        places[channel] = FindSource(channel, record, reference);
        if (places[channel].record == nullptr)
        {
            return eKW_ACC_NOT_FOUND;
        }
    }
    const t_Place first = program->sources.empty() ? FindTrace(record, [](const KW_TraceInfo& info)
                                                               { return KW_IsCurve(info.format); })
                                                   : places[program->sources.front()];
    if (first.record == nullptr)
    {
        return eKW_ACC_NOT_FOUND;
    }
    task.grid = first.record->GetTrace(first.trace);
    for (const KW_ZEL_CHANNEL channel : program->sources)
    {
        const t_Place place = places[channel];
        task.sources[channel] = CSource(place.record->GetSamples(place.trace),
                                        place.record->GetTrace(place.trace), task.grid);
    }
    task.time = {settings.type, task.grid.interval, task.grid.settlingPoints,
                 settings.integralStart, settings.filterFrequency};
    return CheckSources();
}

KW_ACCEPTANCE t_Curve::CheckSources() const
{
    const bool seesPairs = !task.IsOverTime() || settings.type == eKW_ZEL_MATHEMATICS_TYPE_INTEGRAL;
    for (const KW_ZEL_CHANNEL channel : program->sources)
    {
        const CSource& source = task.sources[channel];
        if (!KW_IsCurve(source.Trace().format) ||
            (source.HasPairs() && (!seesPairs || !source.IsAligned())))
        {
            return eKW_ACC_WRONG_KIND;
        }
    }
    return eKW_ACC_OK;
}

bool t_Curve::HasPairs() const
{
    return std::any_of(program->sources.begin(), program->sources.end(),
                       [this](KW_ZEL_CHANNEL channel) { return task.sources[channel].HasPairs(); });
}

void t_Curve::FindScale()
{
    scale = settings.scale;
    if (settings.autoScale)
    {
        scale = {};
        KW_FindMathScale(HasPairs() ? RangeOfPairs() : Range(), scale);
    }
}

/** Of the points that are shown. */
KW_MinMax t_Curve::Range()
{
    CEvaluation evaluation(task, scratch.data());
    NStreams::CExtremes<NStreams::t_FloatPoints> extremes;
    EachBlock(
        [&](UINT32 first, UINT32 count)
        {
            const float* const values = evaluation.Next(first, count, nullptr);
            const UINT32 hidden = std::min(count, task.grid.settlingPoints -
                                                      std::min(task.grid.settlingPoints, first));
            extremes.Samples(values + hidden, count - hidden);
        });
    float low = 0.0F;
    float high = 0.0F;
    extremes.Get(low, high);
    return {low, high};
}

KW_MinMax t_Curve::RangeOfPairs() const
{
    constexpr double kInfinite = std::numeric_limits<double>::infinity();
    CPairEvaluation evaluation(task);
    KW_MinMax range{kInfinite, -kInfinite};
    for (UINT32 point = 0; point < task.grid.count; ++point)
    {
        const t_Interval value = evaluation.Next(point);
        if (point >= task.grid.settlingPoints && value.low <= value.high) // NaN compares false
        {
            range = {std::min(range.minimum, value.low), std::max(range.maximum, value.high)};
        }
    }
    return range;
}

KW_UNIT t_Curve::Unit() const
{
    std::array<KW_UNIT, eKW_MATH_CHANNELS> units{};
    for (const KW_ZEL_CHANNEL channel : program->sources)
    {
        units[channel] = task.sources[channel].Trace().unit;
    }
    return UnitOf(*program, units);
}

KW_TraceInfo t_Curve::DescribeTrace() const
{
    KW_TraceInfo trace = task.grid;
    trace.channel = eKW_ZEL_CHANNEL_M1;
    trace.unit = Unit();
    trace.format = HasPairs() ? eKW_SAMPLES_MINMAX : settings.format;
    trace.scale = 1.0;
    trace.offset = 0.0;
    if (trace.format != eKW_SAMPLES_FLOAT)
    {
        trace.scale = scale.scale / KW_COUNTS_PER_DIVISION;
        trace.offset = -scale.position * scale.scale;
    }
    trace.flags = 0;
    for (const KW_ZEL_CHANNEL channel : program->sources)
    {
        trace.flags |= task.sources[channel].Trace().flags;
    }
    return trace;
}

UINT32 t_Curve::FillReals(CKWRecordMaker& maker)
{
    CEvaluation evaluation(task, scratch.data());
    EachBlock(
        [&](UINT32 first, UINT32 count)
        {
            // A vector more than there are points would reach into what stands behind them.
            auto* const target = reinterpret_cast<float*>(maker.Reserve(0).data());
            const bool isWhole = count % kStep == 0;
            const float* const values = evaluation.Next(first, count, isWhole ? target : nullptr);
            if (!isWhole)
            {
                std::memcpy(target, values, count * sizeof(float));
            }
            maker.Advance(0, count);
        });
    return 0;
}

UINT32 t_Curve::FillWords(CKWRecordMaker& maker, CQuantizer quantizer)
{
    CEvaluation evaluation(task, scratch.data());
    EachBlock(
        [&](UINT32 first, UINT32 count)
        {
            auto* const target = reinterpret_cast<INT16*>(maker.Reserve(0).data());
            quantizer.Convert(evaluation.Next(first, count, nullptr), target, count);
            maker.Advance(0, count);
        });
    return quantizer.Flags();
}

UINT32 t_Curve::FillPairs(CKWRecordMaker& maker, CQuantizer quantizer) const
{
    CPairEvaluation evaluation(task);
    EachBlock(
        [&](UINT32 first, UINT32 count)
        {
            auto* target = reinterpret_cast<INT16*>(maker.Reserve(0).data());
            for (UINT32 i = 0; i < count; ++i)
            {
                const t_Interval value = evaluation.Next(first + i);
                *target++ = quantizer.Convert(value.low);
                *target++ = quantizer.Convert(value.high);
            }
            maker.Advance(0, count);
        });
    return quantizer.Flags();
}

CKWMathematics::CKWMathematics(UINT32 records)
    : m_curve(std::make_unique<t_Curve>(std::clamp(records, 1U, kMostRecords)))
{
    KW_MathError error;
    Configure({}, error);
}

CKWMathematics::~CKWMathematics() = default;

KW_ACCEPTANCE CKWMathematics::Configure(const KW_MathSettings& settings, KW_MathError& error)
{
    error = {};
    KW_ACCEPTANCE code = IsKnown(settings) ? CheckNumbers(settings) : eKW_ACC_UNKNOWN_VALUE;
    if (!KW_IsAccepted(code))
    {
        return code;
    }
    if (settings.usesExpression)
    {
        CKWMathExpression expression;
        code = expression.Read(settings.expression, error);
        if (!KW_IsAccepted(code))
        {
            return code;
        }
        m_curve->program = CKWMathExpression::t_Access::ProgramOf(expression);
    }
    else
    {
        m_curve->program = std::make_shared<const t_Program>(
            CompileOperation(settings.type, settings.sourceA, settings.sourceB));
    }
    m_curve->settings = settings;
    m_curve->scratch.resize(CEvaluation::ScratchSize(*m_curve->program));
    return code;
}

KW_ACCEPTANCE CKWMathematics::Compute(const CKWRecord& record, CKWRecord& result,
                                      const CKWRecord& reference)
{
    if (!record)
    {
        return eKW_ACC_NOTHING_TO_ACT_ON;
    }
    t_Curve& data = *m_curve;
    if (const KW_ACCEPTANCE code = data.Bind(record, reference); !KW_IsAccepted(code))
    {
        return code;
    }
    const auto free =
        std::find_if(data.records.begin(), data.records.end(),
                     [](const CKWRecord& kept) { return !kept || NStreams::HasOneHolder(kept); });
    if (free == data.records.end())
    {
        return eKW_ACC_CONTAINER_FULL;
    }
    const bool hasPairs = data.HasPairs();
    if (hasPairs || data.settings.format == eKW_SAMPLES_INT16)
    {
        data.FindScale();
    }
    const KW_TraceInfo trace = data.DescribeTrace();
    CKWRecordMaker maker(record.GetInfo(), {&trace, 1}, std::move(*free));
    if (!KW_IsAccepted(maker.GetCode()))
    {
        return maker.GetCode();
    }
    const CQuantizer quantizer(trace.scale, trace.offset);
    const UINT32 flags = hasPairs ? data.FillPairs(maker, quantizer)
                         : data.settings.format == eKW_SAMPLES_FLOAT
                             ? data.FillReals(maker)
                             : data.FillWords(maker, quantizer);
    *free = maker.Make();
    NStreams::t_Record& made = *CKWRecord::t_Access::SlotOf(*free)->record;
    made.traces[0].flags.store(trace.flags | flags, std::memory_order_relaxed);
    result = *free;
    return eKW_ACC_OK;
}

KW_MathScale CKWMathematics::GetScale() const
{
    return m_curve->scale;
}
