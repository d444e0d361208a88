// SPDX-License-Identifier: MIT
#include "KWEnumerationsDataFormats.h"
#include "KWEnumerationsOnOff.h"
#include "KWEnumerationsSpectrum.h"
#include "Root/PgZEL.h"
#include "Spectrum/PgDDC.h"
#include "SpectrumTree.h"

#include <QTemporaryDir>

TEST_F(SpectrumGroup, DirectChangeOfTheConverterIsSilentOrHalf)
{
    s->GetPrHorizontalSpan()->Set(1e6);
    s->GetPrHorizontalCenter()->Set(1e8);
    EXPECT_EQ(reports.List(), QStringList()) << "the spectrum's own changes are no debugging";
    KW_PeekZELRoot()->GetPgDDC()->Init(1e8, 2e6);
    EXPECT_EQ(reports.List(), QStringList());
    EXPECT_EQ(ddc->GetPrSampleDezimationFactor()->Get(), 360U);
    ASSERT_EQ(ddc->GetPrSpan()->Set(1e5), eKW_ACC_OK);
    EXPECT_EQ(ddc->GetPrSampleDezimationFactor()->Get(), 8240U);
    ASSERT_EQ(ddc->GetPrCenter()->Set(1.25e7), eKW_ACC_OK);
    const QString text =
        QStringLiteral("DDC Center/Span was directly changed to Center = %1 kHz and Span = 100 kHz "
                       "(that is only allowed for debugging purpose)");
    EXPECT_EQ(reports.List().filter(QStringLiteral("DDC Center")),
              QStringList({text.arg(100000), text.arg(12500)}));
    EXPECT_NEAR(ddc->GetPrFrequencyShift()->Get(), 1.25e7, 0.03);
    EXPECT_EQ(SpectrumViolations(*this), "") << "the FFT follows";
    s->GetPrHorizontalSpan()->Set(3e6);
    EXPECT_EQ(ddc->GetPrSpan()->Get(), 3e6) << "the next change of the axis ends the debugging";
}

TEST_F(SpectrumGroup, ConverterIsBoundlessOrResetsTooMuch)
{
    CPgDDC* const node = KW_PeekZELRoot()->GetPgDDC();
    node->Init(-5.0, 1.0);
    EXPECT_EQ(ddc->GetPrSpan()->Get(), 825.0);
    EXPECT_EQ(ddc->GetPrCenter()->Get(), 0.0);
    EXPECT_EQ(ddc->GetPrSampleDezimationFactor()->Get(), 1000000U);
    EXPECT_GT(ddc->GetPrGain()->Get(), 1.0);
    node->Reset();
    EXPECT_EQ(ddc->GetPrGain()->Get(), 1.0);
    EXPECT_EQ(ddc->GetPrFrequencyShift()->Get(), 0.0);
    EXPECT_EQ(ddc->GetPrSampleDezimationFactor()->Get(), 1000000U);
    EXPECT_EQ(reports.List(), QStringList());
}

TEST_F(SpectrumGroup, ConverterIsSwitchedOffWhereItIsNeeded)
{
    EXPECT_EQ(ddc->GetPrState()->Set(eKW_ONOFF_ON), eKW_ACC_OK) << "for debugging";
    EXPECT_EQ(ddc->GetPrGainCorrection()->Get(), 1.0) << "nothing is mixed";
    EXPECT_EQ(fft->GetPrInputFormat()->Get(), eKW_SIGNAL_FORMAT_INT16);
    EXPECT_EQ(ddc->GetPrState()->Set(eKW_ONOFF_OFF), eKW_ACC_OK);
    s->GetPrHorizontalSpan()->Set(1e6);
    const double gain = ddc->GetPrGain()->Get();
    EXPECT_EQ(ddc->GetPrGainCorrection()->Get(), 2.0);
    EXPECT_EQ(fft->GetPrInputFormat()->Get(), eKW_SIGNAL_FORMAT_COMPLEX_FLOAT);
    EXPECT_EQ(ddc->GetPrState()->Set(eKW_ONOFF_OFF), eKW_ACC_WARNING);
    EXPECT_EQ(ddc->GetPrState()->Get(), eKW_ONOFF_ON);
    EXPECT_EQ(ddc->GetPrGain()->Get(), gain);
    s->GetPrMode()->Set(eKW_SPECTRUM_MODE_FFT);
    EXPECT_EQ(ddc->GetPrState()->Get(), eKW_ONOFF_OFF);
    EXPECT_EQ(ddc->GetPrGain()->Get(), 1.0);
    EXPECT_EQ(ddc->GetPrGainCorrection()->Get(), 1.0);
    s->GetPrMode()->Set(eKW_SPECTRUM_MODE_SPA);
    EXPECT_EQ(ddc->GetPrGain()->Get(), gain);
}

TEST_F(SpectrumGroup, EndOfDebuggingLeavesWhatAFileDoesNotHold)
{
    const QTemporaryDir folder;
    const QString name = folder.filePath(QStringLiteral("settings.xml"));
    for (const KW_SPECTRUM_MODE mode : {eKW_SPECTRUM_MODE_SPA, eKW_SPECTRUM_MODE_FFT})
    {
        s->GetPrHorizontalSpan()->Set(1e6);
        s->GetPrHorizontalSpan()->Set(6.25e8);
        s->GetPrMode()->Set(mode);
        ddc->GetPrState()->Set(eKW_ONOFF_ON);
        ddc->GetPrSpan()->Set(1e5);
        ASSERT_EQ(ddc->GetPrState()->Set(eKW_ONOFF_OFF), eKW_ACC_OK);
        const auto saved = Snapshot(ddc->GetDbObject());
        ASSERT_EQ(root->Save(name), eKW_ACC_OK);
        ASSERT_EQ(root->GetPrPreset()->Set(), eKW_ACC_OK);
        ASSERT_EQ(root->Recall(name), eKW_ACC_OK);
        EXPECT_EQ(FirstDifference(saved, Snapshot(ddc->GetDbObject())).toStdString(), "") << mode;
    }
}
