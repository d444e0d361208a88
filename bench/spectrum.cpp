// SPDX-License-Identifier: MIT
#include "IKWFunctionSpectrum.h"
#include "IKWFunctionZEL.h"

#include <benchmark/benchmark.h>

namespace
{
/** One span change with all that follows; arguments: history on, and the two spans in Hz that take
    turns. The third pair turns the down-converter on and off. */
void Spectrum_SpanChange(benchmark::State& state)
{
    const auto root = GetZELRoot();
    const auto spectrum = root->GetPgSpectrum();
    const auto span = spectrum->GetPrHorizontalSpan();
    root->EnableHistory(state.range(0) != 0);
    const double spans[] = {static_cast<double>(state.range(1)),
                            static_cast<double>(state.range(2))};
    std::size_t turn = 0;
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(span->Set(spans[turn]));
        turn = 1 - turn;
    }
}
BENCHMARK(Spectrum_SpanChange)
    ->ArgNames({"history", "from", "to"})
    ->Args({0, 1000000, 2000000})
    ->Args({1, 1000000, 2000000})
    ->Args({1, 5000, 20000000})
    ->Args({1, 1000000, 500000000});
} // namespace
