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

TEST_F(HorizontalGroup, FreshTreeHasOtherDefaults)
{
    EXPECT_EQ(h->GetPrScaleGUI()->GetAsInt(), 6);
    EXPECT_EQ(h->GetPrReferencePointGUI()->Get(), eKW_REF_POINT_POSITION_MIDDLE);
    EXPECT_EQ(h->GetPrDSPMode()->GetAsInt(), 2);
    const auto group = h->GetDbObject();
    for (INT32 i = 0; i < group->GetPropertyCount(); ++i)
    {
        const auto p = group->GetProperty(i);
        const auto e = std::dynamic_pointer_cast<IKWEnumPropertyBase>(p->GetHandle());
        const QString name = p->GetNodeName();
        if (e && name != QLatin1String("ScaleGUI") && name != QLatin1String("ReferencePointGUI") &&
            name != QLatin1String("DSPMode"))
        {
            EXPECT_EQ(e->GetAsInt(), 0) << name.toStdString();
        }
    }
    EXPECT_EQ(group->GetPropertyCount(), 43);
    EXPECT_EQ(Violations(*h), "");
}

TEST_F(HorizontalGroup, SomeSettingBreaksTheAcquisition)
{
    root->EnableHistory(false);
    for (INT32 update = 0; update < 3; ++update)
    {
        h->GetPrWaveformUpdateMode()->SetAsInt(update);
        for (INT32 scale = 0; scale < 36; ++scale)
        {
            ASSERT_EQ(h->GetPrScaleGUI()->SetAsInt(scale), eKW_ACC_OK);
            EXPECT_EQ(h->GetPrScaleGUI()->GetAsInt(), scale);
            for (INT32 mode = 0; mode < 3; ++mode)
            {
                h->GetPrZELMode()->SetAsInt(mode);
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

struct t_ModeCase
{
    INT32 scale;
    KW_WAVEFORM_UPDATE_MODE update;
    KW_ONOFF force;
    KW_ZEL_DSP_MODE mode;
};

class HorizontalMode : public testing::TestWithParam<t_ModeCase>
{
};

TEST_P(HorizontalMode, SlowOrRollComesTooEarlyOrNever)
{
    const t_ModeCase& c = GetParam();
    const auto root = GetZELRoot();
    const auto h = root->GetPgHorizontal();
    h->GetPrScaleGUI()->SetAsInt(c.scale);
    h->GetPrWaveformUpdateMode()->Set(c.update);
    h->GetPrForceDspFastMode()->Set(c.force);
    EXPECT_EQ(h->GetPrDSPMode()->Get(), c.mode);
    EXPECT_EQ(h->GetPrDSPMode()->SetAsInt((c.mode + 1) % 3), eKW_ACC_WARNING);
    EXPECT_EQ(h->GetPrDSPMode()->Get(), c.mode);
}

// Index 24 is 100 ms/div, an acquisition of exactly one second.
INSTANTIATE_TEST_SUITE_P(
    Cases, HorizontalMode,
    testing::Values(
        t_ModeCase{23, eKW_WAVEFORM_UPDATE_MODE_ROLL, eKW_ONOFF_OFF, eKW_ZEL_DSP_MODE_NORMAL},
        t_ModeCase{24, eKW_WAVEFORM_UPDATE_MODE_ROLL, eKW_ONOFF_OFF, eKW_ZEL_DSP_MODE_ROLL},
        t_ModeCase{24, eKW_WAVEFORM_UPDATE_MODE_PARTIAL, eKW_ONOFF_OFF, eKW_ZEL_DSP_MODE_SLOW},
        t_ModeCase{35, eKW_WAVEFORM_UPDATE_MODE_FULL, eKW_ONOFF_OFF, eKW_ZEL_DSP_MODE_NORMAL},
        t_ModeCase{35, eKW_WAVEFORM_UPDATE_MODE_ROLL, eKW_ONOFF_ON, eKW_ZEL_DSP_MODE_NORMAL}));

TEST_F(HorizontalGroup, AveragesAreNoPowerOfTwoOrBoundless)
{
    for (const auto& [gui, averages] : {std::pair{0, 2U}, {1, 4U}, {5, 64U}, {12, 8192U}})
    {
        h->GetPrNumberOfAveragesGUI()->SetAsInt(gui == 0 ? 1 : 0);
        ASSERT_LE(h->GetPrNumberOfAveragesGUI()->SetAsInt(gui), 1U);
        EXPECT_EQ(h->GetPrNumberOfAverages()->Get(), averages) << gui;
    }
    h->GetPrNumberOfAverages()->Set(100);
    EXPECT_EQ(h->GetPrNumberOfAveragesGUI()->GetAsInt(), 5) << "64 is the step below 100";
    h->GetPrNumberOfAveragesGUI()->SetAsInt(5);
    EXPECT_EQ(h->GetPrNumberOfAverages()->Get(), 64U) << "what stands was chosen";
}

TEST_F(HorizontalGroup, AcquisitionTimeLeavesTheScaleBehind)
{
    ASSERT_LE(h->GetPrAcquisitionTime()->Set(1e-3), 1U);
    EXPECT_EQ(h->GetPrScale()->Get(), 1e-4);
    ASSERT_EQ(h->GetPrAcquisitionTime()->Set(3e-3), eKW_ACC_WARNING);
    EXPECT_EQ(h->GetPrScale()->Get(), 5e-4) << "the next slower scale shows all of it";
    EXPECT_EQ(h->GetPrAcquisitionTime()->Get(), 5e-3);
    ASSERT_LE(h->GetPrAcquisitionTime()->GetDbObject()->IncDec(-2), 1U);
    EXPECT_EQ(h->GetPrScale()->Get(), 1e-4) << "a knob moves it by scales";
    EXPECT_EQ(h->GetPrScale()->Set(3e-4), eKW_ACC_NOT_IN_VALUE_LIST);
}

TEST_F(HorizontalGroup, UnlistedReferencePointIsSilentOrNotComputed)
{
    ASSERT_EQ(h->GetPrReferencePoint()->Set(30.0), eKW_ACC_OK);
    EXPECT_EQ(reports.List(),
              QStringList{QStringLiteral(
                  "The reference point 30is not in the arrray with the predefined values.")});
    EXPECT_EQ(h->GetPrReferencePointGUI()->Get(), eKW_REF_POINT_POSITION_MIDDLE);
    EXPECT_NEAR(h->GetPrLeft()->Get(), -3e-7, 1e-18);
    ASSERT_EQ(h->GetPrReferencePointGUI()->Set(eKW_REF_POINT_POSITION_MIDDLE), eKW_ACC_OK);
    EXPECT_EQ(h->GetPrReferencePoint()->Get(), 50.0) << "what stands was chosen";
    ASSERT_EQ(h->GetPrReferencePointGUI()->Set(eKW_REF_POINT_POSITION_LEFT), eKW_ACC_OK);
    EXPECT_EQ(h->GetPrReferencePoint()->Get(), 10.0);
    EXPECT_NEAR(h->GetPrLeft()->Get(), -1e-7, 1e-18);
}

TEST_F(HorizontalGroup, PositionBeyondTheRegisterIsLostOrKept)
{
    h->GetPrScale()->Set(500.0);
    ASSERT_EQ(h->GetPrPosition()->Set(5000.0), eKW_ACC_OK);
    h->GetPrScale()->Set(1e-9);
    const double limit = h->GetPrPosition()->GetMax();
    EXPECT_EQ(h->GetPrPosition()->Get(), limit);
    EXPECT_EQ(h->GetPrPosition()->GetUserValue(), 5000.0);
    ASSERT_EQ(reports.List().size(), 1);
    EXPECT_EQ(reports.List()[0],
              QStringLiteral("The required horizontal position 5000 is greater than what the "
                             "register dimensions allow (1.65191)for acq. time :1e-08"));
    h->GetPrScale()->Set(500.0);
    EXPECT_EQ(h->GetPrPosition()->Get(), 5000.0) << "the wish comes back";
}

TEST_F(HorizontalGroup, DownConverterRunsAtAnotherRate)
{
    h->GetPrZELMode()->Set(eKW_ZEL_MODE_ZEL_C);
    ASSERT_LE(root->GetPgDDC()->GetPrState()->Set(eKW_ONOFF_ON), 1U);
    EXPECT_EQ(h->GetPrZELMode()->Get(), eKW_ZEL_MODE_ZEL_A);
    EXPECT_EQ(h->GetPrSampleRate()->Get(), 1.25e9);
    EXPECT_EQ(h->GetPrZELMode()->Set(eKW_ZEL_MODE_ZEL_B), eKW_ACC_WARNING);
    EXPECT_EQ(h->GetPrZELMode()->Get(), eKW_ZEL_MODE_ZEL_A);
    EXPECT_EQ(Property(root, "Setup/Selfalignment/ADConverter/ADCModeResult")->GetText(),
              QStringLiteral("FOUR_CHANNELS"))
        << "who depends on the mode sees the one that is required";
    EXPECT_EQ(reports.List(), QStringList());
}

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

struct t_DispatchCase
{
    const char* property;
    const char* text;
    const char* steps;
};

// The position limits end by clamping the hardware's position, which shows as 'w'.
constexpr char kChain[] = "Cdstiblwar.";
} // namespace

class HorizontalDispatch : public testing::TestWithParam<t_DispatchCase>
{
};

TEST_P(HorizontalDispatch, RunsOtherStepsOrInAnotherOrder)
{
    // A root of its own: the recording group stands where the timebase stands.
    CDbPgRoot root;
    auto* const group = new CRecordingHorizontal;
    root.AddPropGroupToList(group, QStringLiteral("Horizontal"));
    root.OnTreeCreated();
    group->UpdateGroup();
    group->steps.clear();
    CDbPropBase* const property = group->FindProperty(QString::fromLatin1(GetParam().property));
    ASSERT_NE(property, nullptr);
    ASSERT_LE(property->SetText(QString::fromLatin1(GetParam().text)), 1U);
    EXPECT_EQ(group->steps, GetParam().steps);
}

INSTANTIATE_TEST_SUITE_P(Rows, HorizontalDispatch,
                         testing::Values(t_DispatchCase{"ScaleGUI", "MS_1", "GCdstiblwar."},
                                         t_DispatchCase{"AcquisitionTime", "0.001",
                                                        "hgCdstiblwar."},
                                         t_DispatchCase{"ReferencePoint", "10", "plwr."},
                                         t_DispatchCase{"ReferencePointGUI", "LEFT", "Plwr."},
                                         t_DispatchCase{"Position", "1e-06", "wr."},
                                         t_DispatchCase{"NumberOfAverages", "4", "v."},
                                         t_DispatchCase{"NumberOfAveragesGUI", "AVG_8", "V."},
                                         t_DispatchCase{"HistoryDepth", "1000", "mCdstiblwar."},
                                         t_DispatchCase{"DSPMode", "ROLL", kChain},
                                         t_DispatchCase{"WaveformUpdateMode", "ROLL", kChain},
                                         t_DispatchCase{"ForceDspFastMode", "ON", kChain},
                                         t_DispatchCase{"Scale", "0.001", "gCdstiblwar."},
                                         t_DispatchCase{"AcquisitionMode", "PEAK", kChain},
                                         t_DispatchCase{"ZELMode", "ZEL_B", kChain}),
                         [](const auto& test) { return std::string(test.param.property); });

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

struct t_IllegalCase
{
    const char* name;
    std::function<void(CPgHorizontal&)> spoil;
    const char* property;
    INT64 value;
    const char* report;
    const char* steps;
};
} // namespace

class HorizontalIllegal : public testing::TestWithParam<t_IllegalCase>
{
};

TEST_P(HorizontalIllegal, IsReportedOtherwiseOrEndsTheUpdate)
{
    const CReports reports;
    CDbPgRoot root;
    auto* const group = new CRecordingHorizontal;
    root.AddPropGroupToList(group, QStringLiteral("Horizontal"));
    root.OnTreeCreated();
    group->UpdateGroup();
    GetParam().spoil(*group);
    group->steps.clear();
    const double scale = group->GetPrScale()->Get();
    const double reference = group->GetPrReferencePoint()->Get();
    auto* const property = dynamic_cast<CDbPropEnumIntAccess*>(
        group->FindProperty(QString::fromLatin1(GetParam().property)));
    ASSERT_NE(property, nullptr);
    t_OpenEnumeration::Force(*property, GetParam().value);
    group->RunRows(eCAUSE::On | eCAUSE::OnAny, *property, property);
    EXPECT_EQ(reports.List(), QStringList{QString::fromLatin1(GetParam().report)});
    EXPECT_EQ(group->steps, GetParam().steps);
    EXPECT_EQ(group->GetPrScale()->Get(), scale);
    EXPECT_EQ(group->GetPrReferencePoint()->Get(), reference);
}

INSTANTIATE_TEST_SUITE_P(
    Entries, HorizontalIllegal,
    testing::Values(
        t_IllegalCase{
            "ScaleGUIPastTheList",
            [](CPgHorizontal& h) {
                h.GetPrScale()->DeclareValueList({1e-9, 2e-9, 5e-9, 1e-8, 2e-8, 5e-8, 1e-7, 2e-7});
            },
            "ScaleGUI", 8, "This enum entry 8is not in the ValueList of m_pScale", "GCdstiblwar."},
        t_IllegalCase{"ScaleGUINegative", [](CPgHorizontal&) {}, "ScaleGUI", -1,
                      "This enum entry -1is not in the ValueList of m_pScale", "GCdstiblwar."},
        t_IllegalCase{
            "EntryIsNoNumber",
            [](CPgHorizontal& h) {
                h.GetPrScale()->DeclareValueList({1e-9, 2e-9, 5e-9, QStringLiteral("fast")});
            },
            "ScaleGUI", 3, "no double in ValueList of m_pScale", "GCdstiblwar."},
        t_IllegalCase{"ReferencePointGUI", [](CPgHorizontal&) {}, "ReferencePointGUI", 3,
                      "This enum entry 3is not in the map with the predefined values.", "Plwr."}),
    [](const auto& test) { return std::string(test.param.name); });

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
