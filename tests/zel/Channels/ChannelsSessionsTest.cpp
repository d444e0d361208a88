// SPDX-License-Identifier: MIT
#include "zel/RuleTree.h"

#include "IKWFunctionZELHelpers/ZELDatabaseHelperVertical.h"

namespace
{
// Levels and probes of a channel that is looked at in one way and another.
const t_Session kChannelsSessions[] = {
    {"FamilyFollowsTheScreen",
     {{"Vertical/Channel[1]/Levels/EdgeTriggerLevel[0]/LevelSet = CMOS; SerialBus/Enabled = ON; "
       "SerialBus/CANBusSettings/BusChannelSettings[0]/Source = C2",
       "Vertical/Channel[1]/Levels/EdgeTriggerLevel[0]/Level = 2.5; "
       "..LogicThresholdSettings[0]/Threshold = 1.4"},
      {"Vertical/Channel[1]/Scale = 0.05; .Offset = -3; .Position = 2",
       "Vertical/Channel[1]/Top = -2.9; .Levels/EdgeTriggerLevel[0]/Level = 2.5; .LevelSet = CMOS; "
       "..LogicThresholdSettings[0]/Threshold = 1.4; .ThresholdType = TTL; "
       "SerialBus/CANBusSettings/BusChannelSettings[0]/Threshold = 1.4"},
      {"Vertical/Channel[1]/Levels/EdgeTriggerLevel[0]/LevelSet = ECL; "
       "..LogicThresholdSettings[0]/ThresholdType = LVPECL",
       "Vertical/Channel[1]/Levels/EdgeTriggerLevel[0]/Level = -1.3; .Level.max = -1.3; "
       "..LogicThresholdSettings[0]/Threshold = 2; "
       "SerialBus/CANBusSettings/BusChannelSettings[0]/Threshold = 2"}}},
    {"UserTakesALevelOffTheScreen",
     {{"Vertical/Channel[1]/Scale = 0.1; .Levels/EdgeTriggerLevel[0]/LevelSet = TTL; .LevelSet = "
       "USER",
       "Vertical/Channel[1]/Levels/EdgeTriggerLevel[0]/Level = 0.4; .Level.max = 0.4"},
      {"Vertical/Channel[1]/Scale = 1",
       "Vertical/Channel[1]/Levels/EdgeTriggerLevel[0]/Level = 1.4; .LevelSet = USER"}}},
    {"UserThresholdLeavesTheScreen",
     {{"Vertical/Channel[1]/Levels/LogicThresholdSettings[0]/UserThreshold = 3; ...Scale = 0.5",
       "Vertical/Channel[1]/Levels/LogicThresholdSettings[0]/Threshold = 2"},
      {"Vertical/Channel[1]/Scale = 1",
       "Vertical/Channel[1]/Levels/LogicThresholdSettings[0]/Threshold = 3"}}},
    {"AmperesHaveALogicFamily",
     {{"Vertical/Channel[1]/Levels/EdgeTriggerLevel[0]/LevelSet = TTL; ...ProbeType = "
       "CURRENT_100_MV_PER_A",
       "Vertical/Channel[1]/Levels/EdgeTriggerLevel[0]/LevelSet = USER; .LevelSet.values = "
       "USER|MIDDLE; ..LogicThresholdSettings[0]/ThresholdType = USER; .Threshold = 1.4; "
       ".Threshold.unit = LEVEL_A"},
      {"Vertical/Channel[1]/ProbeType = VOLTAGE_1_TO_1",
       "Vertical/Channel[1]/Levels/EdgeTriggerLevel[0]/LevelSet = TTL; .Level = 1.4; "
       "..LogicThresholdSettings[0]/ThresholdType = TTL; .Threshold = 1.4"}}},
    {"AnotherProbeIsAnotherPicture",
     {{"Vertical/Channel[1]/Scale = 0.5; .Offset = 2; .Position = 1; "
       ".Levels/EdgeTriggerLevel[0]/Level = 1.3; ..WindowTriggerLevelRange[0]/LowerLevel = -0.5; "
       "..SlewRateTriggerLevelRange[0]/UpperLevel = 3.5; ..LogicThresholdSettings[0]/UserThreshold "
       "= 0.9; ...ProbeType = VOLTAGE_100_TO_1",
       "Vertical/Channel[1]/Scale = 5; .Offset = 20; .Position = 1; .Top = 35; .Bottom = -5; "
       ".Levels/EdgeTriggerLevel[0]/Level = 13; .Level.step = 0.1; "
       "..WindowTriggerLevelRange[0]/LowerLevel = -5; "
       "..SlewRateTriggerLevelRange[0]/UpperLevel = 35; "
       "..LogicThresholdSettings[0]/Threshold = 9; ..HysteresisLevel[0]/Hysteresis = 1; "
       "Trigger/CurrentTriggerThresholdLevels/Hysteresis = 0.2"},
      {"Vertical/Channel[1]/ProbeUserFactor = 3; .ProbeType = USER",
       "Vertical/Channel[1]/Scale = 0.15; .Offset = 0.6; .Levels/EdgeTriggerLevel[0]/Level = 0.39"},
      {"Vertical/Channel[1]/ProbeUserFactor = 0.7; .ProbeUserUnit = LEVEL_A",
       "Vertical/Channel[1]/Scale = 0.035; .Offset = 0.14; .Offset.unit = LEVEL_A"},
      {"Vertical/Channel[1]/ProbeType = VOLTAGE_10_TO_1",
       "Vertical/Channel[1]/Scale = 0.5; .Offset = 2; .Offset.unit = LEVEL_V; .Top = 3.5; "
       ".Levels/EdgeTriggerLevel[0]/Level = 1.3; "
       "..WindowTriggerLevelRange[0]/LowerLevel = -0.5; "
       "..SlewRateTriggerLevelRange[0]/UpperLevel = 3.5; ..LogicThresholdSettings[0]/Threshold = "
       "0.9"}}},
    {"AnotherProbeForgetsAHeldLevel",
     {{"Vertical/Channel[1]/Levels/EdgeTriggerLevel[0]/Level = 3; ...Scale = 0.5; .ProbeType = "
       "VOLTAGE_1_TO_1",
       "Vertical/Channel[1]/Scale = 0.05; .Levels/EdgeTriggerLevel[0]/Level = 0.2"},
      {"Vertical/Channel[1]/Scale = 0.1", "Vertical/Channel[1]/Levels/EdgeTriggerLevel[0]/Level = "
                                          "0.3"},
      {"Vertical/Channel[1]/ProbeType = VOLTAGE_10_TO_1; .Scale = 0.2; .ProbeType = "
       "VOLTAGE_1_TO_1; .ProbeType = VOLTAGE_10_TO_1",
       "Vertical/Channel[1]/Scale = 0.2; .Levels/EdgeTriggerLevel[0]/Level = 0.8"},
      {"Vertical/Channel[1]/Scale = 1", "Vertical/Channel[1]/Levels/EdgeTriggerLevel[0]/Level = "
                                        "3"}}},
};

/** What steps of the channel's scale lead through, from one end to the other. */
std::vector<double> Walked(IDbProperty& scale, const char* from, INT32 steps)
{
    EXPECT_EQ(scale.SetText(QString::fromLatin1(from)), eKW_ACC_OK);
    std::vector<double> scales;
    do
    {
        scales.push_back(scale.GetText().toDouble());
    } while (scale.IncDec(steps) == eKW_ACC_OK);
    return scales;
}
} // namespace

INSTANTIATE_TEST_SUITE_P(Channels, Sessions, testing::ValuesIn(kChannelsSessions), Sessions::Name);

TEST(VerticalScale, StepsLeaveTheLadderOfTheCalculations)
{
    using t_Helper = CZELDatabaseHelperVertical;
    for (const char* const path :
         {"Vertical/Channel[0]/Scale", "Vertical/ReferenceCurve/Scale", "Mathematics/Scale"})
    {
        const CRuleTree tree;
        const auto scale = std::dynamic_pointer_cast<IDbProperty>(
            tree.root->GetDbObject()->Find(QString::fromLatin1(path)));
        const QByteArray min = scale->GetMinText().toLatin1();
        const QByteArray max = scale->GetMaxText().toLatin1();
        const std::vector<double> up = Walked(*scale, min, 1);
        const std::vector<double> down = Walked(*scale, max, -1);
        ASSERT_TRUE(std::equal(up.begin(), up.end(), down.rbegin(), down.rend())) << path;
        ASSERT_GT(up.size(), 18u);
        for (std::size_t i = 1; i < up.size(); ++i)
        {
            const double between = (up[i - 1] + up[i]) / 2.0;
            EXPECT_DOUBLE_EQ(t_Helper::GetNextHighestScale(between), up[i]) << path;
            EXPECT_DOUBLE_EQ(t_Helper::GetNextLowestScale(between), up[i - 1]) << path;
        }
    }
}
