// SPDX-License-Identifier: MIT
#include "IKWFunctionHorizontal.h"
#include "KWEnumerationsMathematics.h"
#include "KWEnumerationsOnOff.h"
#include "KWEnumerationsReadings.h"
#include "KWEnumerationsSpectrum.h"
#include "Root/PgZEL.h"
#include "Spectrum/PgDDC.h"
#include "Spectrum/PgSpectrum.h"
#include "SpectrumTree.h"
#include "Timebase/PgHorizontal.h"

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

TEST_F(SpectrumGroup, SpanChangeWritesSomethingTwice)
{
    for (const auto& group : {s->GetDbObject(), fft->GetDbObject(), ddc->GetDbObject(),
                              root->GetPgHorizontal()->GetDbObject()})
    {
        for (const double span : {1e6, 6.25e8})
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
            }
            EXPECT_EQ(is - was, moved) << group->GetPath().toStdString() << " " << span;
        }
    }
}

TEST_F(SpectrumGroup, EditedFileLeavesTheAxisBroken)
{
    QByteArray text = Saved(root);
    // Someone edited the stop and nothing else.
    const auto value = text.indexOf("6.25e+08", text.indexOf("\"HorizontalStop\""));
    ASSERT_GT(value, 0);
    text.replace(value, 8, "2.50e+08");
    ASSERT_LE(RecallText(root, text), 1U);
    EXPECT_EQ(s->GetPrHorizontalStop()->Get(), 2.5e8);
    EXPECT_EQ(s->GetPrHorizontalSpan()->Get(), 2.5e8);
    EXPECT_EQ(SpectrumViolations(*this), "");
}

TEST_F(SpectrumGroup, DebuggingOfTheConverterIsSilentOrHalf)
{
    const QString text =
        QStringLiteral("DDC Center/Span was directly changed to Center = 12500 kHz "
                       "and Span = %1 kHz (that is only allowed for debugging "
                       "purpose)");
    fft->GetPrState()->Set(eKW_ONOFF_ON);
    ddc->GetPrState()->Set(eKW_ONOFF_ON);
    EXPECT_EQ(ddc->GetPrGainCorrection()->Get(), 1.0) << "nothing is mixed";
    s->GetPrHorizontalSpan()->Set(1e6);
    s->GetPrHorizontalCenter()->Set(1.25e7);
    EXPECT_EQ(reports.List(), QStringList()) << "the spectrum's own changes are no debugging";
    ASSERT_EQ(ddc->GetPrSpan()->Set(1e5), eKW_ACC_OK);
    EXPECT_EQ(ddc->GetPrSampleDezimationFactor()->Get(), 8240U);
    EXPECT_NEAR(ddc->GetPrFrequencyShift()->Get(), 1.25e7, 0.03);
    EXPECT_NEAR(fft->GetPrSampleFrequency()->Get(), 1.25e9 / 8240, 1e-6) << "the FFT follows";
    EXPECT_EQ(reports.List(), QStringList(text.arg(100)));
    s->GetPrHorizontalSpan()->Set(3e6);
    EXPECT_EQ(SpectrumViolations(*this), "") << "the next change of the axis ends it";
    KW_PeekZELRoot()->GetPgDDC()->Init(-5.0, 1.0);
    EXPECT_EQ(ddc->GetPrSpan()->Get(), 825.0);
    EXPECT_EQ(ddc->GetPrCenter()->Get(), 0.0);
}

TEST_F(SpectrumGroup, ReportsHaveOtherTexts)
{
    EXPECT_EQ(CPgSpectrum::GetRatio(static_cast<KW_RATIO>(7)), 100.0);
    const auto linear = [](double) { return 1.0; };
    EXPECT_EQ(
        CPgSpectrum::GetMagnitudeRange({static_cast<KW_SCALING_TYPE>(5), 100, 0}, linear).stop,
        0.0);
    fft->GetPrState()->Set(eKW_ONOFF_ON);
    s->GetPrHorizontalSpan()->Set(1e6);
    // Something else than the timebase's own rules sets the rate.
    for (const double rate : {2.5e9, 1.25e9})
    {
        KW_PeekZELRoot()->GetPgHorizontal()->GetPrSampleRate()->DbSet(rate);
    }
    KW_PeekZELRoot()->GetPgSpectrum()->GetPrRBW()->SetResolution(1000.0);
    s->GetPrHorizontalSpan()->Set(1.2345e7);
    EXPECT_EQ(
        reports.List(),
        QStringList({QStringLiteral("unknown ratio detected"),
                     QStringLiteral("invalid vertical scale detected: vscale = 5"),
                     QStringLiteral(
                         "when DDC is used, adc sample rate must be 1.25e+09 Hz and not 2.5e+09"),
                     QStringLiteral("Warning (1) by database access: m_pRBW->DbSet(KWMath::Bound("
                                    "m_pRBW->GetMin(), rbw, m_pRBW->GetMax()))")}));
}
