// SPDX-License-Identifier: MIT
// The test by blocks against one that looks at each point.
#include "Masks/MaskTest.h"
#include "faults/Allocations.h"
#include "masks/MaskRecords.h"

#include <algorithm>

namespace
{
constexpr KW_SAMPLE_FORMAT kFormats[] = {eKW_SAMPLES_INT16, eKW_SAMPLES_FLOAT, eKW_SAMPLES_MINMAX};

/** What the header says, point by point. */
std::vector<KW_MaskViolation> NaiveViolations(const t_RandomTrace& trace, const KW_Mask& mask,
                                              const KW_MaskFrame& frame, KW_ZEL_LIMIT line)
{
    std::vector<KW_MaskViolation> found;
    bool isOpen = false;
    for (UINT32 k = trace.info.settlingPoints; k < trace.info.count; ++k)
    {
        const double x =
            ((trace.info.start + k * trace.info.interval) - frame.left) / frame.timeScale;
        const KW_MinMax limits = KW_GetMaskLimits(mask, x);
        const double excess =
            line == eKW_ZEL_LIMIT_OVERFLOW
                ? (trace.levels[k].maximum - frame.middle) / frame.levelScale - limits.maximum
                : limits.minimum - (trace.levels[k].minimum - frame.middle) / frame.levelScale;
        if (!(excess > 0))
        {
            isOpen = false;
            continue;
        }
        if (!isOpen)
        {
            found.push_back({line, k, k, k, excess});
        }
        isOpen = true;
        found.back().last = k;
        if (excess > found.back().excess)
        {
            found.back().worst = k;
            found.back().excess = excess;
        }
    }
    return found;
}

KW_MaskLine RandomLine(t_Random& random, double level)
{
    KW_MaskLine line;
    const UINT32 count = random.Below(4) == 0 ? random.Below(2000) : random.Below(12);
    for (UINT32 i = 0; i < count; ++i)
    {
        const double x = random.Below(1000) / 100.0; // equal ones: steps
        line.push_back({x, level + random.Below(1000) / 500.0, random.Below(20) == 0});
    }
    std::sort(line.begin(), line.end(), [](const auto& a, const auto& b) { return a.x < b.x; });
    return line;
}

KW_Mask RandomMask(t_Random& random, const t_RandomTrace& trace, const KW_MaskFrame& frame)
{
    KW_Mask mask{frame, RandomLine(random, 0.5), RandomLine(random, -2.5)};
    if (random.Below(2) == 0 &&
        KW_IsAccepted(KW_MakeMask(trace.record, 0, frame, 0.05, 0.01, mask)) &&
        random.Below(4) != 0)
    {
        // Cuts into its trace somewhere.
        mask.upper[random.Below(mask.upper.size())].y -= 0.1;
        mask.lower[random.Below(mask.lower.size())].y += 0.5;
    }
    return mask;
}
} // namespace

class MaskTests : public testing::TestWithParam<UINT32>
{
};

TEST_P(MaskTests, FindOtherViolationsThanTheNaiveTest)
{
    t_Random random(GetParam());
    for (int round = 0; round < 40; ++round)
    {
        SCOPED_TRACE(round);
        const UINT32 count =
            random.Below(5) == 0 ? 1 + random.Below(60000) : 1 + random.Below(3000);
        const t_RandomTrace trace = RandomTrace(random, kFormats[random.Below(3)], count);
        const KW_MaskFrame frame = RandomFrame(random);
        const KW_Mask mask = RandomMask(random, trace, frame);
        ASSERT_EQ(KW_CheckMask(mask), eKW_ACC_OK);
        auto expected = NaiveViolations(trace, mask, frame, eKW_ZEL_LIMIT_OVERFLOW);
        const bool isOver = !expected.empty();
        const auto under = NaiveViolations(trace, mask, frame, eKW_ZEL_LIMIT_UNDERFLOW);
        expected.insert(expected.end(), under.begin(), under.end());

        std::vector<KW_MaskViolation> found(expected.size() + 1);
        UINT32 all = 0;
        ASSERT_EQ(KW_FindMaskViolations(trace.record, 0, mask, frame, found, all), eKW_ACC_OK);
        ASSERT_EQ(all, expected.size());
        found.resize(all);
        EXPECT_EQ(found, expected);

        auto line = eKW_ZEL_LIMIT_INSIDE;
        ASSERT_EQ(KW_TestMask(trace.record, 0, mask, frame, 0, line), eKW_ACC_OK);
        const KW_ZEL_LIMIT lines[] = {eKW_ZEL_LIMIT_INSIDE, eKW_ZEL_LIMIT_OVERFLOW,
                                      eKW_ZEL_LIMIT_UNDERFLOW, eKW_ZEL_LIMIT_OVER_AND_UNDERFLOW};
        EXPECT_EQ(line, lines[(isOver ? 1 : 0) + (under.empty() ? 0 : 2)]);
    }
}

TEST_P(MaskTests, MadeMaskCutsItsOwnTrace)
{
    t_Random random(1000 + GetParam());
    for (int round = 0; round < 40; ++round)
    {
        SCOPED_TRACE(round);
        const UINT32 count = random.Below(3) == 0 ? 1 + random.Below(600) : 1 + random.Below(30000);
        const t_RandomTrace trace = RandomTrace(random, kFormats[random.Below(3)], count);
        const KW_MaskFrame frame = RandomFrame(random);
        const double widthX = random.Below(3) == 0 ? 0.0 : random.Below(100) / 200.0;
        const double widthY = random.Below(3) == 0 ? 0.0 : random.Below(100) / 100.0;
        KW_Mask mask;
        if (KW_MakeMask(trace.record, 0, frame, widthX, widthY, mask) != eKW_ACC_OK)
        {
            continue; // nothing on the screen
        }
        ASSERT_EQ(KW_CheckMask(mask), eKW_ACC_OK);
        const auto lineOf = [&](const KW_MaskFrame& shown)
        {
            auto line = eKW_ZEL_LIMIT_OVER_AND_UNDERFLOW;
            EXPECT_EQ(KW_TestMask(trace.record, 0, mask, shown, 0, line), eKW_ACC_OK);
            return line;
        };
        EXPECT_EQ(lineOf(frame), eKW_ZEL_LIMIT_INSIDE);
        // Nor does one whose trace moves within the widths.
        for (const double part : {-0.999, 0.999})
        {
            KW_MaskFrame moved = frame;
            moved.left += part * widthX * frame.timeScale;
            moved.middle += part * widthY * frame.levelScale;
            EXPECT_EQ(lineOf(moved), eKW_ZEL_LIMIT_INSIDE);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, MaskTests, testing::Range(0U, 8U));

TEST(MaskTest, MadeMaskIsWiderThanAsked)
{
    // A pulse of half a division: from 4.75 to 5.25.
    std::vector<INT16> points(10001, 0);
    std::fill(points.begin() + 4750, points.begin() + 5251, INT16{200});
    const CKWRecord record = ShownRecord(points);
    const KW_MaskFrame frame{eKW_UNIT_LEVEL_V, 0, 1, 0, 1};
    KW_Mask mask;
    ASSERT_EQ(KW_MakeMask(record, 0, frame, 0.1, 0.3, mask), eKW_ACC_OK);
    EXPECT_EQ(KW_GetMaskLimits(mask, 5.0).maximum, 2.3);
    EXPECT_EQ(KW_GetMaskLimits(mask, 4.6).maximum, 0.3);
    EXPECT_EQ(KW_GetMaskLimits(mask, 5.40).maximum, 0.3);
    EXPECT_EQ(KW_GetMaskLimits(mask, 5.0).minimum, 1.7);
    EXPECT_LE(mask.upper.size(), 6U); // flat parts are two points
    EXPECT_EQ(KW_MakeMask(record, 1, frame, 0.1, 0.3, mask), eKW_ACC_BAD_INDEX);
    EXPECT_EQ(KW_MakeMask(record, 0, {eKW_UNIT_LEVEL_A, 0, 1, 0, 1}, 0.1, 0.3, mask),
              eKW_ACC_WRONG_KIND);
    EXPECT_EQ(KW_MakeMask(record, 0, {eKW_UNIT_LEVEL_V, 20, 1, 0, 1}, 0.1, 0.3, mask),
              eKW_ACC_NOTHING_TO_ACT_ON);
    EXPECT_EQ(mask.upper.size(), 6U);
}

TEST(MaskTest, TestTakesMemory)
{
    t_Random random(7);
    const t_RandomTrace trace = RandomTrace(random, eKW_SAMPLES_INT16, 5000);
    const KW_MaskFrame frame{eKW_UNIT_NOT_DEFINED, 0, 1, 0, 1};
    const KW_Mask mask = RandomMask(random, trace, frame);
    std::vector<KW_MaskViolation> found(3);
    const auto act = [&]
    {
        auto line = eKW_ZEL_LIMIT_INSIDE;
        UINT32 count = 0;
        KW_TestMask(trace.record, 0, mask, frame, 0, line);
        KW_FindMaskViolations(trace.record, 0, mask, frame, found, count);
    };
    EXPECT_EQ(KW_CountAllocations(act), 0U);
}
