// SPDX-License-Identifier: MIT
// A mask test beside one pass over the points.

#include "Masks/MaskTest.h"

#include <benchmark/benchmark.h>
#include <cmath>
#include <cstdlib>
#include <random>
#include <vector>

namespace
{
constexpr UINT32 kMaskPoints = 1000000;
const KW_MaskFrame kFrame{eKW_UNIT_NOT_DEFINED, 0.0, 1.0, 0.0, 1.0};

/** Some periods of a sine with noise; with `isSquare` steps instead. */
std::vector<INT16> Signal(bool isSquare)
{
    std::mt19937 random(1);
    std::vector<INT16> points(kMaskPoints);
    for (UINT32 i = 0; i < kMaskPoints; ++i)
    {
        const double sine = std::sin(i * 2e-5);
        const double value = isSquare ? (sine > 0 ? 1.0 : -1.0) : sine;
        points[i] = static_cast<INT16>(20000 * value + static_cast<double>(random() % 1000));
    }
    return points;
}

CKWRecord RecordOf(const std::vector<INT16>& points)
{
    KW_TraceInfo info;
    info.count = kMaskPoints;
    info.interval = 10.0 / kMaskPoints;
    info.scale = 1e-4;
    const auto bytes = std::as_bytes(std::span(points));
    return KW_MakeRecord({}, {&info, 1}, {&bytes, 1});
}

void Test(benchmark::State& state, bool isSquare, double shift)
{
    const CKWRecord record = RecordOf(Signal(isSquare));
    KW_Mask mask;
    if (KW_MakeMask(record, 0, kFrame, 0.2, 0.2, mask) != eKW_ACC_OK)
    {
        std::abort();
    }
    KW_MaskFrame frame = kFrame;
    frame.middle -= shift;
    for (auto _ : state)
    {
        auto line = eKW_ZEL_LIMIT_INSIDE;
        KW_TestMask(record, 0, mask, frame, 0, line);
        benchmark::DoNotOptimize(line);
    }
    state.counters["points"] = static_cast<double>(mask.upper.size() + mask.lower.size());
}
} // namespace

static void MaskBaselinePass(benchmark::State& state)
{
    const std::vector<INT16> points = Signal(false);
    for (auto _ : state)
    {
        INT16 low = INT16_MAX;
        INT16 high = INT16_MIN;
        for (const INT16 point : points)
        {
            low = std::min(low, point);
            high = std::max(high, point);
        }
        benchmark::DoNotOptimize(low);
        benchmark::DoNotOptimize(high);
    }
}
BENCHMARK(MaskBaselinePass);

static void MaskTestSinePasses(benchmark::State& state)
{
    Test(state, false, 0.0);
}
BENCHMARK(MaskTestSinePasses);

static void MaskTestStepsPass(benchmark::State& state)
{
    Test(state, true, 0.0);
}
BENCHMARK(MaskTestStepsPass);

static void MaskTestFails(benchmark::State& state)
{
    Test(state, false, 0.21);
}
BENCHMARK(MaskTestFails);
