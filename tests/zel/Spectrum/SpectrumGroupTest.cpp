// SPDX-License-Identifier: MIT
#include "IKWFunctionControl.h"
#include "IKWFunctionHorizontal.h"
#include "IKWFunctionSMMode.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperDDC.h"
#include "KWEnumerationsAcquisition.h"
#include "KWEnumerationsMathematics.h"
#include "KWEnumerationsOnOff.h"
#include "KWEnumerationsReadings.h"
#include "KWEnumerationsSpectrum.h"
#include "KWSettingsFile.h"
#include "Root/PgZEL.h"
#include "Spectrum/PgFFT.h"
#include "Spectrum/PgSpectrum.h"
#include "SpectrumTree.h"
#include "Timebase/PgHorizontal.h"
#include "zel/RuleTree.h"

#include <QFile>
#include <QTemporaryDir>
#include <cmath>

TEST_F(SpectrumGroup, FreshTreeIsInconsistent)
{
    EXPECT_EQ(SpectrumViolations(*this), "");
    EXPECT_EQ(reports.List(), QStringList());
    EXPECT_EQ(s->GetPrRBW()->Get(), 6.25e6);
    EXPECT_EQ(fft->GetPrFFTSize()->Get(), 2048U);
}

struct t_BandwidthCase
{
    double span;
    INT32 ratio;
    double rbw;
    UINT32 size;
};

class SpectrumBandwidth : public testing::TestWithParam<t_BandwidthCase>, protected t_SpectrumTree
{
};

TEST_P(SpectrumBandwidth, DoesNotFollowTheSpan)
{
    const t_BandwidthCase& c = GetParam();
    ASSERT_LE(s->GetPrHorizontalSpan()->Set(c.span), 1U);
    ASSERT_LE(s->GetPrRBWRatio()->SetAsInt(c.ratio), 1U);
    EXPECT_DOUBLE_EQ(s->GetPrRBW()->Get(), c.rbw);
    EXPECT_EQ(fft->GetPrFFTSize()->Get(), c.size);
    EXPECT_EQ(reports.List(), QStringList());
}

// Hann: 7.64. 1 MHz decimates by 5 × 16 × ⌊825 / 80⌋ = 800 to 1.5625 MSa/s, 825 Hz by 1,000,000.
INSTANTIATE_TEST_SUITE_P(Cases, SpectrumBandwidth,
                         testing::Values(t_BandwidthCase{1e6, 3, 1e4, 2048},
                                         t_BandwidthCase{1e6, 6, 1e3, 16384},
                                         t_BandwidthCase{1e6, 0, 1e5, 128},
                                         t_BandwidthCase{825.0, 6, 0.825, 16384},
                                         t_BandwidthCase{6.25e8, 0, 6.25e7, 256}));

TEST_F(SpectrumGroup, ManualBandwidthIsNotBoundedOrEndsNoAutomatic)
{
    s->GetPrHorizontalSpan()->Set(1e7);
    ASSERT_EQ(s->GetPrRBW()->Set(s->GetPrRBW()->Get()), eKW_ACC_OK);
    EXPECT_EQ(s->GetPrAutoRBW()->Get(), eKW_ONOFF_OFF) << "what the automatic found was chosen";
    s->GetPrAutoRBW()->Set(eKW_ONOFF_ON);
    ASSERT_EQ(s->GetPrRBW()->Set(5e5), eKW_ACC_OK);
    EXPECT_EQ(s->GetPrAutoRBW()->Get(), eKW_ONOFF_OFF);
    s->GetPrHorizontalSpan()->Set(1e6);
    EXPECT_EQ(s->GetPrRBW()->Get(), 1e5);
    EXPECT_EQ(s->GetPrRBW()->Set(5e5), eKW_ACC_ABOVE_MAXIMUM);
    s->GetPrRBWRatio()->Set(eKW_RATIO_1_TO_1000);
    EXPECT_EQ(s->GetPrRBW()->Get(), 1e5) << "the ratio waits for the automatic";
    s->GetPrAutoRBW()->Set(eKW_ONOFF_ON);
    EXPECT_EQ(s->GetPrRBW()->Get(), 1e3);
}

TEST_F(SpectrumGroup, WindowFactorsAreThoseOfAnotherWindow)
{
    s->GetPrWindowType()->Set(eKW_WINDOW_TYPE_FLATTOP);
    EXPECT_EQ(s->GetPrWindowFactor()->Get(), 3.84);
    EXPECT_EQ(s->GetPrWindowLengthFactor()->Get(), 3.84);
    EXPECT_EQ(SpectrumViolations(*this), "");
}

TEST_F(SpectrumGroup, FullSpanIgnoresTheStopMaximum)
{
    CPgSpectrum* const node = KW_PeekZELRoot()->GetPgSpectrum();
    node->GetPrHorizontalStop()->SetMax(1e8);
    node->UpdateGroup();
    s->GetPrHorizontalSpan()->Set(1e6);
    s->GetPrHorizontalFullSpan()->Set();
    EXPECT_EQ(s->GetPrHorizontalCenter()->Get(), 5e7);
    EXPECT_EQ(s->GetPrHorizontalSpan()->Get(), 1e8);
    EXPECT_EQ(s->GetPrHorizontalSpan()->GetUserValue(), 1e8);
}

namespace
{
/** The report that a setting must give, or none, from the rules as they are told. */
QStringList ForcedSize(const t_SpectrumTree& t)
{
    const double adc = t.root->GetPgHorizontal()->GetPrSampleRate()->Get();
    const double wlf = t.s->GetPrWindowLengthFactor()->Get();
    const double rbw = t.s->GetPrRBW()->Get();
    const double decimation = t.ddc->GetPrSampleDezimationFactor()->Get();
    const double need = std::ceil(wlf * (adc / decimation) / rbw * (1.0 - 1e-15));
    if (t.s->GetPrMode()->GetAsInt() == 0 || need <= 65536.0)
    {
        return {};
    }
    // Only spans that the down-converter leaves alone can need more than the largest FFT.
    return {QStringLiteral("force fft size to 65536 Sa, but minimum required is %1 Sa (DDC is "
                           "off): fs_adc = 1.25e+09, rbw = %2, wlf = %3, fftsize >= wlf * fs_adc "
                           "/ rbw")
                .arg(need, 0, 'f', 0)
                .arg(rbw)
                .arg(wlf)};
}

/** Compares the down-converter's settings with the helpers'. */
void ExpectConverterFor(const IKWFunctionDDC& ddc, double center, double span)
{
    const auto rate = CZELDatabaseHelperDDC::CalculateDecimation(span);
    const auto nco = CZELDatabaseHelperDDC::CalculateNcoFrequency(center, rate.m_R_DDC);
    EXPECT_EQ(ddc.GetPrSpan()->Get(), span);
    EXPECT_EQ(ddc.GetPrCenter()->Get(), center);
    EXPECT_EQ(ddc.GetPrSampleDezimationFactor()->Get(), rate.m_R_DDC);
    EXPECT_EQ(ddc.GetPrFrequencyShift()->Get(), nco.m_CoarseFrequency + nco.m_FineFrequency);
    EXPECT_EQ(ddc.GetPrGain()->Get(), CZELDatabaseHelperDDC::CalculateGain(rate, nco).m_Gain_DDC);
    EXPECT_EQ(ddc.GetPrState()->GetAsInt(), rate.m_R_DDC > 1 ? 1 : 0);
}
} // namespace

TEST_F(SpectrumGroup, SomeSettingBreaksTheAnalysis)
{
    root->EnableHistory(false);
    CDice dice(20240607);
    int forced = 0;
    for (int i = 0; i < 2000; ++i)
    {
        s->GetPrMode()->SetAsInt(dice.Below(4) == 0 ? 0 : 1);
        s->GetPrWindowType()->SetAsInt(dice.Below(5));
        s->GetPrRBWRatio()->SetAsInt(dice.Below(7));
        const double span = dice.Logarithmic(825.0, 6.25e8);
        const double room = 6.25e8 - span;
        ASSERT_LE(s->GetPrHorizontalCenter()->SetUserValue(span / 2.0 + room * dice.Share()), 1U);
        const CReports last;
        ASSERT_LE(s->GetPrHorizontalSpan()->SetUserValue(span), 1U);
        ASSERT_EQ(SpectrumViolations(*this), "") << "setting " << i;
        if (s->GetPrMode()->GetAsInt() == 1)
        {
            ExpectConverterFor(*ddc, s->GetPrHorizontalCenter()->Get(),
                               s->GetPrHorizontalSpan()->Get());
            const QStringList expected = ForcedSize(*this);
            EXPECT_EQ(last.List(), expected) << "setting " << i;
            forced += static_cast<int>(expected.size());
        }
    }
    EXPECT_GT(forced, 20) << "the report was hardly tried";
}

TEST(SpectrumSize, ReportHasOtherWordsOrNumbers)
{
    struct t_Case
    {
        CPgSpectrum::t_FFTNeed need;
        UINT32 size;
        const char* text;
    };
    const t_Case cases[] = {
        {{1.25e9, 1, false, 7.64 * 1.25e9 / 65536.0, 7.64}, 65536, ""},
        {{1.25e9, 20, true, 3.84 * 6.25e7 / 4096.0, 3.84}, 4096, ""},
        {{1.25e9, 20, true, 1000.0, 7.64},
         65536,
         "force fft size to 65536 Sa, but minimum required is 477500 Sa (DDC is on): fs_ddc = "
         "6.25e+07, fs_adc = 1.25e+09, r_ddc = 20, rbw = 1000, wlf = 7.64, fftsize >= wlf * "
         "fs_ddc / rbw"},
        {{1.25e9, 1, true, 5e4, 3.84},
         65536,
         "force fft size to 65536 Sa, but minimum required is 96000 Sa (DDC is forced to off): "
         "fs_adc = 1.25e+09, rbw = 50000, wlf = 3.84, fftsize >= wlf * fs_adc / rbw"},
        {{5e9, 1, false, 1e5, 7.5},
         65536,
         "force fft size to 65536 Sa, but minimum required is 375000 Sa (DDC is off): fs_adc = "
         "5e+09, rbw = 100000, wlf = 7.5, fftsize >= wlf * fs_adc / rbw"},
    };
    for (const t_Case& c : cases)
    {
        const CReports reports;
        EXPECT_EQ(CPgSpectrum::GetFFTSize(c.need), c.size);
        EXPECT_EQ(reports.List().join(QLatin1Char('|')).toStdString(), c.text);
    }
}

TEST_F(SpectrumGroup, ConverterRateIsNotCheckedOrCheckedTooEarly)
{
    const auto horizontal = root->GetPgHorizontal();
    horizontal->GetPrZELMode()->Set(eKW_ZEL_MODE_ZEL_C);
    EXPECT_EQ(s->GetPrFFTSampleFrequency()->Get(), 5e9);
    s->GetPrHorizontalSpan()->Set(1e6);
    EXPECT_EQ(horizontal->GetPrZELMode()->Get(), eKW_ZEL_MODE_ZEL_A);
    EXPECT_EQ(SpectrumViolations(*this), "");
    const QString report =
        QStringLiteral("when DDC is used, adc sample rate must be 1.25e+09 Hz and not 2.5e+09");
    EXPECT_FALSE(reports.List().contains(report));
    // Something else than the timebase's own rules sets the rate.
    KW_PeekZELRoot()->GetPgHorizontal()->GetPrSampleRate()->DbSet(2.5e9);
    EXPECT_TRUE(reports.List().contains(report));
}

TEST_F(SpectrumGroup, BasicFFTFollowsTheSpan)
{
    ASSERT_EQ(s->GetPrMode()->Set(eKW_SPECTRUM_MODE_FFT), eKW_ACC_OK);
    EXPECT_EQ(fft->GetPrFFTSize()->Get(), 65536U);
    EXPECT_DOUBLE_EQ(s->GetPrRBW()->Get(), 7.64 * 1.25e9 / 65536.0);
    EXPECT_EQ(s->GetPrHorizontalSpan()->Set(1e6), eKW_ACC_WARNING);
    EXPECT_EQ(s->GetPrHorizontalCenter()->Set(1e8), eKW_ACC_WARNING);
    EXPECT_EQ(s->GetPrHorizontalStop()->Set(2e8), eKW_ACC_OK);
    const QString report = QStringLiteral("center/span was changed in basic fft");
    EXPECT_EQ(reports.List(), QStringList({report, report}));
    EXPECT_EQ(ddc->GetPrState()->Get(), eKW_ONOFF_OFF);
    EXPECT_EQ(ddc->GetPrSpan()->Get(), 6.25e8);
    // 500 kHz needs 19,100 samples: more than 8192.
    EXPECT_EQ(s->GetPrRBW()->Set(5e5), eKW_ACC_WARNING);
    EXPECT_EQ(s->GetPrFFTFrequencySpan()->Get(), eKW_FFT_FREQUENCY_SPAN_MEDIUM);
    EXPECT_EQ(s->GetPrRBW()->SetToMax(), eKW_ACC_OK);
    EXPECT_EQ(fft->GetPrFFTSize()->Get(), 8192U);
    root->GetPgHorizontal()->GetPrZELMode()->Set(eKW_ZEL_MODE_ZEL_C);
    EXPECT_DOUBLE_EQ(s->GetPrRBW()->Get(), 7.64 * 5e9 / 8192.0);
    EXPECT_EQ(SpectrumViolations(*this), "");
}

TEST_F(SpectrumGroup, EnteringLeavesTheInstrumentInAnotherMode)
{
    const auto mode = root->GetPgControl()->GetPgSMMode();
    const auto leave = [&mode]
    {
        mode->GetPrOperationMode()->Set(eKW_ZEL_OPERATION_MODE_METER);
        mode->GetPrSwitchMode()->Set();
        ASSERT_EQ(mode->GetPrActiveMode()->Get(), eKW_ZEL_OPERATION_MODE_METER);
    };
    const auto active = [&mode] { return mode->GetPrActiveMode()->Get(); };
    leave();
    fft->GetPrState()->Set(eKW_ONOFF_ON);
    EXPECT_EQ(mode->GetPrOperationMode()->Get(), eKW_ZEL_OPERATION_MODE_SCOPE_YT);
    EXPECT_EQ(active(), eKW_ZEL_OPERATION_MODE_SCOPE_YT);
    leave();
    fft->GetPrState()->Set(eKW_ONOFF_OFF);
    s->GetPrHorizontalSpan()->Set(1e6);
    EXPECT_EQ(active(), eKW_ZEL_OPERATION_MODE_METER) << "nobody entered";
    s->GetPrMode()->Set(eKW_SPECTRUM_MODE_FFT);
    EXPECT_EQ(active(), eKW_ZEL_OPERATION_MODE_SCOPE_YT);
}

TEST_F(SpectrumGroup, SpanChangeWritesSomethingTwice)
{
    const std::shared_ptr<IDbGroup> groups[] = {s->GetDbObject(), fft->GetDbObject(),
                                                ddc->GetDbObject(),
                                                root->GetPgHorizontal()->GetDbObject()};
    int total = 0;
    for (const double span : {1e6, 6.25e8})
    {
        for (const auto& group : groups)
        {
            s->GetPrHorizontalSpan()->Set(5e7);
            const auto old = Snapshot(group);
            long long was = 0;
            long long is = 0;
            group->HasChanged(was);
            ASSERT_EQ(s->GetPrHorizontalSpan()->Set(span), eKW_ACC_OK);
            group->HasChanged(is);
            const auto now = Snapshot(group);
            int moved = 0;
            for (std::size_t i = 0; i < old.size(); ++i)
            {
                // Path, value, minimum, maximum, step: every one that moved is one write.
                const QStringList a = old[i].split(QLatin1Char(';'));
                const QStringList b = now[i].split(QLatin1Char(';'));
                for (int part = 1; part <= 4; ++part)
                {
                    moved += a[part] != b[part] ? 1 : 0;
                }
                total += a[1] != b[1] && span == 1e6 ? 1 : 0;
            }
            EXPECT_EQ(is - was, moved) << group->GetPath().toStdString() << " " << span;
        }
    }
    EXPECT_EQ(total, 16) << "start, stop, span, RBW, rate; five of the FFT; six of the converter";
}

INSTANTIATE_TEST_SUITE_P(
    Spectrum, Walks,
    testing::Values(t_Walk{
        "", "Spectrum Spectrum FFT Horizontal",
        [](const CRuleTree&, CFindings& findings)
        {
            const std::string wrong = SpectrumViolations(t_SpectrumTree());
            findings.Check(wrong.empty(), wrong.c_str());
        },
        10,
        "only allowed for debugging|changed in basic fft|property (max|min) value|are equal|"
        "not applicable as trigger|force fft size|Average Length|reference point|register"}));

TEST_F(SpectrumGroup, EditedFileLeavesTheAxisBroken)
{
    const QTemporaryDir folder;
    const QString name = folder.filePath(QStringLiteral("part.xml"));
    ASSERT_EQ(root->Save(name), eKW_ACC_OK);
    QFile file(name);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    QByteArray text = file.readAll();
    file.close();
    // Someone edited the stop and nothing else.
    const int at = static_cast<int>(text.indexOf("\"HorizontalStop\""));
    ASSERT_GT(at, 0);
    const int value = static_cast<int>(text.indexOf("6.25e+08", at));
    ASSERT_GT(value, 0);
    text.replace(value, 8, "2.50e+08");
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
    file.close();
    ASSERT_EQ(KW_SealSettingsFile(name), eKW_ACC_OK);
    ASSERT_LE(root->Recall(name), 1U);
    EXPECT_EQ(s->GetPrHorizontalStop()->Get(), 2.5e8);
    EXPECT_EQ(s->GetPrHorizontalSpan()->Get(), 2.5e8);
    EXPECT_EQ(SpectrumViolations(*this), "");
}

TEST_F(SpectrumGroup, AverageIsCompleteTooEarlyOrOfAnyLength)
{
    ASSERT_EQ(fft->GetPrAverageLength()->Set(8), eKW_ACC_OK);
    fft->GetPrAveragesDone()->SetResult(7);
    EXPECT_EQ(s->GetPrAverageComplete()->Get(), eKW_ONOFF_OFF);
    fft->GetPrAveragesDone()->SetResult(8);
    EXPECT_EQ(s->GetPrAverageComplete()->Get(), eKW_ONOFF_ON);
    s->GetPrClippingAverage()->SetResult(eKW_ONOFF_ON);
    s->GetPrResetNextRun()->Set();
    EXPECT_EQ(s->GetPrAverageComplete()->Get(), eKW_ONOFF_OFF);
    EXPECT_EQ(s->GetPrClippingAverage()->Get(), eKW_ONOFF_OFF);
    EXPECT_EQ(fft->GetPrAveragesDone()->Get(), 0U);
    EXPECT_EQ(fft->GetPrAverageLength()->Set(100), eKW_ACC_WARNING);
    EXPECT_EQ(fft->GetPrAverageLength()->Get(), 64U);
    EXPECT_EQ(reports.List(), QStringList{QStringLiteral("Average Length is invalid")});
}

TEST_F(SpectrumGroup, ReportsHaveOtherTexts)
{
    EXPECT_EQ(CPgSpectrum::GetRatio(static_cast<KW_RATIO>(7)), 100.0);
    const auto linear = [](double) { return 1.0; };
    EXPECT_EQ(
        CPgSpectrum::GetMagnitudeRange({static_cast<KW_SCALING_TYPE>(5), 100, 0}, linear).stop,
        0.0);
    KW_PeekZELRoot()->GetPgSpectrum()->GetPrRBW()->SetResolution(1000.0);
    s->GetPrHorizontalSpan()->Set(1.2345e7);
    EXPECT_EQ(
        reports.List(),
        QStringList({QStringLiteral("unknown ratio detected"),
                     QStringLiteral("invalid vertical scale detected: vscale = 5"),
                     QStringLiteral("Warning (1) by database access: m_pRBW->DbSet(KWMath::Bound("
                                    "m_pRBW->GetMin(), rbw, m_pRBW->GetMax()))")}));
}
