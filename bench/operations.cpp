// SPDX-License-Identifier: MIT
// The rows of the budgets, each beside its baseline of the same run: what do a read, a poll, a
// write and what follows from it cost, what the whole tree to find, to build, to save and recall,
// to keep?

#include "Operations.h"

#include <benchmark/benchmark.h>

namespace
{
template <class TMake>
void Measure(benchmark::State& state, TMake make)
{
    auto operation = make();
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(operation());
    }
}

[[maybe_unused]] const bool g_registered = []
{
    KW_VisitOperations(
        [](const char* name, int /*runs*/, auto make) {
            benchmark::RegisterBenchmark(name,
                                         [make](benchmark::State& state) { Measure(state, make); });
        });
    return true;
}();

/** The arguments are the two spans in Hz; the second pair turns the down-converter on and off. */
void OtherSpanChange(benchmark::State& state)
{
    Measure(state,
            [&]
            {
                return COpSpanChange(true, static_cast<double>(state.range(0)),
                                     static_cast<double>(state.range(1)));
            });
}
BENCHMARK(OtherSpanChange)
    ->ArgNames({"from", "to"})
    ->Args({5000, 20000000})
    ->Args({1000000, 500000000});

void TreeHeapPerProperty(benchmark::State& state)
{
    t_HeapOfTree heap{0, 1};
    for (auto _ : state)
    {
        heap = KW_MeasureHeapOfTree();
    }
    state.counters["properties"] = heap.properties;
    state.counters["bytes_per_property"] = static_cast<double>(heap.bytes) / heap.properties;
}
BENCHMARK(TreeHeapPerProperty)->Iterations(1);
} // namespace
