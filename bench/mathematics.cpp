// SPDX-License-Identifier: MIT
// Curves of the mathematics channel beside loops as one would write them. Each ratio counts within
// one run: both stand in the same caches.
#include "Mathematics/Mathematics.h"
#include "Mathematics/Evaluation.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace NMathematics
{
namespace
{
constexpr UINT32 kCurvePoints = 1000000;

std::vector<INT16> CurveNoise(unsigned seed)
{
    std::mt19937 random(seed);
    std::vector<INT16> points(kCurvePoints);
    for (INT16& point : points)
    {
        point = static_cast<INT16>(random() % 4001) - 2000;
    }
    return points;
}

KW_TraceInfo InfoOf(KW_ZEL_CHANNEL channel)
{
    KW_TraceInfo info;
    info.channel = channel;
    info.unit = eKW_UNIT_LEVEL_V;
    info.count = kCurvePoints;
    info.scale = channel == eKW_ZEL_CHANNEL_C1 ? 2e-3 : 5e-4;
    info.offset = channel == eKW_ZEL_CHANNEL_C1 ? 0.5 : -0.25;
    return info;
}

/** Both sources, and what the loops read of them. */
struct t_Sources
{
    std::vector<INT16> a = CurveNoise(1);
    std::vector<INT16> b = CurveNoise(2);
    float scaleA = 2e-3F;
    float offsetA = 0.5F;
    float scaleB = 5e-4F;
    float offsetB = -0.25F;
    CKWRecord record = [this]
    {
        const KW_TraceInfo infos[] = {InfoOf(eKW_ZEL_CHANNEL_C1), InfoOf(eKW_ZEL_CHANNEL_C2)};
        const std::span<const std::byte> samples[] = {std::as_bytes(std::span(a)),
                                                      std::as_bytes(std::span(b))};
        return KW_MakeRecord({}, infos, samples);
    }();

    static float Value(INT16 sample, float scale, float offset)
    {
        constexpr float kNone = std::numeric_limits<float>::quiet_NaN();
        return sample == INT16_MIN ? kNone : static_cast<float>(sample) * scale + offset;
    }
    float ValueA(std::size_t i) const { return Value(a[i], scaleA, offsetA); }
    float ValueB(std::size_t i) const { return Value(b[i], scaleB, offsetB); }
    float Product(std::size_t i) const { return ValueA(i) * ValueB(i); }
};

INT16 Number(float value, float factor, float summand)
{
    if (!std::isfinite(value))
    {
        return INT16_MIN;
    }
    return static_cast<INT16>(
        std::lrintf(std::clamp(value * factor + summand, -32767.0F, 32767.0F)));
}

t_Task TaskOf(const t_Sources& sources, const t_Program& program)
{
    t_Task task;
    task.program = &program;
    task.grid = sources.record.GetTrace(0);
    for (UINT32 i = 0; i < 2; ++i)
    {
        task.sources[i] =
            CSource(sources.record.GetSamples(i), sources.record.GetTrace(i), task.grid);
    }
    return task;
}
} // namespace

static void MathBaselineFloat(benchmark::State& state)
{
    const t_Sources sources;
    std::vector<float> target(kCurvePoints);
    for (auto _ : state)
    {
        float* const values = target.data();
        for (std::size_t i = 0; i < kCurvePoints; ++i)
        {
            values[i] = sources.Product(i);
        }
        benchmark::DoNotOptimize(target.data());
        benchmark::ClobberMemory();
    }
}
BENCHMARK(MathBaselineFloat);

static void MathFloat(benchmark::State& state)
{
    const t_Sources sources;
    std::vector<float> target(kCurvePoints);
    const t_Program program =
        CompileOperation(eKW_ZEL_MATHEMATICS_TYPE_MULTIPLY, eKW_ZEL_CHANNEL_C1, eKW_ZEL_CHANNEL_C2);
    const t_Task task = TaskOf(sources, program);
    std::vector<float> scratch(CEvaluation::ScratchSize(program));
    for (auto _ : state)
    {
        CEvaluation evaluation(task, scratch.data());
        for (UINT32 i = 0; i < kCurvePoints; i += kBlock)
        {
            evaluation.Next(i, std::min(kBlock, kCurvePoints - i), target.data() + i);
        }
        benchmark::DoNotOptimize(target.data());
        benchmark::ClobberMemory();
    }
}
BENCHMARK(MathFloat);

static void MathBaselineWords(benchmark::State& state)
{
    const t_Sources sources;
    std::vector<INT16> target(kCurvePoints);
    for (auto _ : state)
    {
        for (std::size_t i = 0; i < kCurvePoints; ++i)
        {
            target[i] = Number(sources.Product(i), 6400.0F, -1.0F);
        }
        benchmark::DoNotOptimize(target.data());
        benchmark::ClobberMemory();
    }
}
BENCHMARK(MathBaselineWords);

static void MathWords(benchmark::State& state)
{
    const t_Sources sources;
    std::vector<INT16> target(kCurvePoints);
    const t_Program program =
        CompileOperation(eKW_ZEL_MATHEMATICS_TYPE_MULTIPLY, eKW_ZEL_CHANNEL_C1, eKW_ZEL_CHANNEL_C2);
    const t_Task task = TaskOf(sources, program);
    std::vector<float> scratch(CEvaluation::ScratchSize(program));
    for (auto _ : state)
    {
        CEvaluation evaluation(task, scratch.data());
        CQuantizer quantizer(1.0 / 6400.0, 1.0 / 6400.0);
        for (UINT32 i = 0; i < kCurvePoints; i += kBlock)
        {
            const UINT32 count = std::min(kBlock, kCurvePoints - i);
            quantizer.Convert(evaluation.Next(i, count, nullptr), target.data() + i, count);
        }
        benchmark::DoNotOptimize(target.data());
        benchmark::ClobberMemory();
    }
}
BENCHMARK(MathWords);

namespace
{
/** A whole record, with its pyramid. */
void Compute(benchmark::State& state, const char* expression, KW_SAMPLE_FORMAT format,
             bool autoScale)
{
    const t_Sources sources;
    KW_MathSettings settings;
    settings.usesExpression = true;
    settings.expression = QLatin1String(expression);
    settings.format = format;
    settings.autoScale = autoScale;
    CKWMathematics mathematics;
    KW_MathError error;
    mathematics.Configure(settings, error);
    CKWRecord result;
    for (auto _ : state)
    {
        mathematics.Compute(sources.record, result);
        benchmark::DoNotOptimize(result.GetSamples(0).data());
    }
}
} // namespace

static void MathRecordFloat(benchmark::State& state)
{
    Compute(state, "C1*C2", eKW_SAMPLES_FLOAT, false);
}
BENCHMARK(MathRecordFloat);

static void MathRecordWords(benchmark::State& state)
{
    Compute(state, "C1*C2", eKW_SAMPLES_INT16, false);
}
BENCHMARK(MathRecordWords);

static void MathRecordAutoScale(benchmark::State& state)
{
    Compute(state, "C1*C2", eKW_SAMPLES_INT16, true);
}
BENCHMARK(MathRecordAutoScale);

static void MathRecordExpression(benchmark::State& state)
{
    Compute(state, "abs(C1*C2-2)/(sqr(C1)+1)*(C2-C1)", eKW_SAMPLES_INT16, false);
}
BENCHMARK(MathRecordExpression);

/** What the expression is as a loop. */
static void MathBaselineExpression(benchmark::State& state)
{
    const t_Sources sources;
    std::vector<INT16> target(kCurvePoints);
    for (auto _ : state)
    {
        for (std::size_t i = 0; i < kCurvePoints; ++i)
        {
            const float a = sources.ValueA(i);
            const float b = sources.ValueB(i);
            target[i] = Number(std::fabs(a * b - 2) / (a * a + 1) * (b - a), 6400.0F, -1.0F);
        }
        benchmark::DoNotOptimize(target.data());
        benchmark::ClobberMemory();
    }
}
BENCHMARK(MathBaselineExpression);

static void MathRecordLowPass(benchmark::State& state)
{
    const t_Sources sources;
    KW_MathSettings settings;
    settings.type = eKW_ZEL_MATHEMATICS_TYPE_LOW_PASS;
    settings.filterFrequency = 0.01;
    settings.autoScale = false;
    CKWMathematics mathematics;
    KW_MathError error;
    mathematics.Configure(settings, error);
    CKWRecord result;
    for (auto _ : state)
    {
        mathematics.Compute(sources.record, result);
        benchmark::DoNotOptimize(result.GetSamples(0).data());
    }
}
BENCHMARK(MathRecordLowPass);
} // namespace NMathematics
