// SPDX-License-Identifier: MIT
#include "CommonDatabase/Properties/DbPropEnum.h"
#include "IKWFunctionReferenceMarker.h"
#include "IKWFunctionSpectrumCursor.h"
#include "IKWFunctionSpectrumCursors.h"
#include "IKWFunctionSpectrumMarker.h"
#include "IKWFunctionSpectrumMarkers.h"
#include "KWEnumerationsChannels.h"
#include "KWEnumerationsOnOff.h"
#include "KWEnumerationsSpectrum.h"
#include "KWEnumerationsUnits.h"
#include "SpectrumTree.h"

struct t_InputCase
{
    const char* probe;
    const char* userUnit;
    KW_FFT_INPUT_UNIT input;
    KW_FFT_MAGN_UNIT magnitude;
};

class SpectrumInput : public testing::TestWithParam<t_InputCase>, protected t_SpectrumTree
{
};

TEST_P(SpectrumInput, ProbeDoesNotReachTheUnits)
{
    const t_InputCase& c = GetParam();
    s->GetPrMagnitudeUnit()->Set(eKW_FFT_MAGN_UNIT_DBV);
    Property(root, "Vertical/Channel[2]/ProbeUserUnit")->SetText(QString::fromLatin1(c.userUnit));
    Property(root, "Vertical/Channel[2]/ProbeType")->SetText(QString::fromLatin1(c.probe));
    EXPECT_EQ(s->GetPrInputUnit()->Get(), eKW_FFT_INPUT_UNIT_VOLTAGE) << "another channel's probe";
    ASSERT_EQ(s->GetPrSource()->Set(eKW_ZEL_CHANNEL_C3), eKW_ACC_OK);
    EXPECT_EQ(s->GetPrInputUnit()->Get(), c.input);
    EXPECT_EQ(s->GetPrMagnitudeUnit()->Get(), c.magnitude);
    EXPECT_EQ(SpectrumViolations(*this), "");
    ASSERT_EQ(root->Undo(), eKW_ACC_OK);
    EXPECT_EQ(s->GetPrMagnitudeUnit()->Get(), eKW_FFT_MAGN_UNIT_DBV);
    // The same by a change of the probe of the present source.
    ASSERT_EQ(root->Redo(), eKW_ACC_OK);
    s->GetPrMagnitudeUnit()->Set(eKW_FFT_MAGN_UNIT_DBM);
    Property(root, "Vertical/Channel[2]/ProbeType")->SetText(QStringLiteral("CURRENT_1_V_PER_A"));
    EXPECT_EQ(s->GetPrInputUnit()->Get(), eKW_FFT_INPUT_UNIT_CURRENT);
    EXPECT_EQ(s->GetPrMagnitudeUnit()->Get(), eKW_FFT_MAGN_UNIT_DBM) << "fits both";
    EXPECT_EQ(s->GetPrMagnitudeUnit()->Set(eKW_FFT_MAGN_UNIT_DBV), eKW_ACC_NOT_ENABLED);
}

INSTANTIATE_TEST_SUITE_P(
    Probes, SpectrumInput,
    testing::Values(
        t_InputCase{"VOLTAGE_100_TO_1", "LEVEL_V", eKW_FFT_INPUT_UNIT_VOLTAGE,
                    eKW_FFT_MAGN_UNIT_DBV},
        t_InputCase{"CURRENT_10_MV_PER_A", "LEVEL_V", eKW_FFT_INPUT_UNIT_CURRENT,
                    eKW_FFT_MAGN_UNIT_DBA},
        t_InputCase{"USER", "LEVEL_A", eKW_FFT_INPUT_UNIT_CURRENT, eKW_FFT_MAGN_UNIT_DBA},
        t_InputCase{"USER", "LEVEL_V", eKW_FFT_INPUT_UNIT_VOLTAGE, eKW_FFT_MAGN_UNIT_DBV}));

TEST_F(SpectrumGroup, SourcesDriftApart)
{
    ASSERT_EQ(fft->GetPrSource()->Set(eKW_ZEL_CHANNEL_FFT3), eKW_ACC_OK);
    EXPECT_EQ(s->GetPrSource()->Get(), eKW_ZEL_CHANNEL_C3);
    ASSERT_EQ(ddc->GetPrSource()->Set(eKW_ZEL_ANALOG_CHANNEL_C2), eKW_ACC_OK);
    EXPECT_EQ(SpectrumViolations(*this), "");
    EXPECT_EQ(fft->GetPrSource()->Get(), eKW_ZEL_CHANNEL_FFT2);
    EXPECT_EQ(reports.List(), QStringList());
    const auto trigger =
        std::dynamic_pointer_cast<CDbPropEnumBase>(Property(root, "Trigger/Source"));
    ASSERT_TRUE(trigger);
    trigger->EnableValue(eKW_ZEL_CHANNEL_C4, false);
    ASSERT_LE(s->GetPrSource()->Set(eKW_ZEL_CHANNEL_C4), 1U);
    EXPECT_EQ(reports.List(),
              QStringList{QStringLiteral("new source is not applicable as trigger source")});
}

struct t_MagnitudeCase
{
    const char* scaling;
    const char* unit;
    double refPoint;
    double refLevel;
    double start;
    double stop;
    KW_UNIT edgeUnit;
};

class SpectrumMagnitude : public testing::TestWithParam<t_MagnitudeCase>, protected t_SpectrumTree
{
};

TEST_P(SpectrumMagnitude, AxisHasOtherEnds)
{
    const t_MagnitudeCase& c = GetParam();
    Property(root, "Spectrum/VerticalScaling")->SetText(QString::fromLatin1(c.scaling));
    Property(root, "Spectrum/MagnitudeUnit")->SetText(QString::fromLatin1(c.unit));
    s->GetPrVerticalRefPoint()->Set(c.refPoint);
    s->GetPrVerticalRefLevel()->Set(c.refLevel);
    EXPECT_NEAR(s->GetPrVerticalStart()->Get(), c.start, 1e-9);
    EXPECT_NEAR(s->GetPrVerticalStop()->Get(), c.stop, 1e-9 * (1.0 + c.stop));
    EXPECT_EQ(s->GetPrVerticalStop()->GetUnit(), c.edgeUnit);
    EXPECT_EQ(reports.List(), QStringList());
}

INSTANTIATE_TEST_SUITE_P(
    Cases, SpectrumMagnitude,
    testing::Values(t_MagnitudeCase{"LOGARITHMIC", "DBM", 100, 0, -80, 0, eKW_UNIT_LEVEL_DBM},
                    t_MagnitudeCase{"LOGARITHMIC", "DBV", 50, -10, -50, 30, eKW_UNIT_LEVEL_DBV},
                    t_MagnitudeCase{"LINEAR", "DBV", 100, 20, 0, 10, eKW_UNIT_LEVEL_V},
                    t_MagnitudeCase{"LINEAR", "DBV", 50, 0, 0, 2, eKW_UNIT_LEVEL_V},
                    // 30 dBm are 1 W: √50 V in 50 Ω.
                    t_MagnitudeCase{"LINEAR", "DBM", 100, 30, 0, 7.0710678118654755,
                                    eKW_UNIT_LEVEL_V},
                    t_MagnitudeCase{"LINEAR", "DBV", 0, 0, 0, 1e8, eKW_UNIT_LEVEL_V}));

TEST_F(SpectrumGroup, VerticalAutoSetCutsTheLargestSignalOff)
{
    // 8 V peak to peak are 2.83 V, 9.03 dBV and 22.04 dBm in 50 Ω.
    s->GetPrVerticalAutoSet()->Set();
    EXPECT_EQ(s->GetPrVerticalStop()->Get(), 30.0);
    s->GetPrMagnitudeUnit()->Set(eKW_FFT_MAGN_UNIT_DBV);
    s->GetPrVerticalAutoSet()->Set();
    EXPECT_EQ(s->GetPrVerticalStop()->Get(), 10.0);
}

TEST_F(SpectrumGroup, CoupledCursorsPart)
{
    const auto cursors = s->GetPgSpectrumCursors();
    const auto first = cursors->GetPgSpectrumCursor()->GetItem(0);
    const auto second = cursors->GetPgSpectrumCursor()->GetItem(1);
    first->GetPrHorizontal()->Set(1e8);
    EXPECT_EQ(second->GetPrHorizontal()->Get(), 4.6875e8) << "not coupled";
    second->GetPrHorizontal()->Set(3e8);
    EXPECT_EQ(cursors->GetPrDeltaHorizontal()->Get(), 2e8);
    cursors->GetPrCoupled()->Set(eKW_ONOFF_ON);
    first->GetPrHorizontal()->Set(1.5e8);
    EXPECT_EQ(second->GetPrHorizontal()->Get(), 3.5e8);
    second->GetPrHorizontal()->Set(2.5e8);
    EXPECT_EQ(first->GetPrHorizontal()->Get(), 5e7);
    second->GetPrVertical()->Set(-10.0);
    EXPECT_EQ(first->GetPrVertical()->Get(), -10.0);
    EXPECT_EQ(reports.List(), QStringList());
    second->GetPrHorizontal()->Set(1e8);
    EXPECT_EQ(first->GetPrHorizontal()->Get(), 0.0);
    EXPECT_EQ(cursors->GetPrDeltaHorizontal()->Get(), 1e8);
    EXPECT_EQ(reports.List(),
              QStringList{QStringLiteral("property value is lower than property min value")});
    first->GetPrReset()->Set();
    EXPECT_EQ(first->GetPrHorizontal()->Get(), 1.5625e8);
    EXPECT_EQ(second->GetPrHorizontal()->Get(), 1e8) << "a reset is for one cursor";
    s->GetPrHorizontalStop()->Set(4e8);
    cursors->GetPrSetToScreen()->Set();
    EXPECT_EQ(first->GetPrHorizontal()->Get(), 1e8);
    EXPECT_EQ(second->GetPrHorizontal()->Get(), 3e8);
    EXPECT_EQ(cursors->GetPrDeltaHorizontal()->Get(), 2e8);
    root->Undo();
    EXPECT_EQ(cursors->GetPrDeltaHorizontal()->Get(), 1e8 - 1.5625e8);
}

TEST_F(SpectrumGroup, MarkersForgetTheirReference)
{
    const auto markers = s->GetPgSpectrumMarkers();
    const auto list = markers->GetPgSpectrumMarker();
    EXPECT_EQ(markers->GetPrSetReference()->Set(), eKW_ACC_NOTHING_TO_ACT_ON) << "none is selected";
    for (INT32 i = 0; i < 15; ++i)
    {
        ASSERT_EQ(list->Insert(i), eKW_ACC_OK);
    }
    EXPECT_EQ(list->Insert(0), eKW_ACC_CONTAINER_FULL);
    const auto marker = list->GetItem(1);
    marker->GetPrFrequency()->Set(2e8);
    marker->GetPrMagnitude()->SetResult(-20.0);
    const auto delta = marker->GetPrDeltaMagnitude();
    EXPECT_EQ(delta->GetDbObject()->GetValidity(), eKW_VALIDITY_INVALID);
    const QString path = marker->GetDbObject()->GetPath();
    ASSERT_EQ(markers->GetPrSelectedMarker()->GetDbObject()->SetText(path), eKW_ACC_OK);
    ASSERT_EQ(markers->GetPrSetReference()->Set(), eKW_ACC_OK);
    EXPECT_EQ(markers->GetPgReferenceMarker()->GetPrFrequency()->Get(), 2e8);
    EXPECT_EQ(delta->Get(), 0.0);
    EXPECT_EQ(delta->GetDbObject()->GetValidity(), eKW_VALIDITY_VALID);
    marker->GetPrMagnitude()->SetResult(-35.0);
    EXPECT_EQ(delta->Get(), -15.0);
    marker->GetPrFrequency()->Set(1e8);
    EXPECT_EQ(marker->GetPrDeltaFrequency()->Get(), -1e8);
    markers->GetPgReferenceMarker()->GetPrFrequency()->Set(3e8);
    EXPECT_EQ(marker->GetPrDeltaFrequency()->Get(), -2e8);
    ASSERT_LE(marker->GetPrSetCenter()->Set(), 1U);
    EXPECT_EQ(s->GetPrHorizontalCenter()->Get(), 1e8);
    ASSERT_LE(markers->GetPrRemoveAll()->Set(), 1U);
    EXPECT_EQ(list->GetCount(), 0);
    ASSERT_EQ(root->Undo(), eKW_ACC_OK);
    EXPECT_EQ(list->GetCount(), 15);
}
