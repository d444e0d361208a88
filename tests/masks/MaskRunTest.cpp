// SPDX-License-Identifier: MIT
#include "IKWFunctionControl.h"
#include "IKWFunctionMask.h"
#include "IKWFunctionMaskChannelSetup.h"
#include "IKWFunctionMaskSettings.h"
#include "IKWFunctionSMScope.h"
#include "IKWFunctionZEL.h"
#include "Masks/MaskTree.h"
#include "faults/Allocations.h"
#include "masks/MaskRecords.h"

TEST(MaskRun, TestOfARecordTakesMemory)
{
    const std::shared_ptr<IKWFunctionZEL> root = GetZELRoot();
    root->RunPresetSequence(true);
    root->GetPgControl()->GetPgSMScope()->GetPrRunStop()->Set(eKW_ZEL_RUNSTOP_STATE_RUN);
    const auto mask = root->GetPgMask();
    const std::shared_ptr<IKWMaskRun> run = KW_MakeMaskRun(root);
    const KW_Mask line{{eKW_UNIT_LEVEL_V, 0, 1, 0, 1}, {{0, 1}, {5, 1}, {10, 1}}, {}};
    ASSERT_EQ(KW_PutMask(*mask->GetPgMaskChannelSetup()->GetItem(0), line), eKW_ACC_OK);
    mask->GetPgMaskSettings()->GetPrLockToScreen()->Set(eKW_ONOFF_OFF);
    ASSERT_EQ(KW_PutMask(*mask->GetPgMaskChannelSetup()->GetItem(0), line), eKW_ACC_OK);
    mask->GetPrStart()->Set();
    std::vector<INT16> points(5000, 0);
    const CKWRecord good = ShownRecord(points);
    points[2500] = 101;
    const CKWRecord bad = ShownRecord(points);
    run->Test(good); // of settings that stand from here on
    KW_MASK_RESULT first = eKW_MASK_NOT_TESTED;
    KW_MASK_RESULT second = eKW_MASK_NOT_TESTED;
    const auto act = [&]
    {
        first = run->Test(good);
        second = run->Test(bad);
    };
    EXPECT_EQ(KW_CountAllocations(act), 0U);
    EXPECT_EQ(first, eKW_MASK_PASSED);
    EXPECT_EQ(second, eKW_MASK_FAILED);
    // A delivery moves the tree's counter, and no setting.
    run->Deliver();
    EXPECT_EQ(KW_CountAllocations(act), 0U);
}
