// SPDX-License-Identifier: MIT
// What firmware does with the library: nothing but the shared library and its exported headers.

#include "IKWFunctionCANBusSettings.h"
#include "IKWFunctionChannel.h"
#include "IKWFunctionFFT.h"
#include "IKWFunctionHorizontal.h"
#include "IKWFunctionLabelListSettings.h"
#include "IKWFunctionSerialBus.h"
#include "IKWFunctionSerialBusLabelItem.h"
#include "IKWFunctionSpectrum.h"
#include "IKWFunctionVertical.h"
#include "IKWFunctionZEL.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperCommon.h"
#include "KWBrackets.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

TEST(Client, TypedAndGenericHandlesMeanDifferentNodes)
{
    const auto root = GetZELRoot();
    const auto horizontal = root->GetPgHorizontal();
    const auto scale = std::dynamic_pointer_cast<IDbProperty>(
        root->GetDbObject()->Find(QStringLiteral("Horizontal/Scale")));
    ASSERT_TRUE(scale);
    EXPECT_EQ(scale->GetHandle(), horizontal->GetPrScale());
    ASSERT_EQ(scale->SetText(QStringLiteral("0.002")), eKW_ACC_OK);
    EXPECT_EQ(horizontal->GetPrScale()->Get(), 2e-3);
    EXPECT_EQ(horizontal->GetPrAcquisitionTime()->Get(), 2e-2);
    EXPECT_EQ(scale->GetUnitCode(), horizontal->GetPrScale()->GetUnit());
    EXPECT_EQ(root->GetPgVertical()->GetPgChannel()->GetCount(), 4);
    EXPECT_FALSE(root->GetPgVertical()->GetPgChannel()->GetItem(4));
}

TEST(Client, RefusalMovesSomethingOrHidesItsReason)
{
    const auto root = GetZELRoot();
    const auto horizontal = root->GetPgHorizontal();
    long long counter = 0;
    root->HasChanged(counter);
    EXPECT_EQ(horizontal->GetPrScale()->Set(3e-3), eKW_ACC_NOT_IN_VALUE_LIST);
    EXPECT_EQ(horizontal->GetPrPosition()->Set(1e9), eKW_ACC_ABOVE_MAXIMUM);
    EXPECT_EQ(horizontal->GetPrZELMode()->SetAsInt(3), eKW_ACC_UNKNOWN_VALUE);
    EXPECT_EQ(root->GetPgFFT()->GetPrFFTSize()->Set(1024), eKW_ACC_READ_ONLY);
    EXPECT_FALSE(root->HasChanged(counter));
    EXPECT_FALSE(root->CanUndo());
    EXPECT_EQ(KW_GetAcceptanceText(eKW_ACC_ABOVE_MAXIMUM), QStringLiteral("above the maximum"));
}

TEST(Client, PollMissesAChangeOrInventsOne)
{
    const auto root = GetZELRoot();
    long long all = 0;
    long long spectrum = 0;
    long long labels = 0;
    const auto list = root->GetPgSerialBus()->GetPgCANBusSettings()->GetPgLabelListSettings();
    root->HasChanged(all);
    root->GetPgSpectrum()->HasChanged(spectrum);
    list->HasChanged(labels);
    ASSERT_EQ(list->GetPgSerialBusLabelItem()->Insert(QStringLiteral("Engine")), eKW_ACC_OK);
    EXPECT_TRUE(list->HasChanged(labels));
    EXPECT_TRUE(root->HasChanged(all));
    EXPECT_FALSE(root->GetPgSpectrum()->HasChanged(spectrum));
    EXPECT_FALSE(root->HasChanged(all)) << "asked twice";
}

TEST(Client, TransactionIsSeveralSteps)
{
    const auto root = GetZELRoot();
    const auto span = root->GetPgSpectrum()->GetPrHorizontalSpan();
    const double before = span->Get();
    {
        CKWTransaction transaction(root, QStringLiteral("Look at the carrier"));
        ASSERT_LE(root->GetPgSpectrum()->GetPrHorizontalCenter()->Set(1e8), 1U);
        ASSERT_LE(span->Set(1e6), 1U);
        ASSERT_EQ(transaction.Commit(), eKW_ACC_OK);
    }
    EXPECT_EQ(root->GetUndoText(), QStringLiteral("Look at the carrier"));
    ASSERT_EQ(root->Undo(), eKW_ACC_OK);
    EXPECT_EQ(span->Get(), before);
    EXPECT_FALSE(root->CanUndo());
    ASSERT_EQ(root->Redo(), eKW_ACC_OK);
    EXPECT_EQ(span->Get(), 1e6);
}

TEST(Client, SavedStateComesBackInPart)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("state.xml"));
    auto root = GetZELRoot();
    ASSERT_EQ(root->GetPgHorizontal()->GetPrScale()->Set(5e-3), eKW_ACC_OK);
    const auto labels = root->GetPgSerialBus()
                            ->GetPgCANBusSettings()
                            ->GetPgLabelListSettings()
                            ->GetPgSerialBusLabelItem();
    ASSERT_EQ(labels->Insert(QStringLiteral("Engine")), eKW_ACC_OK);
    ASSERT_EQ(labels->GetItem(QStringLiteral("Engine"))->GetPrIdentifier()->Set(0x123), eKW_ACC_OK);
    ASSERT_EQ(root->Save(file), eKW_ACC_OK);
    const auto held = root->GetPgHorizontal()->GetPrScale();
    root.reset();

    root = GetZELRoot();
    EXPECT_EQ(root->GetPgHorizontal()->GetPrScale()->Get(), 1e-7) << "a fresh tree";
    EXPECT_EQ(held->Set(1e-3), eKW_ACC_DETACHED) << "a handle of the tree that is gone";
    ASSERT_EQ(root->Recall(file), eKW_ACC_OK);
    EXPECT_EQ(root->GetPgHorizontal()->GetPrScale()->Get(), 5e-3);
    const auto engine = root->GetPgSerialBus()
                            ->GetPgCANBusSettings()
                            ->GetPgLabelListSettings()
                            ->GetPgSerialBusLabelItem()
                            ->GetItem(QStringLiteral("Engine"));
    ASSERT_TRUE(engine);
    EXPECT_EQ(engine->GetPrIdentifier()->Get(), 0x123U);
}

TEST(Client, HelperForLimitsNeedsMoreThanIsExported)
{
    struct t_Limits
    {
        double GetMin() const { return 1.0; }
        KW_ACCEPTANCE SetMin(double) { return eKW_ACC_OK; }
        KW_ACCEPTANCE SetMax(double) { return eKW_ACC_LIMITS_CROSSED; }
    } limits;
    EXPECT_EQ(CZELDatabaseHelperCommon::SetMinMax(&limits, 5.0, 6.0), eKW_ACC_LIMITS_CROSSED);
}
