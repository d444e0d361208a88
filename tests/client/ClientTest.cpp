// SPDX-License-Identifier: MIT
// What firmware does with the library: nothing but the shared library and its exported headers.

#include "IKWFunctionSpectrum.h"
#include "IKWFunctionZEL.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperCommon.h"
#include "KWBrackets.h"

#include <gtest/gtest.h>

TEST(Client, TransactionIsSeveralStepsOrIsKeptWithoutItsCommit)
{
    const auto root = GetZELRoot();
    const auto span = root->GetPgSpectrum()->GetPrHorizontalSpan();
    const double before = span->Get();
    for (const bool commits : {false, true})
    {
        {
            CKWTransaction transaction(root, QStringLiteral("Look at the carrier"));
            ASSERT_LE(root->GetPgSpectrum()->GetPrHorizontalCenter()->Set(1e8), 1U);
            ASSERT_LE(span->Set(1e6), 1U);
            ASSERT_TRUE(!commits || transaction.Commit() == eKW_ACC_OK);
        }
        EXPECT_EQ(root->CanUndo(), commits);
        EXPECT_EQ(span->Get(), commits ? 1e6 : before);
    }
    EXPECT_EQ(root->GetUndoText(), QStringLiteral("Look at the carrier"));
    ASSERT_EQ(root->Undo(), eKW_ACC_OK);
    EXPECT_EQ(span->Get(), before);
    EXPECT_FALSE(root->CanUndo());
    ASSERT_EQ(root->Redo(), eKW_ACC_OK);
    EXPECT_EQ(span->Get(), 1e6);
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
