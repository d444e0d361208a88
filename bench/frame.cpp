// SPDX-License-Identifier: MIT
// The frame's rows of the budgets: what does a read, a poll for changes and a client's write cost,
// beside an atomic load, a virtual call and a recursive mutex of the same run?

#include "CommonDatabase/DbPgRoot.h"
#include "CommonDatabase/DbPropNum.h"
#include "IKWFunctionChannel.h"
#include "IKWFunctionHorizontal.h"
#include "IKWFunctionVertical.h"
#include "IKWFunctionZEL.h"

#include <array>
#include <atomic>
#include <benchmark/benchmark.h>
#include <mutex>
#include <thread>

namespace
{
struct t_Virtual
{
    virtual ~t_Virtual() = default;
    virtual double Get() const { return m_value; }
    double m_value = 1.0;
};

/** The same again, so that the compiler can not know which of the two is called. */
struct t_OtherVirtual final : t_Virtual
{
    double Get() const override { return -m_value; }
};

/** A source and the eight that follow it, each one written by the rule. */
class CPgEight final : public CZELPropertyGroup
{
public:
    CPgEight()
    {
        AddPropertyToList(m_source = Number(), QStringLiteral("Source"));
        for (std::size_t i = 0; i < m_followers.size(); ++i)
        {
            AddPropertyToList(m_followers[i] = Number(), QStringLiteral("Follower%1").arg(i));
        }
    }

    KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override
    {
        double value = m_source->Get();
        for (CDbPropNumDouble* const follower : m_followers)
        {
            follower->DbSet(value += 1.0);
        }
        return CZELPropertyGroup::OnPropertySet(property);
    }

    CDbPropNumDouble* m_source;

private:
    static CDbPropNumDouble* Number()
    {
        auto* const number = new CDbPropNumDouble;
        number->DeclareMinAndMax(-1e6, 1e6);
        return number;
    }

    std::array<CDbPropNumDouble*, 8> m_followers{};
};
} // namespace

static void BaselineAtomicLoad(benchmark::State& state)
{
    std::atomic<double> value{1.0};
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(value.load(std::memory_order_acquire));
    }
}
BENCHMARK(BaselineAtomicLoad);

static void BaselineVirtualCall(benchmark::State& state)
{
    const std::array<std::unique_ptr<t_Virtual>, 2> objects = {std::make_unique<t_Virtual>(),
                                                               std::make_unique<t_OtherVirtual>()};
    const t_Virtual* pointer = objects[state.max_iterations % 2].get();
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(pointer);
        benchmark::DoNotOptimize(pointer->Get());
    }
}
BENCHMARK(BaselineVirtualCall);

static void BaselineRecursiveMutex(benchmark::State& state)
{
    std::recursive_mutex mutex;
    for (auto _ : state)
    {
        const std::lock_guard<std::recursive_mutex> lock(mutex);
    }
}
BENCHMARK(BaselineRecursiveMutex);

static void FrameGetNumber(benchmark::State& state)
{
    const auto root = GetZELRoot();
    const auto position = root->GetPgHorizontal()->GetPrPosition();
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(position->Get());
    }
}
BENCHMARK(FrameGetNumber);

static void FrameGetEnumeration(benchmark::State& state)
{
    const auto root = GetZELRoot();
    const auto mode = root->GetPgHorizontal()->GetPrZELMode();
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(mode->Get());
    }
}
BENCHMARK(FrameGetEnumeration);

static void FrameHasChangedUnchangedSubtree(benchmark::State& state)
{
    const auto root = GetZELRoot();
    const auto group = root->GetPgHorizontal();
    long long counter = 0;
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(group->HasChanged(counter));
    }
}
BENCHMARK(FrameHasChangedUnchangedSubtree);

/** A number with limits, four levels deep, on which nothing depends. */
static void FrameClientSet(benchmark::State& state)
{
    const auto root = GetZELRoot();
    root->EnableHistory(state.range(0) != 0);
    const auto property = std::dynamic_pointer_cast<IDbProperty>(root->GetDbObject()->Find(
        QStringLiteral("Setup/HwConfig/BatteryAndPower/AutoPowerOffTime")));
    const auto number =
        std::dynamic_pointer_cast<IKWNumericProperty<double>>(property->GetHandle());
    double value = 0.0;
    for (auto _ : state)
    {
        value = value == 60.0 ? 120.0 : 60.0;
        benchmark::DoNotOptimize(number->Set(value));
    }
}
BENCHMARK(FrameClientSet)->ArgName("history")->Arg(0)->Arg(1);

/** A rule that writes eight others, each with limits, in the same write. */
static void FrameClientSetWithEightDependants(benchmark::State& state)
{
    CDbPgRoot root;
    auto* const group = new CPgEight;
    root.AddPropGroupToList(group, QStringLiteral("Eight"));
    if (state.range(0) != 0)
    {
        root.EnableHistoryObjects();
    }
    double value = 0.0;
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(group->m_source->Set(value = 1.0 - value));
    }
}
BENCHMARK(FrameClientSetWithEightDependants)->ArgName("history")->Arg(0)->Arg(1);

/** Reads while another thread writes without a pause: the figure must stay that of a read. */
static void FrameGetWhileAnotherThreadWrites(benchmark::State& state)
{
    const auto root = GetZELRoot();
    const auto scale = root->GetPgHorizontal()->GetPrScaleGUI();
    const auto time = root->GetPgHorizontal()->GetPrAcquisitionTime();
    std::atomic<bool> done{false};
    std::thread writer(
        [&]
        {
            for (INT32 index = 0; !done; index = (index + 1) % 36)
            {
                scale->SetAsInt(index);
            }
        });
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(time->Get());
    }
    done = true;
    writer.join();
}
BENCHMARK(FrameGetWhileAnotherThreadWrites);
