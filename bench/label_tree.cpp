// SPDX-License-Identifier: MIT
// What does it cost to load a label list into the tree, beside its nodes alone?

#include "Buses/PgSerialBusLabelItem.h"
#include "Buses/PgmSignalTranslation.h"
#include "IKWFunctionCANBusSettings.h"
#include "IKWFunctionLabelListSettings.h"
#include "IKWFunctionSerialBus.h"
#include "IKWFunctionZEL.h"
#include "LabelList/LabelListTree.h"

#include <benchmark/benchmark.h>

namespace
{
KW_LabelList ListOf(int messages, int signalsPerMessage)
{
    KW_LabelList list;
    list.name = "bench";
    for (int i = 0; i < messages; ++i)
    {
        KW_LabelEntry entry;
        entry.message.setParameters("Message" + std::to_string(i), "29", static_cast<UINT32>(i), 8);
        for (int k = 0; k < signalsPerMessage; ++k)
        {
            const auto bit = static_cast<UINT32>(6 * k);
            KW_AddSignal(entry, {"Signal" + std::to_string(k), bit, 6, eKW_ENDIANNESS_LITTLE_ENDIAN,
                                 eKW_SIGNAL_TRANSLATION_VALUE_TYPE_UNSIGNED_INT, 0.25, -40.0, -40.0,
                                 210.0, "degC"});
        }
        list.messages.push_back(std::move(entry));
    }
    return list;
}
} // namespace

/** Arguments: messages, signals of each, history. The last of a list is always replaced. */
static void LabelsLoadIntoTree(benchmark::State& state)
{
    const auto root = GetZELRoot();
    root->EnableHistory(state.range(2) != 0);
    const auto settings = root->GetPgSerialBus()->GetPgCANBusSettings()->GetPgLabelListSettings();
    const KW_LabelList list =
        ListOf(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
    for (auto _ : state)
    {
        std::vector<KW_LabelReport> reports;
        benchmark::DoNotOptimize(KW_PutLabels(*settings, list, reports));
        state.PauseTiming();
        settings->GetPrClear()->Set();
        state.ResumeTiming();
    }
}
BENCHMARK(LabelsLoadIntoTree)
    ->ArgNames({"messages", "signals", "history"})
    ->Args({500, 10, 0})
    ->Args({500, 10, 1})
    ->Args({4096, 8, 1})
    ->Unit(benchmark::kMillisecond);

/** The nodes of 500 labels and 5,000 signals, without a tree. */
static void BaselineLabelNodes(benchmark::State& state)
{
    for (auto _ : state)
    {
        std::vector<std::unique_ptr<CDbPropertyGroup>> nodes;
        for (int i = 0; i < 500; ++i)
        {
            nodes.push_back(std::make_unique<CPgSerialBusLabelItem>());
        }
        for (int i = 0; i < 5000; ++i)
        {
            nodes.push_back(std::make_unique<CPgSignalTranslation>());
        }
        benchmark::DoNotOptimize(nodes);
    }
}
BENCHMARK(BaselineLabelNodes)->Unit(benchmark::kMillisecond);
