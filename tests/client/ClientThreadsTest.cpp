// SPDX-License-Identifier: MIT
// User interface, remote control and acquisition at once, each as a thread. The thread sanitizer
// sees races; the assertions see what got lost or torn.

#include "IKWFunctionControl.h"
#include "IKWFunctionHorizontal.h"
#include "IKWFunctionSMMode.h"
#include "IKWFunctionSpectrum.h"
#include "IKWFunctionZEL.h"
#include "KWBrackets.h"
#include "Together.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <mutex>

namespace
{
constexpr int kRounds = 150;
} // namespace

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
    RunTogether({use, use, release, release}, kRounds);
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
    RunTogether({[&](int) { write(1e8); }, [&](int) { write(2e8); }, read}, kRounds);
    EXPECT_EQ(mixed, 0);
}

TEST(ClientThreads, RecallOrPresetGoesOnWhileTheAcquisitionStillRuns)
{
    const QTemporaryDir folder;
    const auto root = GetZELRoot();
    const auto stop = root->GetPgControl()->GetPgSMMode()->GetPrStop();
    const QString file = folder.filePath(QStringLiteral("a.xml"));
    ASSERT_EQ(root->Save(file), eKW_ACC_OK);
    stop->AttachExecutor(true);
    std::atomic<int> stopped{0};
    std::atomic<bool> done{false};
    std::thread acquisition(
        [&]
        {
            while (!done)
            {
                if (stop->TakeEvent() == eKW_OP_EVENT_START)
                {
                    ++stopped;
                    stop->Complete(eKW_OP_RESULT_SUCCESS);
                }
                std::this_thread::yield();
            }
        });
    EXPECT_EQ(root->Recall(file), eKW_ACC_OK);
    EXPECT_EQ(root->RunPresetSequence(false), eKW_ACC_OK);
    done = true;
    acquisition.join();
    EXPECT_EQ(stopped, 2);
}
