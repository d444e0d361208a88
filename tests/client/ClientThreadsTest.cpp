// SPDX-License-Identifier: MIT
// User interface, remote control and acquisition at once, each as a thread. The thread sanitizer
// sees races; the assertions see what got lost or torn.

#include "IKWFunctionCANBusFrame.h"
#include "IKWFunctionCANBusResults.h"
#include "IKWFunctionCANBusSettings.h"
#include "IKWFunctionHorizontal.h"
#include "IKWFunctionLabelListSettings.h"
#include "IKWFunctionSerialBus.h"
#include "IKWFunctionSerialBusLabelItem.h"
#include "IKWFunctionSpectrum.h"
#include "IKWFunctionZEL.h"
#include "KWBrackets.h"

#include <atomic>
#include <functional>
#include <gtest/gtest.h>
#include <mutex>
#include <set>
#include <thread>
#include <vector>

namespace
{
constexpr int kRounds = 150;

/** Runs each task some rounds in a thread of its own, all at once. */
void RunTogether(const std::vector<std::function<void(int)>>& tasks)
{
    std::vector<std::thread> threads;
    for (const auto& task : tasks)
    {
        threads.emplace_back(
            [&task]
            {
                for (int round = 0; round < kRounds; ++round)
                {
                    task(round);
                }
            });
    }
    for (std::thread& thread : threads)
    {
        thread.join();
    }
}

std::shared_ptr<IKWMap<IKWFunctionSerialBusLabelItem>>
Labels(const std::shared_ptr<IKWFunctionZEL>& root)
{
    return root->GetPgSerialBus()
        ->GetPgCANBusSettings()
        ->GetPgLabelListSettings()
        ->GetPgSerialBusLabelItem();
}

std::shared_ptr<IKWArray<IKWFunctionCANBusFrame>>
Frames(const std::shared_ptr<IKWFunctionZEL>& root)
{
    return root->GetPgSerialBus()->GetPgCANBusResults()->GetPgCANBusFrame();
}

/** Every number that the acquisition time may show: ten divisions of a scale. */
std::set<double> AcquisitionTimes()
{
    const auto root = GetZELRoot();
    const auto scale = root->GetPgHorizontal()->GetPrScaleGUI();
    std::set<double> times;
    for (INT32 index = 0; index < 36; ++index)
    {
        scale->SetAsInt(index);
        times.insert(root->GetPgHorizontal()->GetPrAcquisitionTime()->Get());
    }
    return times;
}
} // namespace

TEST(ClientThreads, ValueIsTornOrACounterRunsBackwards)
{
    const std::set<double> times = AcquisitionTimes();
    const auto root = GetZELRoot();
    const auto horizontal = root->GetPgHorizontal();
    const auto time = horizontal->GetPrAcquisitionTime();
    const auto position = horizontal->GetPrPosition();
    std::atomic<int> torn{0};
    std::atomic<int> crossed{0};
    const auto write = [&](int round)
    {
        horizontal->GetPrScaleGUI()->SetAsInt(round % 36);
        position->SetUserValue(round % 3 - 1.0);
    };
    const auto read = [&](int)
    {
        for (int i = 0; i < 50; ++i)
        {
            torn += times.count(time->Get()) == 0 ? 1 : 0;
            torn += horizontal->GetPrScaleGUI()->GetAsInt() >= 36 ? 1 : 0;
        }
        const CKWReadBracket together(root);
        crossed += position->Get() < position->GetMin() || position->Get() > position->GetMax();
        crossed += horizontal->GetPrScale()->Get() * 10.0 != time->Get() ? 1 : 0;
    };
    RunTogether(
        {write, read, read, [&](int round) { round % 3 == 0 ? root->Undo() : root->Redo(); }});
    EXPECT_EQ(torn, 0);
    EXPECT_EQ(crossed, 0);
}

TEST(ClientThreads, ContainerLosesAnItemOrItsReadersTheirNode)
{
    const auto root = GetZELRoot();
    const auto labels = Labels(root);
    std::atomic<int> wrong{0};
    const auto rename = [&](int round)
    {
        const QString name = QStringLiteral("a%1").arg(round);
        wrong += labels->Insert(name) != eKW_ACC_OK;
        wrong += labels->Rename(name, name + QLatin1Char('x')) != eKW_ACC_OK;
        wrong += round % 2 == 0 && labels->Remove(name + QLatin1Char('x')) != eKW_ACC_OK;
    };
    const auto grow = [&](int round) { wrong += Frames(root)->Grow(round + 1) != eKW_ACC_OK; };
    const auto read = [&](int)
    {
        for (const QString& name : labels->GetNames())
        {
            // It may be gone by now; while it is held it answers.
            if (const auto item = labels->GetItem(name))
            {
                wrong += item->GetPrIdentifierLength()->Get() < 1;
            }
        }
        const INT32 count = Frames(root)->GetCount();
        wrong += count > 0 && !Frames(root)->GetItem(count - 1);
    };
    RunTogether({rename, grow, read, read});
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(labels->GetCount(), kRounds / 2);
    EXPECT_EQ(Frames(root)->GetCount(), kRounds);
}

TEST(ClientThreads, RootTurnoverLeavesTwoTreesOrAHandleBehind)
{
    // Nobody holds the root all the time: trees come and go under the threads.
    std::atomic<int> wrong{0};
    std::mutex mutex;
    std::shared_ptr<IKWNumericProperty<double>> handedOver;
    const auto use = [&](int round)
    {
        const auto root = GetZELRoot();
        wrong += GetZELRoot() != root;
        wrong += root->GetPgSpectrum()->GetPrHorizontalSpan()->Set(1e6 + round) > 1;
        const auto scale = root->GetPgHorizontal()->GetPrScale();
        const std::lock_guard<std::mutex> lock(mutex);
        handedOver = scale;
    };
    const auto release = [&](int)
    {
        std::shared_ptr<IKWNumericProperty<double>> last;
        {
            const std::lock_guard<std::mutex> lock(mutex);
            last.swap(handedOver);
        }
        if (last)
        {
            const KW_ACCEPTANCE code = last->Set(1e-3);
            wrong += code > 1 && code != eKW_ACC_DETACHED;
            wrong += last->Get() != 1e-3 && last->Get() != 1e-7;
        }
    };
    RunTogether({use, use, release, release});
    handedOver.reset();
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(GetZELRoot()->GetPgHorizontal()->GetPrScale()->Get(), 1e-7) << "a fresh tree";
}

TEST(ClientThreads, TransactionMixesTheWritesOfTwoThreads)
{
    const auto root = GetZELRoot();
    const auto spectrum = root->GetPgSpectrum();
    const auto write = [&](double center)
    {
        CKWTransaction transaction(root, QString::number(center));
        spectrum->GetPrHorizontalCenter()->SetUserValue(center);
        spectrum->GetPrHorizontalSpan()->SetUserValue(center / 10.0);
        transaction.Commit();
    };
    std::atomic<int> mixed{0};
    const auto read = [&](int)
    {
        const CKWReadBracket together(root);
        const double center = spectrum->GetPrHorizontalCenter()->Get();
        const double span = spectrum->GetPrHorizontalSpan()->Get();
        mixed += center != 3.125e8 && span != center / 10.0;
    };
    RunTogether({[&](int) { write(1e8); }, [&](int) { write(2e8); }, read});
    EXPECT_EQ(mixed, 0);
}
