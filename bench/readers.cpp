// SPDX-License-Identifier: MIT
// A reader waits for nobody: what does a read cost while others write, or hold the lock?

#include "IKWFunctionHorizontal.h"
#include "IKWFunctionZEL.h"

#include <atomic>
#include <benchmark/benchmark.h>
#include <future>
#include <thread>

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
