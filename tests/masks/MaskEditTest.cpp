// SPDX-License-Identifier: MIT
#include "Masks/Mask.h"
#include "masks/MaskRecords.h"

namespace
{
const KW_MaskLine kStep = {{1, 2}, {5, 2}, {5, 3}, {9, 3, true}, {10, 1}};
} // namespace

TEST(MaskEdit, LevelOfALineIsAnother)
{
    const KW_Mask mask{{}, kStep, kStep};
    struct t_Row
    {
        double x;
        double lower;
        double upper;
    };
    constexpr double kNone = std::numeric_limits<double>::infinity();
    for (const t_Row& row :
         {t_Row{0.5, -kNone, kNone}, t_Row{1, 2, 2}, t_Row{4, 2, 2}, t_Row{5, 2, 3}, t_Row{6, 3, 3},
          t_Row{9, 3, 3}, t_Row{9.5, -kNone, kNone}, t_Row{10, 1, 1}, t_Row{11, -kNone, kNone}})
    {
        EXPECT_EQ(KW_GetMaskLimits(mask, row.x).minimum, row.lower) << row.x;
        EXPECT_EQ(KW_GetMaskLimits(mask, row.x).maximum, row.upper) << row.x;
    }
    EXPECT_EQ(KW_GetMaskLimits({{}, {{0, 0}, {4, 2}}, {}}, 1).maximum, 0.5);
}

TEST(MaskEdit, PointsGetOutOfOrder)
{
    KW_MaskLine line = kStep;
    EXPECT_EQ(KW_InsertMaskPoint(line, {5, 4}), eKW_ACC_OK);
    EXPECT_EQ(line[3].y, 4);
    EXPECT_EQ(KW_InsertMaskPoint(line, {std::nan(""), 4}), eKW_ACC_OUTSIDE_DECLARED);
    EXPECT_EQ(KW_MoveMaskPoint(line, 3, {4.9, 4}), eKW_ACC_LIMITS_CROSSED);
    EXPECT_EQ(KW_MoveMaskPoint(line, 3, {9.1, 4}), eKW_ACC_LIMITS_CROSSED);
    EXPECT_EQ(KW_MoveMaskPoint(line, 3, {8, 1e7}), eKW_ACC_OUTSIDE_DECLARED);
    EXPECT_EQ(KW_MoveMaskPoint(line, 6, {8, 1}), eKW_ACC_BAD_INDEX);
    EXPECT_EQ(line[3].x, 5);
    EXPECT_EQ(KW_MoveMaskPoint(line, 3, {8, 1}), eKW_ACC_OK);
    EXPECT_EQ(line[3].x, 8);
    EXPECT_EQ(KW_RemoveMaskPoint(line, 6), eKW_ACC_BAD_INDEX);
    EXPECT_EQ(KW_RemoveMaskPoint(line, 3), eKW_ACC_OK);
    EXPECT_EQ(line, kStep);
    line.assign(eKW_MASK_POINTS, {1, 1});
    EXPECT_EQ(KW_InsertMaskPoint(line, {5, 4}), eKW_ACC_CONTAINER_FULL);
    EXPECT_EQ(KW_CheckMaskLine(line), eKW_ACC_OK);
    line.push_back({0, 0});
    EXPECT_EQ(KW_CheckMaskLine(line), eKW_ACC_CONTAINER_FULL);
}

TEST(MaskEdit, ShiftAndStretchMissTheirMiddle)
{
    KW_Mask mask{{}, {{0, 3}, {1, 1}}, {{0, -1}}};
    ASSERT_EQ(KW_PlaceMask(mask, 0.5, 2.0), eKW_ACC_OK);
    EXPECT_EQ(mask.upper, (KW_MaskLine{{0, 5.5}, {1, 1.5}}));
    EXPECT_EQ(mask.lower, (KW_MaskLine{{0, -2.5}}));
    EXPECT_EQ(KW_PlaceMask(mask, 0.5, std::nan("")), eKW_ACC_NOT_A_NUMBER);
    const KW_Mask before = mask;
    ASSERT_EQ(KW_PlaceMask(mask, 0.0, 1.0), eKW_ACC_OK);
    EXPECT_EQ(mask, before);
}

TEST(MaskEdit, AnotherFrameMovesLevelsOrTimes)
{
    KW_Mask mask{{eKW_UNIT_LEVEL_V, -4, 1, 0, 1}, {{5, 1}, {7, 2}}, {}};
    ASSERT_EQ(KW_MoveMaskToFrame(mask, {eKW_UNIT_LEVEL_V, 1, 2, 1, 0.5}), eKW_ACC_OK);
    EXPECT_EQ(mask.upper, (KW_MaskLine{{0, 0}, {1, 2}}));
    const KW_Mask before = mask;
    EXPECT_EQ(KW_MoveMaskToFrame(mask, {eKW_UNIT_LEVEL_A, 1, 2, 1, 0.5}), eKW_ACC_WRONG_KIND);
    EXPECT_EQ(KW_MoveMaskToFrame(mask, {eKW_UNIT_LEVEL_V, 0, 0, 1, 0.5}), eKW_ACC_NOT_A_NUMBER);
    EXPECT_EQ(KW_MoveMaskToFrame(mask, {eKW_UNIT_LEVEL_V, 0, 2, 1, 1e-9}),
              eKW_ACC_OUTSIDE_DECLARED);
    EXPECT_EQ(mask, before);
}
