// SPDX-License-Identifier: MIT
#include "Couplings.h"
#include "HarmonicLimits.h"

#include <cmath>

namespace
{
class HarmonicCoupling : public testing::TestWithParam<t_Coupling>
{
};

struct t_LimitRow
{
    KW_HMA_STANDARD standard;
    NHarmonicLimits::t_Ratings ratings;
    UINT32 order;
    double expected; ///< 0 where the standard has none
};

constexpr NHarmonicLimits::t_Ratings kRatings{100.0, 20.0, 0.9, 33.0};

class HarmonicLimit : public testing::TestWithParam<t_LimitRow>
{
};
} // namespace

TEST_P(HarmonicCoupling, IsAbsentOrDoesNotComeBack)
{
    CheckCoupling(GetParam());
}

#define PICKED "Harmonic/HarmonicSelected[0]/"
#define SHOWN "Harmonic/HarmonicUIResults/HarmonicChannelUIResult[1]/"
#define STANDARD "Harmonic/HarmonicStandard/"

INSTANTIATE_TEST_SUITE_P(
    Harmonic, HarmonicCoupling,
    testing::Values(
        t_Coupling{"FixedFundamentalIsInUse",
                   {},
                   "Harmonic/Fundamental=F_400_HZ",
                   0,
                   {"Harmonic/FundamentalFrequency=400", PICKED "Frequency=1200"}},
        t_Coupling{"UserFundamentalIsInUse",
                   {"Harmonic/Fundamental=USER"},
                   "Harmonic/UserFundamental=90",
                   0,
                   {"Harmonic/FundamentalFrequency=90", PICKED "Frequency=270"}},
        t_Coupling{"MeasuredFundamentalIsNotKnownYet",
                   {"Harmonic/Fundamental=F_60_HZ"},
                   "Harmonic/Fundamental=AUTO",
                   0,
                   {"!Harmonic/FundamentalFrequency", "!" PICKED "Frequency"}},
        t_Coupling{"FundamentalOfAnotherChannelIsNotKnownYet",
                   {},
                   "Harmonic/FundamentalSource=C3",
                   0,
                   {"!Harmonic/FundamentalFrequency"}},
        t_Coupling{"DeliveredFundamentalMovesTheHarmonics",
                   {},
                   "@Harmonic/FundamentalFrequency=60",
                   0,
                   {PICKED "Frequency=180"}},
        t_Coupling{"OrderStaysAmongTheAnalysed",
                   {PICKED "Order=40", "@" PICKED "Magnitude=7"},
                   "Harmonic/NumberOfHarmonics=25",
                   0,
                   {PICKED "Order=25", PICKED "Order.max=25", PICKED "Frequency=1250",
                    "!" PICKED "Magnitude"}},
        t_Coupling{"OtherOrderDropsTheReading",
                   {"@" PICKED "Magnitude=7"},
                   PICKED "Order=5",
                   0,
                   {"!" PICKED "Magnitude", PICKED "Frequency=250"}},
        t_Coupling{"NextOrderSkipsTriplens",
                   {"Harmonic/HarmonicSelection=ODD_NON_TRIPLEN", PICKED "Order=7"},
                   PICKED "SelectNext()",
                   0,
                   {PICKED "Order=11"}},
        t_Coupling{"PreviousEvenOrderEndsAtTwo",
                   {"Harmonic/HarmonicSelection=EVEN", PICKED "Order=2"},
                   PICKED "SelectPrevious()",
                   eKW_ACC_NOTHING_TO_DO,
                   {PICKED "Order=2"}},
        t_Coupling{"LargestNeedsResults",
                   {},
                   PICKED "SelectLargest()",
                   eKW_ACC_NOTHING_TO_DO,
                   {PICKED "Order=3"}},
        t_Coupling{"HistoryBeginsAnew",
                   {"@" SHOWN "HarmonicChannelStatusHistory/NumberOfAnalyses=5",
                    "@" SHOWN "HarmonicChannelStatusHistory/MaximumThd=5"},
                   "Harmonic/ResetHistory()",
                   0,
                   {SHOWN "HarmonicChannelStatusHistory/NumberOfAnalyses=0",
                    "!" SHOWN "HarmonicChannelStatusHistory/MaximumThd",
                    "!" SHOWN "HarmonicChannelStatusHistory/Passed"}},
        t_Coupling{"AveragesBeginAnew",
                   {"@Harmonic/HarmonicUIResults/AveragesDone=5"},
                   "Harmonic/ResetAverage()",
                   0,
                   {"Harmonic/HarmonicUIResults/AveragesDone=0"}},
        t_Coupling{"StandardBringsItsLimits",
                   {},
                   STANDARD "Standard=EN50160",
                   0,
                   {STANDARD "HarmonicLimitCurrent/ThdLimit=8",
                    STANDARD "HarmonicLimitCurrent/HighestOrder=25",
                    STANDARD "HarmonicLimitCurrent/Scale=PERCENT_FUNDAMENTAL"}},
        t_Coupling{"NoStandardHasNoLimits",
                   {STANDARD "Standard=EN50160"},
                   STANDARD "Standard=NONE",
                   0,
                   {"!" STANDARD "HarmonicLimitCurrent/ThdLimit",
                    STANDARD "HarmonicLimitCurrent/HighestOrder=0",
                    STANDARD "HarmonicLimitCurrent/OrderLimits="}},
        t_Coupling{"UserLimitsReachTheOnesInUse",
                   {STANDARD "Standard=USER", STANDARD "HarmonicLimitUser/HighestOrder=6"},
                   STANDARD "HarmonicLimitUser/OrderLimits=4=0.5;9=1",
                   0,
                   {STANDARD "HarmonicLimitCurrent/OrderLimits=2=2;3=5;4=0.5;5=5;6=2",
                    STANDARD "HarmonicLimitCurrent/HighestOrder=6",
                    STANDARD "HarmonicLimitCurrent/ThdLimit=8"}},
        t_Coupling{"UnreadableLimitIsSilent",
                   {STANDARD "Standard=USER", STANDARD "HarmonicLimitUser/HighestOrder=3"},
                   STANDARD "HarmonicLimitUser/OrderLimits=2=x;1=4;3=9",
                   eKW_ACC_WARNING,
                   {STANDARD "HarmonicLimitCurrent/OrderLimits=2=2;3=9"}},
        t_Coupling{
            "CopyGivesGapsALimit",
            {STANDARD "Standard=EN61000_3_2_CLASS_C", STANDARD "HarmonicLimitUser/CopyStandard()"},
            STANDARD "Standard=USER",
            0,
            {STANDARD "HarmonicLimitCurrent/OrderLimits=2=2;3=30;5=10;7=7;9=5;11=3;13=3;"
                      "15=3;17=3;19=3;21=3;23=3;25=3;27=3;29=3;31=3;33=3;35=3;37=3;39=3"}},
        t_Coupling{"NothingToCopyIsCopied",
                   {},
                   STANDARD "HarmonicLimitUser/CopyStandard()",
                   eKW_ACC_NOTHING_TO_DO,
                   {STANDARD "HarmonicLimitUser/OddLimit=5"}}),
    CouplingName);

TEST(HarmonicRules, ShownOrdersIgnoreTheSelectionOrWhatIsDelivered)
{
    const auto root = GetZELRoot();
    const auto results = Container(root, SHOWN "HarmonicMagnitudeUIResult");
    ASSERT_EQ(RunStep(root, QStringLiteral("Harmonic/HarmonicSelection=ODD")), eKW_ACC_OK);
    const double magnitudes[] = {9.0, 8.0, 1.0, 2.0, 4.0};
    for (int i = 0; i < 5; ++i)
    {
        ASSERT_EQ(results->InsertItem(QString()), eKW_ACC_OK);
        const QString item = QStringLiteral("@" SHOWN "HarmonicMagnitudeUIResult[%1]/").arg(i);
        RunStep(root, item + QStringLiteral("Order=%1").arg(i));
        RunStep(root, item + QStringLiteral("Magnitude=%1").arg(magnitudes[i]));
    }
    const auto shown = [&root]
    {
        QString text;
        for (int i = 0; i < 5; ++i)
        {
            const QString path =
                QStringLiteral(SHOWN "HarmonicMagnitudeUIResult[%1]/Visible").arg(i);
            const QString visible = Property(root, path.toLatin1().constData())->GetText();
            text += visible == QLatin1String("ON") ? QLatin1Char('x') : QLatin1Char('.');
        }
        return text.toStdString();
    };
    EXPECT_EQ(shown(), ".x.x.");
    for (const auto& [selection, expected] :
         {std::pair{"EVEN", "..x.x"}, {"ODD_NON_TRIPLEN", ".x..."}, {"ALL", "xxxxx"}})
    {
        RunStep(root, QStringLiteral("Harmonic/HarmonicSelection=") + QLatin1String(selection));
        EXPECT_EQ(shown(), expected) << selection;
    }
    EXPECT_EQ(RunStep(root, QStringLiteral("Harmonic/HarmonicSelected[1]/SelectLargest()")),
              eKW_ACC_OK);
    EXPECT_EQ(Property(root, "Harmonic/HarmonicSelected[1]/Order")->GetText(), QStringLiteral("4"));
}

TEST_P(HarmonicLimit, IsAnotherThanTheStandards)
{
    const auto limits = NHarmonicLimits::OfStandard(GetParam().standard, GetParam().ratings);
    const auto found = limits.orders.find(GetParam().order);
    const double limit = found == limits.orders.end() ? 0.0 : found->second;
    EXPECT_NEAR(limit, GetParam().expected, 1e-9);
}

INSTANTIATE_TEST_SUITE_P(
    Standards, HarmonicLimit,
    testing::Values(t_LimitRow{eKW_HMA_STANDARD_NONE, kRatings, 3, 0.0},
                    t_LimitRow{eKW_HMA_STANDARD_EN61000_3_2_CLASS_A, kRatings, 3, 2.3},
                    t_LimitRow{eKW_HMA_STANDARD_EN61000_3_2_CLASS_A, kRatings, 8, 0.23},
                    t_LimitRow{eKW_HMA_STANDARD_EN61000_3_2_CLASS_A, kRatings, 40, 0.046},
                    t_LimitRow{eKW_HMA_STANDARD_EN61000_3_2_CLASS_A, kRatings, 15, 0.15},
                    t_LimitRow{eKW_HMA_STANDARD_EN61000_3_2_CLASS_B, kRatings, 5, 1.71},
                    t_LimitRow{eKW_HMA_STANDARD_EN61000_3_2_CLASS_C, kRatings, 3, 27.0},
                    t_LimitRow{eKW_HMA_STANDARD_EN61000_3_2_CLASS_C, kRatings, 4, 0.0},
                    t_LimitRow{eKW_HMA_STANDARD_EN61000_3_2_CLASS_D, kRatings, 3, 0.34},
                    t_LimitRow{eKW_HMA_STANDARD_EN61000_3_2_CLASS_D, {1000, 20, 1, 33}, 3, 2.3},
                    t_LimitRow{eKW_HMA_STANDARD_EN61000_3_2_CLASS_D, kRatings, 39, 3.85e-1 / 39},
                    t_LimitRow{eKW_HMA_STANDARD_EN61000_3_12, kRatings, 5, 2.14},
                    t_LimitRow{eKW_HMA_STANDARD_EN61000_3_12, {1, 20, 1, 49.5}, 5, 2.37},
                    t_LimitRow{eKW_HMA_STANDARD_EN61000_3_12, {1, 20, 1, 350}, 13, 1.6},
                    t_LimitRow{eKW_HMA_STANDARD_EN61000_3_12, kRatings, 4, 0.8},
                    t_LimitRow{eKW_HMA_STANDARD_EN50160, kRatings, 11, 3.5},
                    t_LimitRow{eKW_HMA_STANDARD_EN50160, kRatings, 27, 0.0},
                    t_LimitRow{eKW_HMA_STANDARD_MIL_STD_1399, kRatings, 40, 3.0},
                    t_LimitRow{eKW_HMA_STANDARD_RTCA_DO_160, kRatings, 5, 6.0},
                    t_LimitRow{eKW_HMA_STANDARD_RTCA_DO_160, kRatings, 9, 15.0 / 9.0},
                    t_LimitRow{eKW_HMA_STANDARD_RTCA_DO_160, kRatings, 6, 0.25}));

TEST(HarmonicRules, SomeSettingBreaksTheHarmonics)
{
    const auto root = GetZELRoot();
    const auto violations = [&root]
    {
        QStringList wrong;
        const bool isTested =
            Property(root, STANDARD "Standard")->GetText() != QLatin1String("NONE");
        if (!isTested &&
            !Property(root, STANDARD "HarmonicLimitCurrent/OrderLimits")->GetText().isEmpty())
        {
            wrong.append(QStringLiteral("limits without a standard"));
        }
        for (int i = 0; i < 4; ++i)
        {
            const QByteArray path =
                "Harmonic/HarmonicSelected[" + QByteArray::number(i) + "]/Order";
            const auto order = Property(root, path);
            if (order->GetText().toInt() > order->GetMaxText().toInt() ||
                order->GetMaxText() != Property(root, "Harmonic/NumberOfHarmonics")->GetText())
            {
                wrong.append(QString::fromLatin1(path));
            }
        }
        return wrong;
    };
    WalkByChance(root, {QStringLiteral("Harmonic")}, 30, 800, violations);
}
