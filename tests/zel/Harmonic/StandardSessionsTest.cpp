// SPDX-License-Identifier: MIT
#include "zel/RuleTree.h"

namespace
{
// Equipment that is tested against the limits of its standard.
const t_Session kStandardSessions[] = {
    {"ChargerAt75WattFailsClassD",
     {{"Harmonic/HarmonicStandard/Standard = EN61000_3_2_CLASS_D; .RatedPower = 75",
       "Harmonic/HarmonicStandard/HarmonicLimitCurrent/HighestOrder = 0; .OrderLimits = ; "
       ".ThdLimit = 0-; .Unit = NOT_DEFINED"},
      {"Harmonic/HarmonicStandard/RatedPower = 100",
       "Harmonic/HarmonicStandard/HarmonicLimitCurrent/OrderLimits = "
       "3=0.34;5=0.19;7=0.1;9=0.05;11=0.035;13=0.0296154;15=0.0256667;17=0.0226471;19=0.0202632;"
       "21=0.0183333;23=0.0167391;25=0.0154;27=0.0142593;29=0.0132759;31=0.0124194;33=0.0116667;"
       "35=0.011;37=0.0104054;39=0.00987179; .Scale = ABSOLUTE"},
      {"Harmonic/HarmonicStandard/Standard = EN61000_3_2_CLASS_A; .RatedPower = 60",
       "Harmonic/HarmonicStandard/HarmonicLimitCurrent/HighestOrder = 0"}}},
    {"LampsHaveTheLimitsOfAnOldEdition",
     {{"Harmonic/HarmonicStandard/Standard = EN61000_3_2_CLASS_C; .RatedPower = 60; "
       ".PowerFactor = 0.5",
       "Harmonic/HarmonicStandard/HarmonicLimitCurrent/Scale = PERCENT_FUNDAMENTAL; .OrderLimits = "
       "2=2;3=27;5=10;7=7;9=5;11=3;13=3;15=3;17=3;19=3;21=3;23=3;25=3;27=3;29=3;31=3;33=3;35=3;"
       "37=3;39=3"},
      {"Harmonic/HarmonicStandard/RatedPower = 25",
       "Harmonic/HarmonicStandard/HarmonicLimitCurrent/Scale = ABSOLUTE; .HighestOrder = 39; "
       ".ThdLimit = 0-"},
      {"Harmonic/HarmonicStandard/Standard = EN61000_3_2_CLASS_C_WAVEFORM",
       "Harmonic/HarmonicStandard/HarmonicLimitCurrent/OrderLimits = 3=86;5=61"},
      {"Harmonic/HarmonicStandard/Standard = EN61000_3_2_CLASS_C_THD",
       "Harmonic/HarmonicStandard/HarmonicLimitCurrent/ThdLimit = 70; .OrderLimits = "
       "2=5;3=35;5=25;7=30;9=20;11=20"},
      {"Harmonic/HarmonicStandard/RatedPower = 4",
       "Harmonic/HarmonicStandard/HarmonicLimitCurrent/OrderLimits = ; .ThdLimit = 70-"}}},
    {"ConverterHasTheLimitsOfOnePhase",
     {{"Harmonic/HarmonicStandard/Standard = EN61000_3_12_THREE_PHASE; .RatedCurrent = 50; "
       ".ShortCircuitRatio = 120",
       "Harmonic/HarmonicStandard/HarmonicLimitCurrent/ThdLimit = 22; .PwhdLimit = 28; "
       ".OrderLimits = 2=4;4=2;5=9.5;6=1.33333;7=6;8=1;10=0.8;11=3.5;12=0.666667;13=2"},
      {"Harmonic/HarmonicStandard/Standard = EN61000_3_12_THREE_PHASE_TABLE_4",
       "Harmonic/HarmonicStandard/HarmonicLimitCurrent/ThdLimit = 48; .PwhdLimit = 46"},
      {"Harmonic/HarmonicStandard/HarmonicLimitUser/CopyStandard; ..Standard = USER",
       "Harmonic/HarmonicStandard/HarmonicLimitCurrent/ThdLimit = 48; .PwhdLimit = 46"},
      {"Harmonic/HarmonicStandard/Standard = EN50160",
       "Harmonic/HarmonicStandard/HarmonicLimitCurrent/ThdLimit = 8; .PwhdLimit = 46-"}}},
    {"WeightedDistortionWasTestedOtherwise",
     {{"Vertical/Channel[0]/ProbeType = CURRENT_1_V_PER_A; "
       "Harmonic/HarmonicStandard/Standard = EN61000_3_12_THREE_PHASE; "
       "@Harmonic/HarmonicUIResults/HarmonicChannelUIResult[0]/HarmonicChannelStatusCurrent/"
       "PwhdLimit = OVERFLOW",
       "Harmonic/HarmonicUIResults/HarmonicChannelUIResult[0]/HarmonicChannelStatusCurrent/"
       "PwhdLimit = OVERFLOW"},
      {"Harmonic/HarmonicStandard/Standard = MIL_STD_1399_VOLTAGE; "
       "@Harmonic/HarmonicUIResults/HarmonicChannelUIResult[0]/HarmonicChannelStatusCurrent/"
       "PwhdLimit = INSIDE",
       "Harmonic/HarmonicStandard/HarmonicLimitCurrent/Unit = LEVEL_V; "
       "Harmonic/HarmonicUIResults/HarmonicChannelUIResult[0]/HarmonicChannelStatusCurrent/"
       "PwhdLimit = INSIDE-"}}},
    {"ShipboardCurrentsHaveTheLimitsOfTheVoltage",
     {{"Harmonic/HarmonicStandard/Standard = MIL_STD_1399; .RatedPower = 900",
       "Harmonic/HarmonicStandard/HarmonicLimitCurrent/HighestOrder = 64; .ThdLimit = 0-"},
      {"Harmonic/HarmonicStandard/Standard = MIL_STD_1399_VOLTAGE",
       "Harmonic/HarmonicStandard/HarmonicLimitCurrent/HighestOrder = 40; .ThdLimit = 5"}}},
};

/** Limits of some orders, as "order=limit". */
struct t_Limit
{
    const char* name;
    const char* setup;
    const char* limits;
};

const t_Limit kLimits[] = {
    {"LargeShipboard", "Standard = MIL_STD_1399; .RatedPower = 1000", "2=3;32=3;33=3.0303;50=2"},
    {"SmallShipboard", "Standard = MIL_STD_1399; .RatedPower = 900", "2=50;4=25;33=3.0303"},
    {"ApparentPower", "Standard = MIL_STD_1399; .RatedPower = 900; .PowerFactor = 0.9", "2=3"},
    {"Shipboard400Hz",
     "Standard = MIL_STD_1399; .RatedPower = 200; Harmonic/Fundamental = F_400_HZ", "2=3"},
    {"Airborne", "Standard = RTCA_DO_160", "2=0.5;4=0.25;6=0.25;40=0.25;3=5;5=6"},
    {"AirborneThreePhase", "Standard = RTCA_DO_160_THREE_PHASE",
     "2=0.5;4=0.25;6=0.25;3=2;5=2;7=2;9=1.11111;11=10;13=8;17=4;23=3;29=1.03448"},
    {"LargeClassD", "Standard = EN61000_3_2_CLASS_D; .RatedPower = 601",
     "2=1.08;3=2.3;39=0.0576923"},
    {"OnePhase", "Standard = EN61000_3_12; .RatedCurrent = 50; .ShortCircuitRatio = 33", "3=10.8"},
};
} // namespace

INSTANTIATE_TEST_SUITE_P(Standards, Sessions, testing::ValuesIn(kStandardSessions), Sessions::Name);

TEST(HarmonicLimits, OrderHasAnotherLimit)
{
    for (const auto& [name, setup, limits] : kLimits)
    {
        const CRuleTree tree;
        tree.DoAll(QByteArray("Harmonic/HarmonicStandard/") + setup);
        const QStringList inUse =
            tree.Text("Harmonic/HarmonicStandard/HarmonicLimitCurrent/OrderLimits").split(u';');
        for (const QString& limit : QString::fromLatin1(limits).split(u';'))
        {
            EXPECT_TRUE(inUse.contains(limit)) << name << ": " << limit.toStdString();
        }
    }
}
