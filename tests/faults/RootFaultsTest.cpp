// SPDX-License-Identifier: MIT
#include "IKWFunctionHorizontal.h"
#include "IKWFunctionSpectrum.h"
#include "IKWFunctionZEL.h"
#include "faults/Allocations.h"
#include "zel/ZelTree.h"

#include <QTemporaryDir>
#include <cstdio>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{
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
    const QByteArray whole = Saved(GetZELRoot());
    bool struck = true;
    int failed = 0;
    for (std::uint64_t number = 1; struck; number += Stride(number, 300, 97))
    {
        SCOPED_TRACE(number);
        std::shared_ptr<IKWFunctionZEL> root;
        KW_TryWithoutMemory([&root] { root = GetZELRoot(); }, number, struck);
        ASSERT_TRUE(root || struck);
        failed += root ? 0 : 1;
        root.reset();
        if (number % 40 != 0 && struck)
        {
            continue;
        }
        const auto again = GetZELRoot();
        ASSERT_EQ(Saved(again), whole);
        ASSERT_EQ(again->RunPresetSequence(true), eKW_ACC_OK);
    }
    EXPECT_GT(failed, 100) << "faults do not strike";
}

TEST(RootAllocationFaults, RecallIsAppliedInPart)
{
    const QTemporaryDir folder;
    const QString fileName = folder.filePath(QStringLiteral("a.csv"));
    const auto root = GetZELRoot();
    root->GetPgHorizontal()->GetPrScaleGUI()->SetAsInt(20);
    root->GetPgSpectrum()->GetPrHorizontalSpan()->Set(1e6);
    ASSERT_EQ(root->Save(fileName), eKW_ACC_OK);
    const QByteArray saved = Saved(root);
    root->RunPresetSequence(false);
    const QByteArray before = Saved(root);
    ASSERT_NE(before, saved);

    bool struck = true;
    const auto fail = [&](std::uint64_t number)
    {
        SCOPED_TRACE(number);
        KW_ACCEPTANCE code = eKW_ACC_INTERNAL;
        const bool passed =
            KW_TryWithoutMemory([&] { code = root->Recall(fileName); }, number, struck);
        const bool taken = passed && code <= eKW_ACC_WARNING;
        ASSERT_EQ(Saved(root), taken ? saved : before);
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
    EXPECT_EQ(Saved(root), saved);
}

namespace
{
/** A write whose rules work in several groups, read texts or make lists. */
struct t_Write
{
    const char* path;
    const char* text;
};

void PrintTo(const t_Write& write, std::ostream* stream)
{
    *stream << write.path;
}

constexpr t_Write kWrites[] = {
    {"Mathematics/Expression", "2.5e-3V*sqr(C1)"},
    {"Harmonic/HarmonicStandard/HarmonicLimitUser/OrderLimits", "3=5;5=4.5;7=1e-1"},
    {"Vertical/Channel[0]/Enabled", "OFF"},
    {"Horizontal/Scale", "0.5"},
    {"Control/SMMode/OperationMode", "SPECTRUM"},
    {"Spectrum/HorizontalSpan", "1e6"},
    {"Meter/MeterType", "TEMP"},
    {"SerialBus/Protocol", "UART"},
    {"SerialBus/UARTBusSettings/BitRate", "57600"},
};

enum eOUTCOME
{
    eOUTCOME_NOT_STRUCK,
    eOUTCOME_WHOLE_OR_NOTHING,
    eOUTCOME_IN_PART
};

/** A write to which the allocation of this number fails. */
eOUTCOME OutcomeOf(IKWFunctionZEL& root, const t_Write& write, std::uint64_t number,
                   const std::shared_ptr<IDbProperty>& property)
{
    const QString text = QString::fromLatin1(write.text);
    const auto before = Snapshot(root.GetDbObject());
    KW_ACCEPTANCE code = eKW_ACC_INTERNAL;
    bool struck = false;
    const bool passed =
        KW_TryWithoutMemory([&] { code = property->SetText(text); }, number, struck);
    const auto found = Snapshot(root.GetDbObject());
    QString wrong = FirstDifference(before, found);
    if (passed)
    {
        root.Undo();
        const KW_ACCEPTANCE expected = property->SetText(text);
        wrong = code == expected ? FirstDifference(found, Snapshot(root.GetDbObject()))
                                 : KW_GetAcceptanceText(code);
    }
    if (!wrong.isEmpty())
    {
        std::fprintf(stderr, "%s\n", qPrintable(wrong));
        return eOUTCOME_IN_PART;
    }
    return struck ? eOUTCOME_WHOLE_OR_NOTHING : eOUTCOME_NOT_STRUCK;
}
} // namespace

class RootWriteFaults : public testing::TestWithParam<t_Write>
{
};

// Each in a process of its own: what a rule makes at its first run, as constants and tables, must
// not have been made before.
TEST_P(RootWriteFaults, WriteIsDoneInPartOrAFaultIsTakenForAnAnswer)
{
    const auto root = GetZELRoot();
    const auto property = Property(root, GetParam().path);
    ASSERT_NE(property, nullptr);
    int outcome = eOUTCOME_WHOLE_OR_NOTHING;
    for (std::uint64_t number = 1; outcome != eOUTCOME_NOT_STRUCK;
         number += Stride(number, 120, 29))
    {
        const pid_t child = fork();
        if (child == 0)
        {
            _exit(OutcomeOf(*root, GetParam(), number, property));
        }
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        ASSERT_TRUE(WIFEXITED(status)) << "allocation " << number;
        outcome = WEXITSTATUS(status);
        ASSERT_LT(outcome, eOUTCOME_IN_PART) << "allocation " << number;
    }
}

INSTANTIATE_TEST_SUITE_P(Writes, RootWriteFaults, testing::ValuesIn(kWrites));
