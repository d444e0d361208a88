// SPDX-License-Identifier: MIT
#include "RuleTree.h"

#include <cmath>

namespace
{
QString C(const char* rest)
{
    return QStringLiteral("Vertical/Channel[2]/") + QString::fromLatin1(rest);
}

QString L(const char* rest)
{
    return C("Levels/") + QString::fromLatin1(rest);
}

QString V(const char* rest)
{
    return QStringLiteral("Vertical/") + QString::fromLatin1(rest);
}

QString S(const char* rest)
{
    return QStringLiteral("Vertical/Channel[0]/") + QString::fromLatin1(rest);
}

QString G(const char* rest)
{
    return QStringLiteral("Logic/") + QString::fromLatin1(rest);
}

std::vector<t_RuleCase> Cases()
{
    return {
        {"ScreenKeepsItsHeight",
         {C("Position = 1"), C("Offset = 3")},
         C("Scale = 0.5"),
         {C("Range = 4"), C("Top = 4.5"), C("Bottom = 0.5")}},
        {"PositionMovesTheScreenUp",
         {},
         C("Position = 1.5"),
         {C("Range = 8"), C("Top = 2.5"), C("Bottom = -5.5")}},
        {"OffsetMovesTheScreenDown", {}, C("Offset = 10"), {C("Top = 14"), C("Bottom = 6")}},
        {"ScaleIgnoresTheProbe",
         {},
         C("ProbeType = VOLTAGE_1000_TO_1"),
         {C("ProbeFactor = 1000"), C("Scale = 2"), C("Top = 8")}},
        {"OffsetIgnoresTheProbe",
         {C("Offset = 2000")},
         C("ProbeType = VOLTAGE_1_TO_1"),
         {C("ProbeFactor = 1"), C("Offset = 200"), C("Bottom = 196")}},
        {"CurrentIsInVolts",
         {},
         C("ProbeType = CURRENT_100_MV_PER_A"),
         {C("ProbeFactor = 10"), C("ProbeUnit = LEVEL_A")}},
        {"UserFactorIsNotUsed",
         {C("ProbeUserUnit = LEVEL_A"), C("ProbeUserFactor = 0.25")},
         C("ProbeType = USER"),
         {C("ProbeFactor = 0.25"), C("ProbeUnit = LEVEL_A")}},
        {"UserFactorIsUsedUnasked", {}, C("ProbeUserFactor = 3"), {C("ProbeFactor = 10")}},
        {"PositionIsNotReset",
         {C("Position = 2"), C("Offset = 7")},
         C("ResetPosition"),
         {C("Position = 0"), C("Offset = 0"), C("Top = 4")}},
        {"ChannelThatIsOffIsASource",
         {},
         C("Enabled = OFF"),
         {C("ChannelSourceTypes/TriggerSource = OFF"), C("ChannelSourceTypes/XYSource = OFF"),
          QStringLiteral("Vertical/Channel[1]/ChannelSourceTypes/XYSource = ON")}},
        {"ChannelsHaveOneName",
         {},
         C("Label = x"),
         {C("ChannelType/Channel = C3"), C("ChannelType/AnalogChannel = C3")}},
        {"LevelLeavesTheScreen",
         {L("EdgeTriggerLevel[0]/Level = 3")},
         C("Scale = 0.5"),
         {L("EdgeTriggerLevel[0]/Level = 2"), L("EdgeTriggerLevel[0]/LevelSet = USER")}},
        {"LevelComesBackElsewhere",
         {L("EdgeTriggerLevel[0]/Level = 3"), C("Scale = 0.5")},
         C("Scale = 1"),
         {L("EdgeTriggerLevel[0]/Level = 3")}},
        {"LevelLeavesTheMovedScreen",
         {},
         C("Offset = 10"),
         {L("EdgeTriggerLevel[0]/Level = 6"), L("RuntTriggerLevelRange[0]/LowerLevel = 6"),
          L("WindowTriggerLevelRange[0]/UpperLevel = 6"),
          L("LogicThresholdSettings[0]/Threshold = 6")}},
        {"FixedLevelIsNotTaken",
         {},
         L("EdgeTriggerLevel[0]/LevelSet = ECL"),
         {L("EdgeTriggerLevel[0]/Level = -1.3")}},
        {"FixedLevelStaysFixedWhenWritten",
         {L("EdgeTriggerLevel[0]/LevelSet = TTL")},
         L("EdgeTriggerLevel[0]/Level = 1.5"),
         {L("EdgeTriggerLevel[0]/LevelSet = USER")}},
        {"FixedLevelLeavesTheScreen",
         {C("Scale = 0.2")},
         L("EdgeTriggerLevel[0]/LevelSet = CMOS"),
         {L("EdgeTriggerLevel[0]/Level = 0.8")},
         eKW_ACC_WARNING},
        {"FixedLevelIsLostForGood",
         {C("Scale = 0.2"), L("EdgeTriggerLevel[0]/LevelSet = CMOS")},
         C("Scale = 1"),
         {L("EdgeTriggerLevel[0]/Level = 2.5")}},
        {"MiddleMovesTheLevel",
         {L("EdgeTriggerLevel[0]/Level = 1")},
         L("EdgeTriggerLevel[0]/LevelSet = MIDDLE"),
         {L("EdgeTriggerLevel[0]/Level = 1")}},
        {"UpperFallsBelowLower",
         {},
         L("SlewRateTriggerLevelRange[0]/UpperLevel = -2"),
         {L("SlewRateTriggerLevelRange[0]/LowerLevel = -2")}},
        {"LowerRisesAboveUpper",
         {},
         L("RuntTriggerLevelRange[0]/LowerLevel = 3"),
         {L("RuntTriggerLevelRange[0]/UpperLevel = 3")}},
        {"ThresholdIgnoresItsType",
         {},
         L("LogicThresholdSettings[0]/ThresholdType = PECL"),
         {L("LogicThresholdSettings[0]/Threshold = 3.7"),
          L("LogicThresholdSettings[0]/UserThreshold = 1.4")}},
        {"UserThresholdIsNotUsed",
         {},
         L("LogicThresholdSettings[0]/UserThreshold = 1.5"),
         {L("LogicThresholdSettings[0]/ThresholdType = USER"),
          L("LogicThresholdSettings[0]/Threshold = 1.5")}},
        {"HysteresisIsInVolts",
         {C("Scale = 5")},
         L("HysteresisLevel[0]/NoiseReject = HIGH"),
         {L("HysteresisLevel[0]/Hysteresis = 5")}},
        {"HysteresisIgnoresTheScale", {}, C("Scale = 5"), {L("HysteresisLevel[0]/Hysteresis = 1")}},
        {"HysteresisIgnoresTheFilter",
         {},
         C("BandwidthLimit = MHZ_20"),
         {L("RelativeHysteresisLevel[0]/Hysteresis = 1")}},
        {"HysteresisIsTooSmall",
         {},
         C("BandwidthLimit = KHZ_10"),
         {L("RelativeHysteresisLevel[0]/Hysteresis = 0.5")}},
        {"UserHysteresisIsNotUsed",
         {L("RelativeHysteresisLevel[0]/UserHysteresis = 12"), C("BandwidthLimit = MHZ_1")},
         L("RelativeHysteresisLevel[0]/AutoHysteresis = OFF"),
         {L("RelativeHysteresisLevel[0]/Hysteresis = 12")}},
        {"LevelsAreNotReset",
         {L("EdgeTriggerLevel[0]/Level = 1"), L("WindowTriggerLevelRange[0]/UpperLevel = 3"),
          L("LogicThresholdSettings[0]/UserThreshold = 2"), L("ShowLevels = OFF"),
          C("Scale = 0.2")},
         L("ResetLevels"),
         {L("EdgeTriggerLevel[0]/Level = 0"), L("WindowTriggerLevelRange[0]/UpperLevel = 0.8"),
          L("LogicThresholdSettings[0]/ThresholdType = TTL"), L("ShowLevels = OFF")}},
        {"StreamsStayAsTheyWere",
         {S("Enabled = OFF")},
         QStringLiteral("Horizontal/ZELMode = ZEL_B"),
         {V("AnalogSignalStreams/NumberOfActiveStreams = 2"),
          V("AnalogSignalStreams/PartsPerStream = 2"),
          V("AnalogSignalStreams/SamplesPerClockCycle = 10"),
          V("AnalogSignalStreams/ClockFrequency = 2.5e+08"),
          V("AnalogSignalStreams/AnalogSignalStream[0]/Channel = C2"),
          V("AnalogSignalStreams/AnalogSignalStream[1]/Channel = C3"),
          V("AnalogSignalStreams/AnalogSignalStream[2]/Active = OFF"),
          V("AnalogSignalStreams/AnalogSignalStream[0]/AnalogSignalStreamPart[1]/DataStream = "
            "SAMPLES_FROM_5_TO_9"),
          V("AnalogSignalStreams/AnalogSignalStream[0]/AnalogSignalStreamPart[2]/DataStream = "
            "UNUSED"),
          V("AnalogChannelMapping[0]/AssociatedSignalStream = NONE"),
          V("AnalogChannelMapping[1]/AssociatedSignalStream = S1"),
          V("AnalogChannelMapping[3]/AssociatedSignalStream = NONE"),
          V("AnalogChannelMapping[2]/InterleavedConverters = 2")}},
        {"FastestModeHasTwoStreams",
         {},
         QStringLiteral("Horizontal/ZELMode = ZEL_C"),
         {V("AnalogSignalStreams/NumberOfActiveStreams = 1"),
          V("AnalogSignalStreams/AnalogSignalStream[0]/SampleRate = 5e+09"),
          V("AnalogSignalStreams/AnalogSignalStream[0]/AnalogSignalStreamPart[3]/DataStream = "
            "SAMPLES_FROM_15_TO_19"),
          V("AnalogSignalStreams/AnalogSignalStream[1]/SampleRate = 0"),
          V("AnalogChannelMapping[3]/InterleavedConverters = 1")}},
        {"SkewIsNotReset", {C("Deskew = 1e-08")}, V("ResetDeskew"), {C("Deskew = 0")}},
        {"SimulatedChannelIsAcquired",
         {},
         QStringLiteral("Simulation/Enabled = ON"),
         {C("ChannelType/DataGeneration = SIMULATED")}},
        {"MissingCurveIsSetToOriginal",
         {},
         V("ReferenceCurve/SetToOriginal"),
         {V("ReferenceCurve/Scale = 1")},
         eKW_ACC_NOTHING_TO_DO},
        {"ClearedCurveIsShown",
         {V("ReferenceCurve/Enabled = ON")},
         V("ReferenceCurve/Clear"),
         {V("ReferenceCurve/Enabled = OFF"), V("ReferenceCurve/ReferenceCurveAttributes/Unit = "
                                               "LEVEL_V-")}},
        {"CoupledThresholdsPart",
         {},
         G("LogicThresholdSettings[1]/ThresholdType = CMOS_3V3"),
         {G("LogicThresholdSettings[0]/Threshold = 1.65"),
          G("LogicThresholdSettings[1]/Threshold = 1.65")}},
        {"FreeThresholdsFollow",
         {G("CoupleThresholds = OFF")},
         G("LogicThresholdSettings[1]/UserThreshold = 3"),
         {G("LogicThresholdSettings[0]/Threshold = 1.4"),
          G("LogicThresholdSettings[1]/Threshold = 3")}},
        {"CoupledHalvesStayApart",
         {G("CoupleThresholds = OFF"), G("LogicThresholdSettings[1]/UserThreshold = 3"),
          G("SelectedThresholdRange = D4_TO_D7")},
         G("CoupleThresholds = ON"),
         {G("LogicThresholdSettings[0]/Threshold = 3")}},
        {"ThresholdIsBeyondTheProbe",
         {},
         G("LogicThresholdSettings[0]/UserThreshold = 9"),
         {G("LogicThresholdSettings[0]/Threshold = 1.4")},
         eKW_ACC_ABOVE_MAXIMUM},
        {"SomeChannelStaysOn",
         {},
         G("DisableAllChannels"),
         {G("LogicChannel[0]/Enabled = OFF"), G("LogicChannel[7]/Enabled = OFF")}},
        {"StackStaysInDisorder",
         {G("LogicChannel[3]/StackIndex = 0"), G("LogicChannel[0]/StackIndex = 3")},
         G("ResetOrder"),
         {G("LogicChannel[3]/StackIndex = 3"), G("LogicChannel[0]/StackIndex = 0")}},
        {"DigitalSkewIsNotReset",
         {G("ChannelDeskew[5]/Deskew = 1e-08")},
         G("ResetDeskew"),
         {G("ChannelDeskew[5]/Deskew = 0")}},
    };
}

class VerticalRule : public testing::TestWithParam<t_RuleCase>
{
};

/** The edges of the screen, from the settings by another way than the rule's. */
void CheckScreen(const CRuleTree& tree, QStringList& wrong)
{
    const double scale = tree.Number(C("Scale"));
    const double middle = tree.Number(C("Offset")) - tree.Number(C("Position")) * scale;
    const double top = tree.Number(C("Top"));
    const double bottom = tree.Number(C("Bottom"));
    const double tolerance = 1e-9 * (std::fabs(middle) + scale);
    if (std::fabs(top - middle - 4.0 * scale) > tolerance ||
        std::fabs(bottom - middle + 4.0 * scale) > tolerance)
    {
        wrong.append(QStringLiteral("screen"));
    }
    const double input = scale / tree.Number(C("ProbeFactor"));
    if (input < 0.0019999 || input > 100.0001)
    {
        wrong.append(QStringLiteral("scale of the input path"));
    }
}

void CheckLevels(const CRuleTree& tree, QStringList& wrong)
{
    const auto check = [&](const QString& level)
    {
        const auto property = Property(tree.root, level.toLatin1().constData());
        const double value = tree.Number(level);
        if (value < tree.Number(C("Bottom")) || value > tree.Number(C("Top")) ||
            property->GetMaxText() != tree.Text(C("Top")))
        {
            wrong.append(level);
        }
    };
    check(L("EdgeTriggerLevel[0]/Level"));
    check(L("LogicThresholdSettings[0]/UserThreshold"));
    check(L("LogicThresholdSettings[0]/Threshold"));
    for (const char* const kind : {"SlewRate", "Runt", "Window"})
    {
        const QString range = L(kind) + QStringLiteral("TriggerLevelRange[0]/");
        check(range + QStringLiteral("LowerLevel"));
        check(range + QStringLiteral("UpperLevel"));
        if (tree.Number(range + QStringLiteral("LowerLevel")) >
            tree.Number(range + QStringLiteral("UpperLevel")))
        {
            wrong.append(range);
        }
    }
}

QStringList Violations(const CRuleTree& tree)
{
    QStringList wrong;
    CheckScreen(tree, wrong);
    CheckLevels(tree, wrong);
    return wrong;
}
} // namespace

TEST_P(VerticalRule, IsBroken)
{
    CheckRule(GetParam());
}

INSTANTIATE_TEST_SUITE_P(All, VerticalRule, testing::ValuesIn(Cases()),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(VerticalRules, RandomWritesBreakWhatHolds)
{
    const QStringList groups = {QStringLiteral("Vertical"), QStringLiteral("Logic"),
                                C("").chopped(1), L("").chopped(1)};
    for (UINT32 seed = 1; seed <= 12; ++seed)
    {
        CheckWalk(seed, {}, groups, Violations);
    }
}
