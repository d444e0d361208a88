// SPDX-License-Identifier: MIT
#include "IKWFunctionHorizontal.h"
#include "IKWFunctionSpectrum.h"
#include "IKWFunctionZEL.h"
#include "faults/Allocations.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace
{
QByteArray Saved(IKWFunctionZEL& root)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("a.xml")));
    EXPECT_EQ(root.Save(file.fileName()), eKW_ACC_OK);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
}

/** How far it is to the next allocation to fail: the first ones all, of the thousands behind them
    some; all where KWI_EVERY_FAULT is set. */
std::uint64_t Stride(std::uint64_t number, std::uint64_t dense, std::uint64_t stride)
{
    static const bool s_every = qEnvironmentVariableIsSet("KWI_EVERY_FAULT");
    return s_every || number < dense ? 1 : stride;
}
} // namespace

TEST(RootAllocationFaults, HalfATreeIsLeftOrNoneCanBeMade)
{
    const QByteArray whole = Saved(*GetZELRoot());
    bool struck = true;
    for (std::uint64_t number = 1; struck; number += Stride(number, 300, 97))
    {
        SCOPED_TRACE(number);
        std::shared_ptr<IKWFunctionZEL> root;
        KW_TryWithoutMemory([&root] { root = GetZELRoot(); }, number, struck);
        ASSERT_TRUE(root || struck);
        root.reset();
        if (number % 40 != 0 && struck)
        {
            continue;
        }
        const auto again = GetZELRoot();
        ASSERT_EQ(Saved(*again), whole);
        ASSERT_EQ(again->RunPresetSequence(true), eKW_ACC_OK);
    }
}

TEST(RootAllocationFaults, RecallIsAppliedInPart)
{
    const QTemporaryDir folder;
    const QString fileName = folder.filePath(QStringLiteral("a.csv"));
    const auto root = GetZELRoot();
    root->GetPgHorizontal()->GetPrScaleGUI()->SetAsInt(20);
    root->GetPgSpectrum()->GetPrHorizontalSpan()->Set(1e6);
    ASSERT_EQ(root->Save(fileName), eKW_ACC_OK);
    const QByteArray saved = Saved(*root);
    root->RunPresetSequence(false);
    const QByteArray before = Saved(*root);
    ASSERT_NE(before, saved);

    bool struck = true;
    const auto fail = [&](std::uint64_t number)
    {
        SCOPED_TRACE(number);
        KW_ACCEPTANCE code = eKW_ACC_INTERNAL;
        const bool passed =
            KW_TryWithoutMemory([&] { code = root->Recall(fileName); }, number, struck);
        const bool taken = passed && code <= eKW_ACC_WARNING;
        ASSERT_EQ(Saved(*root), taken ? saved : before);
        ASSERT_TRUE(!taken || root->Undo() == eKW_ACC_OK);
    };
    for (std::uint64_t number = 1; struck && !HasFatalFailure(); number += Stride(number, 100, 331))
    {
        fail(number);
    }
    // What is done behind the file belongs to the same step.
    const std::uint64_t last = KW_CountAllocations([&] { root->Recall(fileName); });
    ASSERT_EQ(root->Undo(), eKW_ACC_OK);
    for (std::uint64_t number = last - 20; number <= last && !HasFatalFailure(); ++number)
    {
        fail(number);
    }
    ASSERT_EQ(root->Recall(fileName), eKW_ACC_OK);
    EXPECT_EQ(Saved(*root), saved);
}
