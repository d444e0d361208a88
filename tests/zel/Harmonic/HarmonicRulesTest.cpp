// SPDX-License-Identifier: MIT
#include "zel/RuleTree.h"

namespace
{
const t_Rule kHarmonicRules[] = {
    {"FixedFundamentalIsInUse", "", "Harmonic/Fundamental = F_400_HZ",
     ".FundamentalFrequency = 400; .HarmonicSelected[0]/Frequency = 1200"},
    {"UserFundamentalIsInUse", "Harmonic/Fundamental = USER", ".UserFundamental = 90",
     ".FundamentalFrequency = 90; .HarmonicSelected[0]/Frequency = 270"},
    {"HighestFundamentalIsNoResult", "Harmonic/Fundamental = USER", ".UserFundamental = 2000",
     ".FundamentalFrequency = 2000; .HarmonicSelected[0]/Frequency = 6000"},
    {"MeasuredFundamentalIsNotKnownYet", "Harmonic/Fundamental = F_60_HZ", ".Fundamental = AUTO",
     ".FundamentalFrequency = 60-; .HarmonicSelected[0]/Frequency = 180-"},
    {"FundamentalOfAnotherChannelIsNotKnownYet", "", "Harmonic/FundamentalSource = C3",
     ".FundamentalFrequency = 50-"},
    {"DeliveredFundamentalMovesTheHarmonics", "", "@Harmonic/FundamentalFrequency = 60",
     ".HarmonicSelected[0]/Frequency = 180"},
    {"AutoSetIgnoresTheFundamental", "Harmonic/Fundamental = F_60_HZ", ".AutoSet",
     "Horizontal/Scale = 0.02; .AcquisitionTime = 0.2"},
    {"AutoSetGuessesTheFundamental", "", "Harmonic/AutoSet", "Horizontal/Scale = 1e-07",
     eKW_ACC_NOTHING_TO_ACT_ON},
    {"OrderStaysAmongTheAnalysed",
     "Harmonic/Fundamental = F_50_HZ; .HarmonicSelected[0]/Order = 40; @.Magnitude = 7",
     "Harmonic/NumberOfHarmonics = 25",
     ".HarmonicSelected[0]/Order = 25; .Order.max = 25; .Frequency = 1250; .Magnitude = 7-"},
    {"OtherOrderDropsTheReading",
     "Harmonic/Fundamental = F_50_HZ; @.HarmonicSelected[0]/Magnitude = 7", ".Order = 5",
     ".Magnitude = 7-; .Frequency = 250"},
    {"NextOrderSkipsTriplens",
     "Harmonic/HarmonicSelection = ODD_NON_TRIPLEN; .HarmonicSelected[0]/Order = 7", ".SelectNext",
     ".Order = 11"},
    {"PreviousEvenOrderEndsAtTwo",
     "Harmonic/HarmonicSelection = EVEN; .HarmonicSelected[0]/Order = 2", ".SelectPrevious",
     ".Order = 2", eKW_ACC_NOTHING_TO_ACT_ON},
    {"LargestNeedsResults", "", "Harmonic/HarmonicSelected[0]/SelectLargest", ".Order = 3",
     eKW_ACC_NOTHING_TO_ACT_ON},
    {"HistoryBeginsAnew",
     "@Harmonic/HarmonicUIResults/HarmonicChannelUIResult[1]/HarmonicChannelStatusHistory/"
     "NumberOfAnalyses = 5; @.MaximumThd = 5",
     "Harmonic/ResetHistory",
     ".HarmonicUIResults/HarmonicChannelUIResult[1]/HarmonicChannelStatusHistory/NumberOfAnalyses "
     "= 0; .MaximumThd = 5-; .Passed = ON-"},
    {"AveragesBeginAnew", "@Harmonic/HarmonicUIResults/AveragesDone = 5", "Harmonic/ResetAverage",
     ".HarmonicUIResults/AveragesDone = 0"},
    {"StandardBringsItsLimits", "", "Harmonic/HarmonicStandard/Standard = EN50160",
     ".HarmonicLimitCurrent/ThdLimit = 8; .HighestOrder = 25; .Scale = PERCENT_FUNDAMENTAL"},
    {"NoStandardHasNoLimits", "Harmonic/HarmonicStandard/Standard = EN50160", ".Standard = NONE",
     ".HarmonicLimitCurrent/ThdLimit = 8-; .HighestOrder = 0; .OrderLimits = "},
    {"UserLimitsReachTheOnesInUse",
     "Harmonic/HarmonicStandard/Standard = USER; .HarmonicLimitUser/HighestOrder = 6",
     ".OrderLimits = 4=0.5;9=1",
     "Harmonic/HarmonicStandard/HarmonicLimitCurrent/OrderLimits = 2=2;3=5;4=0.5;5=5;6=2; "
     ".HighestOrder = 6; .ThdLimit = 8"},
    {"UnreadableLimitIsSilent",
     "Harmonic/HarmonicStandard/Standard = USER; .HarmonicLimitUser/HighestOrder = 3",
     ".OrderLimits = 2=x;1=4;3=9", "..HarmonicLimitCurrent/OrderLimits = 2=2;3=9", eKW_ACC_WARNING},
    {"CopyGivesGapsALimit",
     "Harmonic/HarmonicStandard/Standard = EN61000_3_2_CLASS_C; .HarmonicLimitUser/CopyStandard",
     "Harmonic/HarmonicStandard/Standard = USER",
     ".HarmonicLimitCurrent/OrderLimits = "
     "2=2;3=27;5=10;7=7;9=5;11=3;13=3;15=3;17=3;19=3;21=3;23=3;25=3;27=3;29=3;31=3;33=3;35=3;37=3;"
     "39=3"},
    {"CopyInventsALimitOfDistortion", "Harmonic/HarmonicStandard/Standard = EN61000_3_2_CLASS_A",
     ".HarmonicLimitUser/CopyStandard", ".ThdLimit = 1000; .HighestOrder = 40; .Scale = ABSOLUTE"},
    {"NothingToCopyIsCopied", "", "Harmonic/HarmonicStandard/HarmonicLimitUser/CopyStandard",
     ".OddLimit = 5", eKW_ACC_NOTHING_TO_ACT_ON},
};

void CheckHarmonic(const CRuleTree& tree, CFindings& findings)
{
    const QByteArray standard = "Harmonic/HarmonicStandard/";
    findings.Check(tree.Text(standard + "Standard") != QLatin1String("NONE") ||
                       tree.Text(standard + "HarmonicLimitCurrent/OrderLimits").isEmpty(),
                   "limits without a standard");
    const QStringList forPower{QStringLiteral("EN61000_3_2_CLASS_A"),
                               QStringLiteral("EN61000_3_2_CLASS_B"),
                               QStringLiteral("EN61000_3_2_CLASS_D")};
    findings.Check(!forPower.contains(tree.Text(standard + "Standard")) ||
                       tree.Text(standard + "HarmonicLimitCurrent/OrderLimits").isEmpty() ==
                           (tree.Number(standard + "RatedPower") <= 75.0),
                   "limits of another power");
    for (const char item : {'0', '1', '2', '3'})
    {
        const QByteArray order = QByteArray("Harmonic/HarmonicSelected[") + item + "]/Order";
        const QString most = tree.State(order + ".max");
        findings.Check(tree.Number(order) <= most.toDouble() &&
                           most == tree.Text("Harmonic/NumberOfHarmonics"),
                       order);
    }
}
} // namespace

INSTANTIATE_TEST_SUITE_P(Harmonic, Rules, testing::ValuesIn(kHarmonicRules), Rules::Name);
INSTANTIATE_TEST_SUITE_P(Harmonic, Walks, testing::Values(t_Walk{"", "Harmonic", CheckHarmonic}));

TEST(HarmonicRules, ShownOrdersIgnoreTheSelectionOrWhatIsDelivered)
{
    const CRuleTree tree;
    const QByteArray results =
        "Harmonic/HarmonicUIResults/HarmonicChannelUIResult[1]/HarmonicMagnitudeUIResult";
    const char* const magnitudes[] = {"9", "8", "1", "2", "4"};
    const auto item = [&results](int i) { return results + '[' + QByteArray::number(i) + "]/"; };
    for (int i = 0; i < 5; ++i)
    {
        tree.DoAll("Harmonic/HarmonicSelection = ODD; + " + results);
        tree.DoAll('@' + item(i) + "Order = " + QByteArray::number(i) +
                   "; @.Magnitude = " + magnitudes[i]);
    }
    for (const auto& [selection, expected] : {std::pair{"ODD", ".x.x."},
                                              {"EVEN", "..x.x"},
                                              {"ODD_NON_TRIPLEN", ".x..."},
                                              {"ALL", "xxxxx"}})
    {
        tree.DoAll(QByteArray("Harmonic/HarmonicSelection = ") + selection);
        std::string shown;
        for (int i = 0; i < 5; ++i)
        {
            shown += tree.Text(item(i) + "Visible") == QLatin1String("ON") ? 'x' : '.';
        }
        EXPECT_EQ(shown, expected) << selection;
    }
    EXPECT_EQ(tree.Do("Harmonic/HarmonicSelected[1]/SelectLargest"), eKW_ACC_OK);
    EXPECT_EQ(tree.Text("Harmonic/HarmonicSelected[1]/Order"), QStringLiteral("4"));
}
