// SPDX-License-Identifier: MIT
#include "IKWFunctionDDC.h"
#include "IKWFunctionHorizontal.h"
#include "KWEnumerationsAcquisition.h"
#include "KWEnumerationsOnOff.h"
#include "Root/PgZEL.h"
#include "Timebase/HorizontalHardware.h"
#include "Timebase/PgHorizontal.h"
#include "zel/RuleTree.h"

#include <cmath>
#include <gtest/gtest.h>

namespace
{
class HorizontalGroup : public testing::Test
{
protected:
    std::shared_ptr<IKWFunctionZEL> root = GetZELRoot();
    std::shared_ptr<IKWFunctionHorizontal> h = root->GetPgHorizontal();
    CReports reports;
};

/** The next decade, by the digits: a scale is one digit and an exponent. */
double TenDivisions(double scale)
{
    const QStringList parts = QString::number(scale, 'e', 0).split(QLatin1Char('e'));
    return (parts[0] + QLatin1Char('e') + QString::number(parts[1].toInt() + 1)).toDouble();
}

/** Samples of a record, cut, by integers: no time has quarters of samples. 12.5 and 62.5 count up.
 */
double WholeSamples(double time, const IKWNumericProperty<double>& rate,
                    const IKWNumericProperty<UINT32>& decimation)
{
    const INT64 halves = std::llround(2.0 * time * rate.Get());
    const INT64 each = 2 * INT64{decimation.Get()};
    const bool isUp = 2 * halves == 25 * each || 2 * halves == 125 * each;
    return static_cast<double>(halves / each + (isUp ? 1 : 0));
}

/** What must hold of any setting, by arithmetic of its own. Messages name what does not. */
void Check(const IKWFunctionHorizontal& h, CFindings& findings)
{
    const double time = h.GetPrAcquisitionTime()->Get();
    const double resolution = h.GetPrResolutionPP()->Get();
    const double points = h.GetPrPPLengthWithoutSettlingSamples()->Get();
    const double record = h.GetPrRecordLength()->Get();
    const double factor = h.GetPrInterpolationFactor()->Get();
    const double position = h.GetPrPosition()->Get();
    const double left = h.GetPrLeft()->Get();
    const double tiny = 1e-9 * time;
    findings.Check(time == TenDivisions(h.GetPrScale()->Get()), "time is ten divisions");
    findings.Check(
        record == WholeSamples(time, *h.GetPrSampleRate(), *h.GetPrDecimationFactor()) &&
            h.GetPrRecordLengthDigital()->Get() ==
                WholeSamples(time, *h.GetPrSampleRateDigital(), *h.GetPrDecimationFactorDigital()),
        "record has all samples of the time");
    findings.Check(std::fabs(points * resolution - time) <= resolution + tiny,
                   "points fill the time");
    findings.Check(points >= 1250, "trace has points enough");
    // Half values round up for two lengths; all others are cut.
    findings.Check(std::fabs(points - record * factor) <= factor + 1.0,
                   "points are the interpolated record");
    findings.Check(std::fabs(static_cast<double>(h.GetPrDecimationFactorAnalogEffective()->Get()) *
                                 h.GetPrAcquisitionSampleRate()->Get() -
                             5e9) <= 1e-3,
                   "effective decimation times rate is 5 GSa/s");
    findings.Check(h.GetPrPPLength()->Get() > points,
                   "settling samples are part of the trace in memory");
    const double offset = position - left;
    const double nominal = h.GetPrReferencePoint()->Get() * time / 100.0;
    findings.Check(std::fabs(offset - nominal) <= 0.5 * resolution + tiny,
                   "reference point on the screen");
    findings.Check(std::fabs(h.GetPrRight()->Get() - left - time) <=
                       1e-9 * (time + std::fabs(left)),
                   "screen is as wide as the acquisition");
    findings.Check(std::fabs(h.GetPrHardwarePosition()->Get()) <=
                       h.GetPrHardwarePosition()->GetMax(),
                   "hardware position within its limits");
    findings.Check(h.GetPrHardwarePosition()->GetMax() <=
                       2147483647.0 * time / record * (1.0 + 1e-12),
                   "position fits the register");
    if (h.GetPrDSPMode()->Get() != eKW_ZEL_DSP_MODE_NORMAL)
    {
        findings.Check(h.GetPrRecordLength()->Get() == h.GetPrRecordLengthDigital()->Get() &&
                           points == h.GetPrPPLengthWithoutSettlingSamplesDigital()->Get() &&
                           resolution == h.GetPrResolutionPPDigital()->Get(),
                       "analog and digital agree in slow and roll mode");
        findings.Check(h.GetPrBlockSize()->Get() >= 1, "slow and roll mode have blocks");
    }
}

std::string Violations(const IKWFunctionHorizontal& h)
{
    CFindings findings;
    Check(h, findings);
    return findings.Text();
}
} // namespace

TEST_F(HorizontalGroup, SomeSettingBreaksTheAcquisition)
{
    root->EnableHistory(false);
    for (const char* const other : {"Vertical/Channel[1]/Enabled", "Vertical/Channel[2]/Enabled",
                                    "Vertical/Channel[3]/Enabled"})
    {
        ASSERT_EQ(Property(root, other)->SetText(QStringLiteral("OFF")), eKW_ACC_OK);
    }
    for (INT32 update = 0; update < 3; ++update)
    {
        h->GetPrWaveformUpdateMode()->SetAsInt(update);
        for (INT32 scale = 0; scale < 36; ++scale)
        {
            ASSERT_EQ(h->GetPrScaleGUI()->SetAsInt(scale), eKW_ACC_OK);
            EXPECT_EQ(h->GetPrScaleGUI()->GetAsInt(), scale);
            for (INT32 mode = 0; mode < 3; ++mode)
            {
                ASSERT_EQ(h->GetPrZELMode()->SetAsInt(mode), eKW_ACC_OK);
                for (INT32 combination = 0; combination < 5 * 3 * 3; ++combination)
                {
                    h->GetPrAcquisitionMode()->SetAsInt(combination / 9);
                    h->GetPrHistoryDepth()->SetAsInt(combination / 3 % 3);
                    h->GetPrPreselectedRecordLength()->SetAsInt(combination % 3);
                    ASSERT_EQ(Violations(*h), "")
                        << "update " << update << " scale " << scale << " mode " << mode
                        << " combination " << combination;
                }
            }
        }
    }
    EXPECT_EQ(reports.List(), QStringList());
}

namespace
{
const t_Rule kHorizontalRules[] = {
    {"RollComesTooEarly", "Horizontal/WaveformUpdateMode = ROLL", ".Scale = 0.05",
     ".DSPMode = NORMAL; .BlockSize = 0"},
    {"RollComesTooLate", "Horizontal/WaveformUpdateMode = ROLL", ".Scale = 0.1",
     ".DSPMode = ROLL; .BlockSize = 6250"},
    {"PartialIsNotSlow", "Horizontal/WaveformUpdateMode = PARTIAL", ".Scale = 0.1",
     ".DSPMode = SLOW; .BlockSize = 6250"},
    {"FullIsSlow", "Horizontal/WaveformUpdateMode = FULL", ".Scale = 500", ".DSPMode = NORMAL"},
    {"ForcedFastModeRolls", "Horizontal/WaveformUpdateMode = ROLL; .Scale = 500",
     ".ForceDspFastMode = ON", ".DSPMode = NORMAL"},
    {"ModeIsAChoice", "Horizontal/WaveformUpdateMode = ROLL; .Scale = 0.1", ".DSPMode = NORMAL",
     ".DSPMode = ROLL", eKW_ACC_WARNING},
    {"LogicTakesPeaks", "Horizontal/Scale = 0.001", ".AcquisitionMode = PEAK",
     ".DecimationFactor = 200; .RecordLength = 62500; .DecimationFactorDigital = 100; "
     ".RecordLengthDigital = 125000"},
    {"TracesShareNoMemoryForEvents", "", "Horizontal/HistoryDepth = 5000",
     ".MaxNumOfSerialBusEvents = 200"},
    {"AveragesAreNoPowerOfTwo", "", "Horizontal/NumberOfAveragesGUI = AVG_64",
     ".NumberOfAverages = 64"},
    {"AveragesHaveNoEnd", "", "Horizontal/NumberOfAveragesGUI = AVG_8192",
     ".NumberOfAverages = 8192"},
    {"StepIsAboveTheAverages", "", "Horizontal/NumberOfAverages = 100",
     ".NumberOfAveragesGUI = AVG_64"},
    {"AveragesOfAStepShowAsTheOneBelow", "", "Horizontal/NumberOfAverages = 64",
     ".NumberOfAveragesGUI = AVG_64"},
    {"StandingStepKeepsTheAverages", "Horizontal/NumberOfAverages = 100",
     ".NumberOfAveragesGUI = AVG_64", ".NumberOfAverages = 64"},
    {"AcquisitionTimeLeavesTheScale", "", "Horizontal/AcquisitionTime = 0.001",
     ".Scale = 1e-04; .ScaleGUI = US_100"},
    {"AcquisitionTimeIsCutOff", "", "Horizontal/AcquisitionTime = 0.003",
     ".Scale = 5e-04; .AcquisitionTime = 0.005", eKW_ACC_WARNING},
    {"ScaleIsOffTheList", "", "Horizontal/Scale = 3e-4", ".Scale = 1e-07",
     eKW_ACC_NOT_IN_VALUE_LIST},
    {"UnlistedReferencePointIsSilent", "", "Horizontal/ReferencePoint = 30",
     ".ReferencePointGUI = MIDDLE; .Left = -3e-07", eKW_ACC_OK,
     "The reference point 30is not in the arrray with the predefined values."},
    {"StandingReferencePointIsNoChoice", "Horizontal/ReferencePoint = 30",
     ".ReferencePointGUI = MIDDLE", ".ReferencePoint = 50", eKW_ACC_OK,
     "The reference point 30is not in the arrray with the predefined values."},
    {"ReferencePointIsNotComputed", "", "Horizontal/ReferencePointGUI = LEFT",
     ".ReferencePoint = 10; .Left = -1e-07; .PreTriggerSamplesWithSettlingSamples = 189"},
    {"PositionLeavesTheRegister", "Horizontal/Scale = 500; .Position = 5000", ".Scale = 1e-09",
     ".Position.6 = 1.65191; .HardwarePosition.6 = 1.65191", eKW_ACC_OK,
     "The required horizontal position 5000 is greater than what the register dimensions allow "
     "(1.65191)for acq. time :1e-08"},
    {"PositionDoesNotComeBack", "Horizontal/Scale = 500; .Position = 5000; .Scale = 1e-09",
     ".Scale = 500", ".Position = 5000; .Left.min = -15000", eKW_ACC_OK,
     "The required horizontal position 5000 is greater than what the register dimensions allow "
     "(1.65191)for acq. time :1e-08"},
    {"ConverterRunsAtAnotherRate",
     "FFT/State = ON; Vertical/Channel[1]/Enabled = OFF; ..Channel[2]/Enabled = OFF; "
     "..Channel[3]/Enabled = OFF; Horizontal/ZELMode = ZEL_C",
     "Spectrum/HorizontalSpan = 1e6",
     "Horizontal/ZELMode = ZEL_A; .SampleRate = 1.25e+09; "
     "Setup/Selfalignment/ADConverter/ADCModeResult = FOUR_CHANNELS"},
    {"NeededModeIsLeft",
     "FFT/State = ON; Vertical/Channel[1]/Enabled = OFF; ..Channel[2]/Enabled = OFF; "
     "Spectrum/HorizontalSpan = 1e6",
     "Horizontal/ZELMode = ZEL_B", ".ZELMode = ZEL_A; .ZELMode.values = ZEL_A",
     eKW_ACC_NOT_ENABLED},
    {"ModeDropsChannels", "Vertical/Channel[1]/Enabled = OFF", "Horizontal/ZELMode = ZEL_B",
     ".ZELMode = ZEL_A; Vertical/AnalogSignalStreams/DroppedChannels = ZEL_B: C4, ZEL_C: C3 C4",
     eKW_ACC_NOT_ENABLED},
};
} // namespace

INSTANTIATE_TEST_SUITE_P(Horizontal, Rules, testing::ValuesIn(kHorizontalRules), Rules::Name);

namespace
{
/** Records which steps ran; a step that other steps call shows once more. */
class CRecordingHorizontal final : public CPgHorizontal
{
public:
    std::string steps;

protected:
    void RunRecalculationChain() override { Ran('C'), CPgHorizontal::RunRecalculationChain(); }
    void UpdateDSPMode() override { Ran('d'), CPgHorizontal::UpdateDSPMode(); }
    void CalculateSamplingRates() override { Ran('s'), CPgHorizontal::CalculateSamplingRates(); }
    void CalculateAcquisitionTime() override
    {
        Ran('t'), CPgHorizontal::CalculateAcquisitionTime();
    }
    void UpdateDigitalSampleRate() override { Ran('i'), CPgHorizontal::UpdateDigitalSampleRate(); }
    void CalculateBasicHorizontalSettings() override
    {
        Ran('b'), CPgHorizontal::CalculateBasicHorizontalSettings();
    }
    void CalculateHorizontalPositionLimits() override
    {
        Ran('l'), CPgHorizontal::CalculateHorizontalPositionLimits();
    }
    void CalculateAcquisitionSamplingRates() override
    {
        Ran('a'), CPgHorizontal::CalculateAcquisitionSamplingRates();
    }
    void CalculateHorizontalBoundaries() override
    {
        Ran('r'), CPgHorizontal::CalculateHorizontalBoundaries();
    }
    void CalculateHorizontalScale() override
    {
        Ran('h'), CPgHorizontal::CalculateHorizontalScale();
    }
    void CalculateScaleGui() override { Ran('g'), CPgHorizontal::CalculateScaleGui(); }
    void SetScaleFromGui() override { Ran('G'), CPgHorizontal::SetScaleFromGui(); }
    void CalculateReferencePointGUI() override
    {
        Ran('p'), CPgHorizontal::CalculateReferencePointGUI();
    }
    void SetReferencePointFromGui() override
    {
        Ran('P'), CPgHorizontal::SetReferencePointFromGui();
    }
    void UpdateHardwarePosition() override { Ran('w'), CPgHorizontal::UpdateHardwarePosition(); }
    void UpdateAveraging() override { Ran('v'), CPgHorizontal::UpdateAveraging(); }
    void SetAveragesFromGui() override { Ran('V'), CPgHorizontal::SetAveragesFromGui(); }
    void CalculateMaxNumberOfBusEvents() override
    {
        Ran('m'), CPgHorizontal::CalculateMaxNumberOfBusEvents();
    }
    void UpdateClosing() override { Ran('.'), CPgHorizontal::UpdateClosing(); }

private:
    void Ran(char step) { steps += step; }
};

/** The recording group where the timebase stands, in a root of its own. */
struct t_Recording
{
    t_Recording()
    {
        root.AddPropGroupToList(group, QStringLiteral("Horizontal"));
        root.OnTreeCreated();
        group->UpdateGroup();
        group->steps.clear();
    }
    CDbPropBase& At(const char* name) const
    {
        return *group->FindProperty(QString::fromLatin1(name));
    }

    CReports reports;
    CDbPgRoot root;
    CRecordingHorizontal* const group = new CRecordingHorizontal;
};

// The position limits end by clamping the hardware's position, which shows as 'w'.
constexpr char kChain[] = "Cdstiblwar.";
} // namespace

TEST(HorizontalDispatch, RunsOtherStepsOrInAnotherOrder)
{
    const struct
    {
        const char* property;
        const char* text;
        const char* steps;
    } rows[] = {{"ScaleGUI", "MS_1", "GCdstiblwar."},
                {"AcquisitionTime", "0.001", "hgCdstiblwar."},
                {"ReferencePoint", "10", "plwr."},
                {"ReferencePointGUI", "LEFT", "Plwr."},
                {"Position", "1e-06", "wr."},
                {"NumberOfAverages", "4", "v."},
                {"NumberOfAveragesGUI", "AVG_8", "V."},
                {"HistoryDepth", "1000", "mCdstiblwar."},
                {"DSPMode", "ROLL", kChain},
                {"WaveformUpdateMode", "ROLL", kChain},
                {"ForceDspFastMode", "ON", kChain},
                {"Scale", "0.001", "gCdstiblwar."},
                {"AcquisitionMode", "PEAK", kChain},
                {"ZELMode", "ZEL_B", kChain}};
    for (const auto& [property, text, steps] : rows)
    {
        const t_Recording h;
        ASSERT_LE(h.At(property).SetText(QString::fromLatin1(text)), 1U) << property;
        EXPECT_EQ(h.group->steps, steps) << property;
    }
}

namespace
{
/** Reaches the store of an enumeration, past the check that keeps illegal values out. */
struct t_OpenEnumeration : CDbPropEnumIntAccess
{
    static void Force(CDbPropEnumIntAccess& property, INT64 value)
    {
        constexpr auto store = &t_OpenEnumeration::Store;
        (property.*store)(value, eWRITEKIND::Internal);
    }
};
} // namespace

TEST(HorizontalIllegal, IsReportedOtherwiseOrEndsTheUpdate)
{
    const struct
    {
        void (*spoil)(CPgHorizontal&);
        const char* property;
        INT64 value;
        const char* report;
        const char* steps;
    } rows[] = {
        {[](CPgHorizontal& h) {
             h.GetPrScale()->DeclareValueList({1e-9, 2e-9, 5e-9, 1e-8, 2e-8, 5e-8, 1e-7, 2e-7});
         },
         "ScaleGUI", 8, "This enum entry 8is not in the ValueList of m_pScale", "GCdstiblwar."},
        {[](CPgHorizontal&) {}, "ScaleGUI", -1,
         "This enum entry -1is not in the ValueList of m_pScale", "GCdstiblwar."},
        {[](CPgHorizontal& h) {
             h.GetPrScale()->DeclareValueList({1e-9, 2e-9, 5e-9, QStringLiteral("fast")});
         },
         "ScaleGUI", 3, "no double in ValueList of m_pScale", "GCdstiblwar."},
        {[](CPgHorizontal&) {}, "ReferencePointGUI", 3,
         "This enum entry 3is not in the map with the predefined values.", "Plwr."}};
    for (const auto& [spoil, name, value, report, steps] : rows)
    {
        const t_Recording h;
        spoil(*h.group);
        h.group->steps.clear();
        const double scale = h.group->GetPrScale()->Get();
        const double reference = h.group->GetPrReferencePoint()->Get();
        auto& property = dynamic_cast<CDbPropEnumIntAccess&>(h.At(name));
        t_OpenEnumeration::Force(property, value);
        h.group->RunRows(eCAUSE::On | eCAUSE::OnAny, property, &property);
        EXPECT_EQ(h.reports.List(), QStringList{QString::fromLatin1(report)});
        EXPECT_EQ(h.group->steps, steps);
        EXPECT_EQ(h.group->GetPrScale()->Get(), scale);
        EXPECT_EQ(h.group->GetPrReferencePoint()->Get(), reference);
    }
}

TEST(HorizontalMismatch, SlowModeHidesThatThePathsDisagree)
{
    /** Logic inputs whose clock no decimation brings to the rate of the analog path. */
    class COddClock final : public CPgHorizontal
    {
        void UpdateDigitalSampleRate() override { m_pSampleRateDigital->DbSet(1.30005e9); }
    };
    const CReports reports;
    CDbPgRoot root;
    auto* const group = new COddClock;
    root.AddPropGroupToList(group, QStringLiteral("Horizontal"));
    root.OnTreeCreated();
    ASSERT_EQ(group->GetPrWaveformUpdateMode()->Set(eKW_WAVEFORM_UPDATE_MODE_ROLL), eKW_ACC_OK);
    const auto before = reports.List().size();
    ASSERT_EQ(group->GetPrScale()->Set(0.1), eKW_ACC_OK);
    // 1 s: floor(1.30005e9 / 125000) = 10400 clocks a sample leave 125004.8 samples.
    EXPECT_EQ(reports.List().mid(before + 1),
              (QStringList{QStringLiteral("PPLength w/o settling samples mismatch in slow/roll "
                                          "mode: analog = 125000, digital = 125004"),
                           QStringLiteral("RecordLength mismatch in slow/roll mode: analog = "
                                          "125000, digital = 125004"),
                           QStringLiteral("ResolutionPP mismatch in slow/roll mode: analog = "
                                          "8e-06, digital = 7.99969e-06")}));
    EXPECT_EQ(group->GetPrPPLength()->Get(), 125000u + 64 + 64) << "the update went on";
    EXPECT_NEAR(group->GetPrLeft()->Get(), -0.5, 1e-12);
}

INSTANTIATE_TEST_SUITE_P(Horizontal, Walks,
                         testing::Values(t_Walk{"", "Horizontal",
                                                [](const CRuleTree& tree, CFindings& findings)
                                                { Check(*tree.root->GetPgHorizontal(), findings); },
                                                10, "reference point|horizontal position"}));
