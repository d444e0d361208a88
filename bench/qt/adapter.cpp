// SPDX-License-Identifier: MIT
// What a display's tick costs, beside what it is made of.

#include "IKWFunctionZEL.h"
#include "KWQtTree.h"

#include <benchmark/benchmark.h>
#include <memory>
#include <vector>

namespace
{
using t_Property = std::shared_ptr<IDbProperty>;

/** The first `count` properties of the tree, in its order. */
void Gather(IDbGroup& group, std::size_t count, std::vector<t_Property>& found)
{
    for (INT32 i = 0; i < group.GetPropertyCount() && found.size() < count; ++i)
    {
        found.push_back(group.GetProperty(i));
    }
    for (INT32 i = 0; i < group.GetGroupCount(); ++i)
    {
        Gather(*group.GetGroup(i), count, found);
    }
    const IDbContainer* const container = group.AsContainer();
    for (INT32 i = 0; container != nullptr && i < container->GetCount(); ++i)
    {
        Gather(*container->GetItemByPosition(i), count, found);
    }
}

/** In seven groups all over the tree; what their rules move is told of, too. */
const char* const kWritten[] = {
    "Setup/Display/GridIntensity",   "Setup/Display/TraceIntensity", "Vertical/Channel[0]/Deskew",
    "Vertical/Channel[1]/Deskew",    "Vertical/Channel[2]/Deskew",   "Vertical/Channel[3]/Deskew",
    "Trigger/TriggerHoldOff/Events", "Trigger/NumberOfAcquisitions", "Counter/GateTime",
    "Measurements/GateStart"};

std::vector<t_Property> FindWritten(IKWFunctionZEL& root)
{
    std::vector<t_Property> found;
    for (const char* const path : kWritten)
    {
        const auto node = root.GetDbObject()->Find(QString::fromLatin1(path));
        if (auto property = std::dynamic_pointer_cast<IDbProperty>(node))
        {
            found.push_back(std::move(property));
        }
    }
    return found;
}

/** A page that shows a thousand properties. */
class CPage
{
public:
    CPage()
    {
        m_tree.SetInterval(0);
        std::vector<t_Property> nodes = FindWritten(*m_root);
        Gather(*m_root->GetDbObject(), 1000, nodes);
        for (const t_Property& node : nodes)
        {
            CKWQtProperty* const property = m_tree.property(node->GetPath());
            QObject::connect(property, &CKWQtProperty::valueChanged, [this] { ++m_told; });
        }
    }

    CKWQtTree& Tree() { return m_tree; }
    IKWFunctionZEL& Root() { return *m_root; }
    long long Told() const { return m_told; }

private:
    std::shared_ptr<IKWFunctionZEL> m_root = GetZELRoot();
    CKWQtTree m_tree{m_root};
    long long m_told = 0;
};

void QtBaselineHasChanged(benchmark::State& state)
{
    const auto root = GetZELRoot();
    long long counter = 0;
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(root->HasChanged(counter));
    }
}

void QtIdlePoll(benchmark::State& state)
{
    CPage page;
    for (auto _ : state)
    {
        page.Tree().poll();
    }
}

void QtPollTenOfAThousandChanged(benchmark::State& state)
{
    CPage page;
    const auto written = FindWritten(page.Root());
    if (written.size() != std::size(kWritten))
    {
        state.SkipWithError("a path leads nowhere");
    }
    const long long before = page.Told();
    int up = 1;
    for (auto _ : state)
    {
        state.PauseTiming();
        for (const auto& property : written)
        {
            property->IncDec(up);
        }
        up = -up;
        state.ResumeTiming();
        page.Tree().poll();
    }
    state.counters["told"] = benchmark::Counter(static_cast<double>(page.Told() - before),
                                                benchmark::Counter::kAvgIterations);
}

BENCHMARK(QtBaselineHasChanged);
BENCHMARK(QtIdlePoll);
BENCHMARK(QtPollTenOfAThousandChanged);
} // namespace

BENCHMARK_MAIN();
