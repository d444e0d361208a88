// SPDX-License-Identifier: MIT
// A stream that follows the tree: what is armed, what comes back into the results, what ends the
// history, and the reference curve.
#include "IKWFunctionChannel.h"
#include "IKWFunctionControl.h"
#include "IKWFunctionCurrentRun.h"
#include "IKWFunctionHistoryViewer.h"
#include "IKWFunctionHorizontal.h"
#include "IKWFunctionLogic.h"
#include "IKWFunctionMask.h"
#include "IKWFunctionMathematics.h"
#include "IKWFunctionReferenceCurve.h"
#include "IKWFunctionReferenceCurveAttributes.h"
#include "IKWFunctionRuns.h"
#include "IKWFunctionSMScope.h"
#include "IKWFunctionSampleCounter.h"
#include "IKWFunctionVertical.h"
#include "IKWFunctionZEL.h"
#include "Streams/Acquisition.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <cstring>

namespace
{
class CMaskOfNumbers : public IKWRecordTest
{
public:
    KW_MASK_RESULT Test(const CKWRecord& draft) override
    {
        wasWhole = draft.GetSamples(eKW_PLACE_C1).size() == 2 * draft.GetTrace(0).count;
        return ++tested % 3 == 0 ? eKW_MASK_FAILED : eKW_MASK_PASSED;
    }
    UINT32 tested = 0;
    bool wasWhole = false;
};

class ClientAcquisition : public testing::Test
{
protected:
    const std::shared_ptr<IKWFunctionZEL> m_root = GetZELRoot();
    const std::shared_ptr<IKWAcquisition> m_acquisition = KW_MakeAcquisition(m_root, 16 << 20);
    const std::unique_ptr<IKWStreamReader> m_reader = m_acquisition->GetStream()->MakeReader();
    const std::shared_ptr<IKWFunctionHorizontal> m_time = m_root->GetPgHorizontal();
    const std::shared_ptr<IKWFunctionSampleCounter> m_counter = m_time->GetPgSampleCounter();
    const std::shared_ptr<IKWFunctionHistoryViewer> m_viewer = m_root->GetPgHistoryViewer();
    const std::shared_ptr<IKWFunctionSMScope> m_scope = m_root->GetPgControl()->GetPgSMScope();
    INT64 m_triggerTime = 1000000000;

    ClientAcquisition() { m_root->RunPresetSequence(true); }

    std::shared_ptr<IKWFunctionChannel> Channel(INT32 index) const
    {
        return m_root->GetPgVertical()->GetPgChannel()->GetItem(index);
    }
    const KW_TraceInfo& Armed(UINT32 place) const
    {
        return m_acquisition->GetArmed().traces[place];
    }
    /** Points of all traces from where they stand; each has the value. */
    void Fill(INT16 value, UINT32 most = UINT32_MAX)
    {
        for (UINT32 place = 0; place < eKW_PLACE_COUNT; ++place)
        {
            const auto room = m_acquisition->Reserve(place);
            const std::size_t size = KW_GetPointSize(Armed(place).format);
            const auto points = std::min<std::size_t>(room.size() / size, most);
            for (std::size_t i = 0; i + 2 <= points * size && size >= 2; i += 2)
            {
                std::memcpy(room.data() + i, &value, 2);
            }
            m_acquisition->Advance(place, static_cast<UINT32>(points));
        }
    }
    KW_ACCEPTANCE Acquire(INT16 value = 0)
    {
        const KW_ACCEPTANCE code = m_acquisition->Arm();
        if (!KW_IsAccepted(code))
        {
            return code;
        }
        Fill(value);
        m_triggerTime += 1000000000;
        return m_acquisition->Publish({m_triggerTime, 0.0, {eKW_TRACE_ABOVE_RANGE}});
    }
};
} // namespace

TEST_F(ClientAcquisition, ArmsWhatTheSettingsSay)
{
    Channel(1)->GetPrEnabled()->Set(eKW_ONOFF_OFF);
    Channel(2)->GetPrPolarity()->Set(eKW_POLARITY_INVERTED);
    Channel(2)->GetPrPosition()->Set(1.0);
    Channel(0)->GetPrDeskew()->Set(1e-8);
    Channel(0)->GetPrProbeType()->Set(eKW_PROBE_TYPE_CURRENT_1_V_PER_A);
    m_root->GetPgLogic()->GetPrEnabled()->Set(eKW_ONOFF_ON);
    m_time->GetPrPosition()->Set(2e-7);
    EXPECT_EQ(m_acquisition->Arm(), eKW_ACC_OK);
    const KW_ArmedAcquisition& armed = m_acquisition->GetArmed();
    EXPECT_TRUE(armed.isRunning);
    EXPECT_EQ(armed.historyDepth, 100U);
    EXPECT_EQ(armed.blockSize, 0U);
    EXPECT_EQ(Armed(eKW_PLACE_C2).count, 0U);
    const KW_TraceInfo& current = Armed(eKW_PLACE_C1);
    EXPECT_EQ(current.unit, eKW_UNIT_LEVEL_A);
    EXPECT_EQ(current.channel, eKW_ZEL_CHANNEL_C1);
    EXPECT_EQ(current.count, m_time->GetPrPPLength()->Get());
    EXPECT_EQ(current.settlingPoints, 64U);
    EXPECT_DOUBLE_EQ(current.interval, 8e-10);
    EXPECT_NEAR(current.start, -3e-7 - 64 * 8e-10 - 1e-8, 1e-15);
    EXPECT_DOUBLE_EQ(current.scale * KW_COUNTS_PER_DIVISION, Channel(0)->GetPrScale()->Get());
    const KW_TraceInfo& inverted = Armed(eKW_PLACE_C3);
    EXPECT_EQ(inverted.scale, -1.0 / 6400) << "what goes up is shown going down";
    EXPECT_EQ(inverted.offset, -1.0) << "the middle of the screen";
    EXPECT_EQ(Armed(eKW_PLACE_LINES).format, eKW_SAMPLES_LINES);
    EXPECT_EQ(Armed(eKW_PLACE_LINES).settlingPoints, 16U);
    m_time->GetPrAcquisitionMode()->Set(eKW_ZEL_ACQUISITION_MODE_PEAK);
    m_acquisition->Arm();
    EXPECT_EQ(current.format, eKW_SAMPLES_MINMAX);
    for (INT32 i = 0; i < 4; ++i)
    {
        Channel(i)->GetPrEnabled()->Set(eKW_ONOFF_OFF);
    }
    m_root->GetPgLogic()->GetPrEnabled()->Set(eKW_ONOFF_OFF);
    EXPECT_EQ(m_acquisition->Arm(), eKW_ACC_NOTHING_TO_ACT_ON);
    EXPECT_TRUE(m_acquisition->Reserve(0).empty());
}

TEST_F(ClientAcquisition, EndsTheHistoryWithItsLengthsNotWithItsScales)
{
    Acquire(6400);
    Channel(0)->GetPrScale()->Set(2.0);
    Acquire(6400);
    EXPECT_EQ(m_reader->GetAvailable(), 2U);
    const auto highest = [](const CKWRecord& record)
    {
        KW_MinMax column;
        record.GetColumns(0, 0, 1000, {&column, 1});
        return column.maximum;
    };
    EXPECT_DOUBLE_EQ(highest(m_reader->GetHistory(0)), 2.0);
    EXPECT_DOUBLE_EQ(highest(m_reader->GetHistory(-1)), 1.0) << "it says its own scale";
    EXPECT_LT(m_reader->GetHistory(-1).GetInfo().settingsCounter,
              m_reader->GetHistory(0).GetInfo().settingsCounter);
    m_time->GetPrScale()->Set(2e-7);
    m_acquisition->Arm();
    EXPECT_EQ(m_reader->GetAvailable(), 1U);
    m_time->GetPrScale()->Set(5e-7);
    ASSERT_EQ(Acquire(), eKW_ACC_OK);
    EXPECT_EQ(m_reader->GetLatest().GetTrace(0).count, m_time->GetPrPPLength()->Get());
}

TEST_F(ClientAcquisition, CountsWhatCameAndWhatNobodyFetched)
{
    for (INT32 i = 0; i < 103; ++i)
    {
        ASSERT_EQ(Acquire(), eKW_ACC_OK);
    }
    m_acquisition->Deliver();
    EXPECT_EQ(m_counter->GetPrAcquisitions()->Get(), 103U);
    EXPECT_EQ(m_counter->GetPrLostAcquisitions()->Get(), 3U);
    EXPECT_EQ(m_counter->GetPrAcquiredSamples()->Get(), 1250U);
    EXPECT_EQ(m_counter->GetPrPreTriggerComplete()->Get(), eKW_ONOFF_ON);
    EXPECT_EQ(m_counter->GetPrActiveBuffer()->Get(), eKW_ZEL_DBLBUFFER_BUFFER_B);
    EXPECT_EQ(m_viewer->GetPrAvailableTraces()->Get(), 100U);
    EXPECT_EQ(m_root->GetPgRuns()->GetPgCurrentRun()->GetPrAcquisitions()->Get(), 103U);
    EXPECT_EQ(Channel(0)->GetPrClipping()->Get(), eKW_ZEL_LIMIT_OVERFLOW);
    EXPECT_EQ(Channel(1)->GetPrClipping()->Get(), eKW_ZEL_LIMIT_INSIDE);
    m_counter->GetPrResetCounters()->Set();
    Acquire();
    m_acquisition->Arm();
    Fill(0, 64 + 100);
    m_acquisition->Deliver();
    EXPECT_EQ(m_counter->GetPrAcquisitions()->Get(), 1U);
    EXPECT_EQ(m_counter->GetPrLostAcquisitions()->Get(), 1U);
    EXPECT_EQ(m_counter->GetPrAcquiredSamples()->Get(), 100U);
    EXPECT_EQ(m_counter->GetPrPreTriggerComplete()->Get(), eKW_ONOFF_OFF);
    m_scope->GetPrRunStop()->Set(eKW_ZEL_RUNSTOP_STATE_STOP);
    m_scope->GetPrRunStop()->Set(eKW_ZEL_RUNSTOP_STATE_RUN);
    m_acquisition->Deliver();
    EXPECT_EQ(m_counter->GetPrAcquisitions()->Get(), 0U) << "another run";
}

TEST_F(ClientAcquisition, MovesNoSettingsOfItsOwn)
{
    ASSERT_EQ(Acquire(), eKW_ACC_OK);
    m_acquisition->Deliver();
    m_acquisition->Deliver();
    const INT64 armed = m_acquisition->GetArmed().settingsCounter;
    ASSERT_EQ(Acquire(), eKW_ACC_OK);
    EXPECT_EQ(m_acquisition->GetArmed().settingsCounter, armed) << "read again for a delivery";
    Channel(0)->GetPrScale()->Set(2.0);
    m_acquisition->Deliver();
    ASSERT_EQ(Acquire(), eKW_ACC_OK);
    EXPECT_DOUBLE_EQ(Armed(0).scale * 6400, 2.0) << "taken for one";
}

TEST_F(ClientAcquisition, StopsWithTheScopeAndAfterASingleRun)
{
    m_scope->GetPrSingleCount()->Set(3);
    m_scope->GetPrRunStop()->Set(eKW_ZEL_RUNSTOP_STATE_STOP);
    EXPECT_EQ(Acquire(), eKW_ACC_NOTHING_TO_ACT_ON);
    m_scope->GetPrRunStop()->Set(eKW_ZEL_RUNSTOP_STATE_SINGLE);
    EXPECT_EQ(Acquire(), eKW_ACC_OK);
    m_acquisition->Deliver();
    EXPECT_EQ(m_scope->GetPrAcquisitionsLeft()->Get(), 2U);
    EXPECT_EQ(Acquire(), eKW_ACC_OK);
    Channel(0)->GetPrScale()->Set(2.0);
    EXPECT_EQ(Acquire(), eKW_ACC_OK);
    EXPECT_EQ(Acquire(), eKW_ACC_NOTHING_TO_ACT_ON) << "before the tree knows of it";
    EXPECT_EQ(m_scope->GetPrRunStop()->Get(), eKW_ZEL_RUNSTOP_STATE_SINGLE);
    m_acquisition->Deliver();
    EXPECT_EQ(m_scope->GetPrRunStop()->Get(), eKW_ZEL_RUNSTOP_STATE_STOP);
    EXPECT_EQ(m_counter->GetPrAcquisitions()->Get(), 3U);
    EXPECT_EQ(m_root->GetPgRuns()->GetPgCurrentRun()->GetPrOperationState()->Get(),
              eKW_ZEL_OPSTATE_DONE);
    m_scope->GetPrRunStop()->Set(eKW_ZEL_RUNSTOP_STATE_SINGLE);
    EXPECT_EQ(Acquire(), eKW_ACC_OK) << "the next one";
}

TEST_F(ClientAcquisition, ShowsTheHistoryAndClearsIt)
{
    for (INT16 i = 0; i < 5; ++i)
    {
        Acquire(i);
    }
    m_acquisition->Deliver();
    EXPECT_EQ(m_acquisition->GetShown(*m_reader).GetInfo().number, 5U);
    m_viewer->GetPrPrevious()->Set();
    m_viewer->GetPrPrevious()->Set();
    EXPECT_EQ(Acquire(), eKW_ACC_NOTHING_TO_ACT_ON) << "the viewer stops the scope";
    EXPECT_EQ(m_acquisition->GetShown(*m_reader).GetInfo().number, 3U);
    m_acquisition->Deliver();
    EXPECT_DOUBLE_EQ(m_viewer->GetPrTraceTime()->Get(), -2.0);
    EXPECT_EQ(m_viewer->GetPrTraceTime()->GetDbObject()->GetValidity(), eKW_VALIDITY_VALID);
    const CKWRecord held = m_acquisition->GetShown(*m_reader);
    m_viewer->GetPrClear()->Set();
    m_acquisition->Deliver();
    EXPECT_EQ(m_viewer->GetPrAvailableTraces()->Get(), 0U) << "at once";
    EXPECT_FALSE(m_acquisition->GetShown(*m_reader));
    m_acquisition->Arm();
    EXPECT_EQ(m_reader->GetAvailable(), 0U);
    EXPECT_EQ(held.GetInfo().number, 3U);
    m_acquisition->Deliver();
    EXPECT_EQ(m_counter->GetPrLostAcquisitions()->Get(), 0U);
}

TEST_F(ClientAcquisition, GrowsByBlocksInRollMode)
{
    m_time->GetPrScale()->Set(0.1);
    m_time->GetPrWaveformUpdateMode()->Set(eKW_WAVEFORM_UPDATE_MODE_ROLL);
    ASSERT_TRUE(KW_IsAccepted(m_acquisition->Arm()));
    const UINT32 block = m_acquisition->GetArmed().blockSize;
    const UINT32 whole = Armed(0).count;
    ASSERT_GT(block, 0U);
    EXPECT_EQ(m_acquisition->GetArmed().mode, eKW_ZEL_DSP_MODE_ROLL);
    for (UINT32 shown = block; shown <= 3 * block; shown += block)
    {
        m_acquisition->Arm();
        Fill(1, block);
        ASSERT_TRUE(KW_IsAccepted(m_acquisition->Publish({1, 0.0, {}})));
        EXPECT_EQ(m_reader->GetLatest().GetTrace(0).count, shown);
    }
    m_acquisition->Deliver();
    EXPECT_EQ(m_counter->GetPrAcquiredBlocks()->Get(), 3U);
    EXPECT_EQ(m_counter->GetPrAcquisitions()->Get(), 0U) << "it goes on";
    Channel(0)->GetPrScale()->Set(2.0);
    ASSERT_TRUE(KW_IsAccepted(m_acquisition->Arm()));
    Fill(1, block);
    m_acquisition->Publish({1, 0.0, {}});
    EXPECT_EQ(m_reader->GetLatest().GetInfo().number, 2U) << "its points mean something else";
    EXPECT_EQ(m_reader->GetLatest().GetTrace(0).count, block);
    m_acquisition->Arm();
    Fill(1);
    EXPECT_EQ(m_acquisition->Publish({1, 0.0, {}}), eKW_ACC_OK);
    EXPECT_EQ(m_reader->GetLatest().GetTrace(0).count, whole);
    m_acquisition->Deliver();
    EXPECT_EQ(m_counter->GetPrAcquisitions()->Get(), 1U);
}

TEST_F(ClientAcquisition, StoresAReferenceCurveThatStays)
{
    const auto curve = m_root->GetPgVertical()->GetPgReferenceCurve();
    const auto taken = curve->GetPgReferenceCurveAttributes();
    EXPECT_FALSE(m_acquisition->GetReference());
    Channel(1)->GetPrScale()->Set(0.2);
    Channel(1)->GetPrPosition()->Set(-1.0);
    curve->GetPrSource()->Set(eKW_ZEL_CHANNEL_C2);
    Acquire(3200);
    curve->GetPrUpdate()->Set();
    m_acquisition->Deliver();
    CKWRecord reference = m_acquisition->GetReference();
    ASSERT_TRUE(reference);
    EXPECT_EQ(reference.GetTrace(0).channel, eKW_ZEL_CHANNEL_R1);
    EXPECT_EQ(taken->GetPrSource()->Get(), eKW_ZEL_CHANNEL_C2);
    EXPECT_EQ(taken->GetPrDataGeneration()->Get(), eKW_ZEL_CHANNEL_DATA_GENERATION_ACQUIRED);
    EXPECT_EQ(taken->GetPrRecordLength()->Get(), 1378U);
    EXPECT_DOUBLE_EQ(taken->GetPrResolution()->Get(), 8e-10);
    EXPECT_EQ(taken->GetPrOriginalScale()->Get(), 0.2);
    EXPECT_EQ(taken->GetPrOriginalPosition()->Get(), -1.0);
    EXPECT_EQ(taken->GetPrOriginalTimeScale()->Get(), 1e-7);
    EXPECT_EQ(taken->GetPrUnit()->Get(), eKW_UNIT_LEVEL_V);
    EXPECT_EQ(taken->GetPrTimeStamp()->Get(), QStringLiteral("1970-01-01T00:00:02.000Z"));
    EXPECT_EQ(curve->GetPrEnabled()->Set(eKW_ONOFF_ON), eKW_ACC_OK);
    EXPECT_EQ(curve->GetPrSetToOriginal()->Set(), eKW_ACC_OK);
    EXPECT_EQ(curve->GetPrScale()->Get(), 0.2);
    m_viewer->GetPrClear()->Set();
    m_time->GetPrScale()->Set(1e-3);
    Acquire();
    m_acquisition->Deliver();
    EXPECT_DOUBLE_EQ(m_acquisition->GetReference().GetTrace(0).interval, 8e-10)
        << "a time base of its own";
    curve->GetPrClear()->Set();
    EXPECT_FALSE(m_acquisition->GetReference());
    m_root->Undo();
    EXPECT_TRUE(m_acquisition->GetReference()) << "its attributes are back, and so is the curve";
    curve->GetPrClear()->Set();
    EXPECT_EQ(m_acquisition->SetReference(reference, 1), eKW_ACC_BAD_INDEX);
    EXPECT_EQ(m_acquisition->SetReference(reference, 0), eKW_ACC_OK);
    EXPECT_EQ(m_acquisition->GetReference().GetSamples(0).size(), 2 * 1378U);
    const QTemporaryDir folder;
    ASSERT_EQ(curve->GetPrFile()->Set(folder.filePath(QStringLiteral("kept.ref"))), eKW_ACC_OK);
    curve->GetPrSave()->Set();
    m_acquisition->Deliver();
    curve->GetPrClear()->Set();
    curve->GetPrLoad()->Set();
    m_acquisition->Deliver();
    EXPECT_EQ(m_acquisition->GetReference().GetSamples(0).size(), 2 * 1378U);
    EXPECT_EQ(taken->GetPrOriginalScale()->Get(), 0.2);
    EXPECT_EQ(taken->GetPrDataGeneration()->Get(), eKW_ZEL_CHANNEL_DATA_GENERATION_RECALLED);
    m_root->GetPgMathematics()->GetPrEnabled()->Set(eKW_ONOFF_ON);
    ASSERT_EQ(curve->GetPrSource()->Set(eKW_ZEL_CHANNEL_M1), eKW_ACC_OK);
    curve->GetPrUpdate()->Set();
    m_acquisition->Deliver();
    EXPECT_EQ(taken->GetPrSource()->Get(), eKW_ZEL_CHANNEL_M1);
    EXPECT_EQ(taken->GetPrDataGeneration()->Get(), eKW_ZEL_CHANNEL_DATA_GENERATION_CALCULATED);
}

TEST_F(ClientAcquisition, TestsRecordsBeforeOthersSeeThem)
{
    CMaskOfNumbers mask;
    m_acquisition->SetTest(&mask);
    for (UINT32 i = 1; i <= 3; ++i)
    {
        ASSERT_EQ(Acquire(), eKW_ACC_OK);
        EXPECT_TRUE(mask.wasWhole);
        EXPECT_EQ(m_reader->GetNext().GetInfo().maskResult,
                  i < 3 ? eKW_MASK_PASSED : eKW_MASK_FAILED);
    }
    EXPECT_EQ(mask.tested, 3U);
    m_root->GetPgMask()->GetPrHistoryMode()->Set(eKW_ZEL_MASK_HISTORY_MODES_FAILED);
    ASSERT_EQ(Acquire(), eKW_ACC_OK);
    EXPECT_TRUE(m_reader->GetNext()) << "no test runs";
    m_root->GetPgMask()->GetPrStart()->Set();
    for (UINT32 i = 5; i <= 9; ++i)
    {
        ASSERT_EQ(Acquire(), eKW_ACC_OK);
    }
    EXPECT_EQ(m_reader->GetNext().GetInfo().number, 6U);
    EXPECT_EQ(m_reader->GetNext().GetInfo().number, 9U);
    EXPECT_FALSE(m_reader->HasNew());
    m_acquisition->Deliver();
    EXPECT_EQ(m_counter->GetPrAcquisitions()->Get(), 9U) << "all were acquired";
}
