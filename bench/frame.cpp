// SPDX-License-Identifier: MIT
// The frame's rows of the budgets: what does a read, a poll for changes and a client's write cost,
// beside an atomic load, a virtual call and a recursive mutex of the same run?

#include "CommonDatabase/Nodes/DbPgRoot.h"
#include "CommonDatabase/Properties/DbPropNum.h"
#include "IKWFunctionChannel.h"
#include "IKWFunctionHorizontal.h"
#include "IKWFunctionVertical.h"
#include "IKWFunctionZEL.h"

#include <array>
#include <atomic>
#include <benchmark/benchmark.h>
#include <future>
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

namespace
{
/** A thread that writes without a pause, with all that follows from the time scale. */
class CWriter
{
public:
    ~CWriter()
    {
        m_done = true;
        m_thread.join();
    }

private:
    std::shared_ptr<IKWFunctionZEL> m_root = GetZELRoot();
    std::atomic<bool> m_done{false};
    std::thread m_thread{[this]
                         {
                             const auto scale = m_root->GetPgHorizontal()->GetPrScaleGUI();
                             for (INT32 index = 0; !m_done; index = (index + 1) % 36)
                             {
                                 scale->SetAsInt(index);
                             }
                         }};
};

void ReadAcquisitionTime(benchmark::State& state)
{
    const auto time = GetZELRoot()->GetPgHorizontal()->GetPrAcquisitionTime();
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(time->Get());
    }
}
} // namespace

/** The figure must stay that of a read, for one reader and for two. */
static void FrameGetWhileAnotherThreadWrites(benchmark::State& state)
{
    const auto root = GetZELRoot();
    const auto writer = state.thread_index() == 0 ? std::make_unique<CWriter>() : nullptr;
    ReadAcquisitionTime(state);
}
BENCHMARK(FrameGetWhileAnotherThreadWrites)->Threads(1)->Threads(2);

/** A writer that never lets go of the lock: whoever needs it would wait for ever. */
static void FrameGetWhileAnotherThreadHoldsTheLock(benchmark::State& state)
{
    const auto root = GetZELRoot();
    std::promise<void> held;
    std::promise<void> done;
    std::thread writer(
        [&]
        {
            root->StartWriteAccess(eCLIENT_LOCAL);
            held.set_value();
            done.get_future().wait();
            root->EndWriteAccess();
        });
    const auto time = root->GetPgHorizontal()->GetPrAcquisitionTime();
    held.get_future().wait();
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(time->Get());
    }
    done.set_value();
    writer.join();
}
BENCHMARK(FrameGetWhileAnotherThreadHoldsTheLock);
