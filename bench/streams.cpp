// SPDX-License-Identifier: MIT
// Streams beside what they replace: what do publishing, fetching and a picture cost?

#include "StreamOperations.h"
#include "Streams/Frames.h"

#include <algorithm>
#include <atomic>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstring>
#include <memory>
#include <random>
#include <thread>
#include <vector>

namespace
{
constexpr UINT32 kMillion = 1000000;
constexpr std::size_t kColumns = 1250;

/** Lets copies of shared_ptr count as they do in every program with threads. */
void UseThreads()
{
    std::thread([] {}).join();
}
} // namespace

static void StreamPublish(benchmark::State& state)
{
    COpPublish operation;
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(operation());
    }
}
BENCHMARK(StreamPublish);

static void StreamPublish200Points(benchmark::State& state)
{
    COpPublishPoints operation;
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(operation());
    }
}
BENCHMARK(StreamPublish200Points);

/** A thousand records a second: what a record costs that meets a cold cache, the hundredth of it
    that is the slowest left out. */
static void StreamPublishAtOneKilohertz(benchmark::State& state)
{
    using t_Clock = std::chrono::steady_clock;
    CBenchStream stream(200, 100);
    std::vector<double> times;
    for (auto _ : state)
    {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
        stream.Writer().Reserve(0);
        const auto begin = t_Clock::now();
        stream.Publish();
        times.push_back(std::chrono::duration<double>(t_Clock::now() - begin).count());
        state.SetIterationTime(times.back());
    }
    std::sort(times.begin(), times.end());
    state.counters["p99_ns"] = 1e9 * times[times.size() * 99 / 100];
}
BENCHMARK(StreamPublishAtOneKilohertz)->Iterations(1000)->UseManualTime();

static void StreamBaselineSharedPointer(benchmark::State& state)
{
    UseThreads();
    const auto pointer = std::make_shared<int>(1);
    for (auto _ : state)
    {
        auto copy = pointer;
        benchmark::DoNotOptimize(copy.get());
    }
}
BENCHMARK(StreamBaselineSharedPointer);

static void StreamGetLatest(benchmark::State& state)
{
    COpGetLatest operation;
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(operation());
    }
}
BENCHMARK(StreamGetLatest);

static void StreamHasNew(benchmark::State& state)
{
    COpHasNew operation;
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(operation());
    }
}
BENCHMARK(StreamHasNew);

static void AcquisitionArm(benchmark::State& state)
{
    COpArm operation;
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(operation());
    }
}
BENCHMARK(AcquisitionArm);

static void StreamGetLatestBesideEightReaders(benchmark::State& state)
{
    CBenchStream stream(200, 100);
    stream.Write(Noise(200));
    stream.Publish();
    std::atomic<bool> isEnd{false};
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i)
    {
        threads.emplace_back(
            [&isEnd, reader = std::shared_ptr<IKWStreamReader>(stream.Reader())]
            {
                while (!isEnd)
                {
                    benchmark::DoNotOptimize(static_cast<bool>(reader->GetLatest()));
                }
            });
    }
    const auto reader = stream.Reader();
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(static_cast<bool>(reader->GetLatest()));
    }
    isEnd = true;
    for (std::thread& thread : threads)
    {
        thread.join();
    }
}
BENCHMARK(StreamGetLatestBesideEightReaders);

namespace
{
void Pass(const INT16* points, std::size_t count)
{
    INT16 low = INT16_MAX;
    INT16 high = INT16_MIN;
    for (std::size_t i = 0; i < count; ++i)
    {
        low = std::min(low, points[i]);
        high = std::max(high, points[i]);
    }
    benchmark::DoNotOptimize(low);
    benchmark::DoNotOptimize(high);
}

/** Throws out of the caches what is not asked for. */
void Cool()
{
    static std::vector<char> other(64U << 20U);
    std::memset(other.data(), 1, other.size());
    benchmark::DoNotOptimize(other.data());
}
} // namespace

static void StreamBaselinePass(benchmark::State& state)
{
    const std::vector<INT16> points = Noise(kMillion);
    for (auto _ : state)
    {
        Pass(points.data(), points.size());
    }
}
BENCHMARK(StreamBaselinePass);

static void StreamBaselineColdPass(benchmark::State& state)
{
    const std::vector<INT16> points = Noise(kMillion);
    for (auto _ : state)
    {
        state.PauseTiming();
        Cool();
        state.ResumeTiming();
        Pass(points.data(), points.size());
    }
}
BENCHMARK(StreamBaselineColdPass)->Iterations(20);

static void StreamBaselineCopyAndPass(benchmark::State& state)
{
    const std::vector<INT16> points = Noise(kMillion);
    std::vector<std::vector<INT16>> targets(6, points);
    std::size_t turn = 0;
    for (auto _ : state)
    {
        std::vector<INT16>& target = targets[turn++ % targets.size()];
        std::memcpy(target.data(), points.data(), points.size() * sizeof(INT16));
        Pass(target.data(), target.size());
    }
}
BENCHMARK(StreamBaselineCopyAndPass);

static void StreamFillAMillionPoints(benchmark::State& state)
{
    CBenchStream stream(kMillion, 4);
    const std::vector<INT16> points = Noise(kMillion);
    for (auto _ : state)
    {
        stream.Write(points);
        stream.Publish();
    }
}
BENCHMARK(StreamFillAMillionPoints);

namespace
{
/** A picture of so many points, of a record with a million. */
void Picture(benchmark::State& state, double count, KW_ZEL_INTERPOLATION_MODE mode, bool isCold)
{
    CBenchStream stream(kMillion, 2);
    const auto reader = stream.Reader();
    stream.Write(Noise(kMillion));
    stream.Publish();
    const CKWRecord record = reader->GetLatest();
    std::vector<KW_MinMax> columns(kColumns);
    for (auto _ : state)
    {
        if (isCold)
        {
            state.PauseTiming();
            Cool();
            state.ResumeTiming();
        }
        record.GetColumns(0, 0, count, columns, mode);
        benchmark::DoNotOptimize(columns.data());
    }
}
} // namespace

static void StreamColumns(benchmark::State& state)
{
    Picture(state, kMillion, eKW_ZEL_INTERPOLATION_MODE_LINEAR, false);
}
BENCHMARK(StreamColumns);

static void StreamColdColumns(benchmark::State& state)
{
    Picture(state, kMillion, eKW_ZEL_INTERPOLATION_MODE_LINEAR, true);
}
BENCHMARK(StreamColdColumns)->Iterations(20);

static void StreamCurve(benchmark::State& state)
{
    Picture(state, static_cast<double>(state.range(1)),
            static_cast<KW_ZEL_INTERPOLATION_MODE>(state.range(0)), false);
}
BENCHMARK(StreamCurve)
    ->ArgNames({"mode", "points"})
    ->Args({eKW_ZEL_INTERPOLATION_MODE_SINX, 100})
    ->Args({eKW_ZEL_INTERPOLATION_MODE_SINX, 1249})
    ->Args({eKW_ZEL_INTERPOLATION_MODE_LINEAR, 100})
    ->Args({eKW_ZEL_INTERPOLATION_MODE_LINEAR, 1249})
    ->Args({eKW_ZEL_INTERPOLATION_MODE_SAMPLE_HOLD, 100});

namespace
{
constexpr UINT32 kFrames = 1000;

std::vector<KW_Frame> SomeFrames()
{
    std::vector<KW_Frame> frames(kFrames);
    for (UINT32 i = 0; i < kFrames; ++i)
    {
        frames[i].time = i * 1e-4;
        frames[i].identifier = i;
        frames[i].length = 8;
        frames[i].bytes.fill(static_cast<UINT8>(i));
    }
    return frames;
}
} // namespace

/** A thousand frames of a bus to a reader. */
static void StreamFrames(benchmark::State& state)
{
    const std::vector<KW_Frame> frames = SomeFrames();
    const auto stream = KW_MakeStream(4U << 20U);
    const auto writer = stream->MakeWriter();
    const auto reader = stream->MakeReader();
    const KW_TraceLayout layout{eKW_SAMPLES_FRAMES, kFrames};
    const KW_TraceInfo trace{.format = eKW_SAMPLES_FRAMES, .count = kFrames};
    writer->Configure({&layout, 1}, 10, eKW_STREAM_BYTES);
    for (auto _ : state)
    {
        std::memcpy(writer->Reserve(0).data(), frames.data(), kFrames * sizeof(KW_Frame));
        writer->Advance(0, kFrames);
        writer->Publish({}, {&trace, 1});
        const CKWRecord record = reader->GetNext();
        benchmark::DoNotOptimize(KW_GetFrames(record).data());
    }
}
BENCHMARK(StreamFrames);

/** What it is measured beside: their copy, into as many places in turn. */
static void StreamBaselineFrames(benchmark::State& state)
{
    const std::vector<KW_Frame> frames = SomeFrames();
    std::vector<std::vector<KW_Frame>> places(12, std::vector<KW_Frame>(kFrames));
    std::size_t place = 0;
    for (auto _ : state)
    {
        place = (place + 1) % places.size();
        std::memcpy(places[place].data(), frames.data(), kFrames * sizeof(KW_Frame));
        benchmark::DoNotOptimize(places[place].data());
    }
}
BENCHMARK(StreamBaselineFrames);
