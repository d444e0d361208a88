// SPDX-License-Identifier: MIT
#include "Timebase/PgHorizontal.h"

#include "CheckedAccess.h"
#include "CommonDatabase/Couplings/DbRules.h"
#include "ErrorReport.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperCommon.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperHorizontal.h"
#include "KWEnumerationsAcquisition.h"
#include "KWEnumerationsOnOff.h"
#include "KWMath.h"
#include "MatConstants.h"
#include "Names/DDC.h"
#include "Names/Horizontal.h"
#include "Names/ZEL.h"
#include "Rules/ChannelRules.h"
#include "Rules/NumberRules.h"
#include "Timebase/HorizontalHardware.h"
#include "Timebase/PgSampleCounter.h"

#include <algorithm>
#include <cmath>

using namespace NNames;

using t_HorizontalHelper = CZELDatabaseHelperHorizontal;
using t_Common = CZELDatabaseHelperCommon;

namespace
{
KW_ONOFF OnOff(bool on)
{
    return on ? eKW_ONOFF_ON : eKW_ONOFF_OFF;
}
} // namespace

t_Couplings CPgHorizontal::Rules() const
{
    using H = CPgHorizontal;
    static constexpr auto rows = Table<Names>(
        On(Names::ScaleGUI) >> Do<&H::SetScaleFromGui, &H::RunRecalculationChain>,
        On(Names::AcquisitionTime) >> Do<&H::CalculateHorizontalScale, &H::RunRecalculationChain>,
        On(Names::ReferencePoint) >>
            Do<&H::CalculateReferencePointGUI, &H::CalculateHorizontalPositionLimits,
               &H::CalculateHorizontalBoundaries>,
        On(Names::ReferencePointGUI) >>
            Do<&H::SetReferencePointFromGui, &H::CalculateHorizontalPositionLimits,
               &H::CalculateHorizontalBoundaries>,
        On(Names::Position) >> Do<&H::UpdateHardwarePosition, &H::CalculateHorizontalBoundaries>,
        On(Names::NumberOfAverages) >> Do<&H::UpdateAveraging>,
        On(Names::NumberOfAveragesGUI) >> Do<&H::SetAveragesFromGui>,
        On(Names::Scale) >> Derive<&H::CalculateScaleGui>,
        On(Names::HistoryDepth) >> Derive<&H::CalculateMaxNumberOfBusEvents>,
        On(Names::Scale, Names::HistoryDepth, Names::DSPMode, Names::WaveformUpdateMode,
           Names::ForceDspFastMode, Names::PreselectedRecordLength, Names::AcquisitionMode,
           Names::ZELMode) >>
            Derive<&H::RunRecalculationChain>,
        OnAny() >> Do<&H::UpdateClosing, &H::CountChange>,
        Changed(ZEL::DDC / DDC::State,
                ZEL::Vertical / Vertical::Channel / each / Channel::Enabled) >>
            Derive<&H::FollowUse>,
        Twins(Names::Scale, Names::ScaleGUI), Twins(Names::Scale, Names::AcquisitionTime),
        Twins(Names::ReferencePoint, Names::ReferencePointGUI),
        Twins(Names::NumberOfAverages, Names::NumberOfAveragesGUI));
    return rows;
}

void CPgHorizontal::RunRecalculationChain()
{
    UpdateDSPMode();
    CalculateSamplingRates();
    CalculateAcquisitionTime();
    UpdateDigitalSampleRate();
    CalculateBasicHorizontalSettings();
    CalculateHorizontalPositionLimits();
    CalculateAcquisitionSamplingRates();
    CalculateHorizontalBoundaries();
}

void CPgHorizontal::FollowUse()
{
    const KW_ZEL_MODE before = m_pZELMode->Get();
    UpdateZELMode();
    if (m_pZELMode->Get() != before)
    {
        RunRecalculationChain();
    }
}

void CPgHorizontal::UpdateZELMode()
{
    const CDbPropEnum<KW_ONOFF>* const downConverter = At(ZEL::DDC / DDC::State);
    const bool isConverted = downConverter != nullptr && downConverter->Get() == eKW_ONOFF_ON;
    INT32 fastest = eKW_ZEL_MODE_ZEL_A;
    for (INT32 mode = eKW_ZEL_MODE_ZEL_B; mode < m_pZELMode->GetEnumSize(); ++mode)
    {
        const bool serves =
            !isConverted &&
            NRules::ChannelsDroppedBy(*this, static_cast<KW_ZEL_MODE>(mode)).empty();
        KW_CHECKED(m_pZELMode->EnableValue(mode, serves));
        fastest = serves ? mode : fastest;
    }
    if (m_pZELMode->FollowWish(fastest) > eKW_ACC_WARNING)
    {
        KW_REPORT_ERROR(QStringLiteral("Could not set ZEL mode to required mode."), __FILE__);
    }
}

void CPgHorizontal::UpdateDSPMode()
{
    const double acquisitionTime = NRules::ScreenWidth(m_pScale->Get());
    const bool isLong = acquisitionTime >= NHorizontalHardware::kSlowAcquisitionTime &&
                        m_pForceDspFastMode->Get() == eKW_ONOFF_OFF;
    KW_ZEL_DSP_MODE mode = eKW_ZEL_DSP_MODE_NORMAL;
    if (isLong && m_pWaveformUpdateMode->Get() == eKW_WAVEFORM_UPDATE_MODE_PARTIAL)
    {
        mode = eKW_ZEL_DSP_MODE_SLOW;
    }
    if (isLong && m_pWaveformUpdateMode->Get() == eKW_WAVEFORM_UPDATE_MODE_ROLL)
    {
        mode = eKW_ZEL_DSP_MODE_ROLL;
    }
    KW_CHECKED(m_pDSPMode->DbSet(mode));
}

void CPgHorizontal::CalculateSamplingRates()
{
    KW_CHECKED(m_pSampleRate->DbSet(t_HorizontalHelper::GetSampleRate(m_pZELMode->Get())));
}

void CPgHorizontal::CalculateAcquisitionTime()
{
    KW_CHECKED(m_pAcquisitionTime->DbSet(NRules::ScreenWidth(m_pScale->Get())));
}

void CPgHorizontal::UpdateDigitalSampleRate()
{
    KW_CHECKED(m_pSampleRateDigital->DbSet(NHorizontalHardware::kDigitalSampleRate));
}

void CPgHorizontal::CalculateAcquisitionSamplingRates()
{
    KW_CHECKED(m_pAcquisitionSampleRate->DbSet(m_pSampleRate->Get() / m_pDecimationFactor->Get()));
    KW_CHECKED(m_pAcquisitionSampleRateDigital->DbSet(m_pSampleRateDigital->Get() /
                                                      m_pDecimationFactorDigital->Get()));
}

void CPgHorizontal::CalculateHorizontalScale()
{
    const double wanted = m_pAcquisitionTime->Get() / NRules::kHorizontalDivisions;
    double dScaleValue = m_pScale->Get();
    for (const QVariant& entry : m_pScale->GetValueList())
    {
        dScaleValue = entry.toDouble();
        if (CMatConstants::IsGreaterOrEqual(dScaleValue, wanted))
        {
            break;
        }
    }
    KW_ACCEPTANCE eAcc = eKW_ACC_OK;
    KW_CHECKED(eAcc = m_pScale->DbSet(dScaleValue));
    CalculateScaleGui();
}

void CPgHorizontal::CalculateScaleGui()
{
    const QVariantList& scales = m_pScale->GetValueList();
    const double scale = m_pScale->Get();
    INT32 i = 0;
    while (i < scales.size() && scales[i].toDouble() < scale)
    {
        ++i;
    }
    // A scale between two entries shows as the slower one, one beyond the last as the last.
    const INT32 index = i < scales.size() ? i : i - 1;
    KW_CHECKED(m_pScaleGUI->DbSet(static_cast<KW_HORIZONTAL_TIME_SCALE>(index)));
}

void CPgHorizontal::SetScaleFromGui()
{
    const INT32 index = m_pScaleGUI->GetAsInt();
    const QVariantList& scales = m_pScale->GetValueList();
    if (index < 0 || index >= scales.size())
    {
        KW_REPORT_ERROR(
            QStringLiteral("This enum entry %1is not in the ValueList of m_pScale").arg(index),
            __FILE__);
        return;
    }
    bool isNumber = false;
    const double dScaleValue = scales[index].toDouble(&isNumber);
    if (!isNumber)
    {
        KW_REPORT_ERROR(QStringLiteral("no double in ValueList of m_pScale"), __FILE__);
        return;
    }
    KW_ACCEPTANCE eAcc = eKW_ACC_OK;
    KW_CHECKED(eAcc = m_pScale->DbSet(dScaleValue));
}

void CPgHorizontal::CalculateReferencePointGUI()
{
    const CEnumNameInfo& positions = m_pReferencePointGUI->GetNameInfo();
    for (INT32 value = 0; value < positions.GetEnumSize(); ++value)
    {
        const std::optional<double> percent = positions.GetNumber(value);
        if (percent && CMatConstants::AreEqual(*percent, m_pReferencePoint->Get()))
        {
            const auto eReferencePointValue = static_cast<KW_REF_POINT_POSITION>(value);
            KW_ACCEPTANCE eAcc = eKW_ACC_OK;
            KW_CHECKED(eAcc = m_pReferencePointGUI->DbSet(eReferencePointValue));
            return;
        }
    }
    // The doubled letter belongs to the text that service tools look for.
    KW_REPORT_ERROR(QStringLiteral("The reference point %1is not in the arrray with the predefined "
                                   "values.")
                        .arg(KW_ReportText(m_pReferencePoint->Get())),
                    __FILE__);
}

void CPgHorizontal::SetReferencePointFromGui()
{
    const INT32 position = m_pReferencePointGUI->GetAsInt();
    const std::optional<double> percent = m_pReferencePointGUI->GetNameInfo().GetNumber(position);
    if (!percent)
    {
        KW_REPORT_ERROR(QStringLiteral("This enum entry %1is not in the map with the predefined "
                                       "values.")
                            .arg(position),
                        __FILE__);
        return;
    }
    KW_ACCEPTANCE eAcc = eKW_ACC_OK;
    KW_CHECKED(eAcc = m_pReferencePoint->DbSet(*percent));
}

void CPgHorizontal::UpdateAveraging()
{
    // The step at or below the number: a number between two steps shows as the lower one.
    INT32 step = eKW_NO_OF_AVERAGES_AVG_2;
    while (step + 1 < m_pNumberOfAveragesGUI->GetEnumSize() &&
           (UINT32{2} << (step + 1)) <= m_pNumberOfAverages->Get())
    {
        ++step;
    }
    KW_CHECKED(m_pNumberOfAveragesGUI->DbSet(static_cast<KW_NO_OF_AVERAGES>(step)));
}

void CPgHorizontal::SetAveragesFromGui()
{
    constexpr INT32 kHighestStep = 12;
    const INT32 step = m_pNumberOfAveragesGUI->GetAsInt();
    const UINT32 averages = step >= 1 && step <= kHighestStep ? UINT32{2} << step : 2;
    KW_CHECKED(m_pNumberOfAverages->DbSet(averages));
}

void CPgHorizontal::CalculateMaxNumberOfBusEvents()
{
    const UINT32 traces = t_HorizontalHelper::GetNumberOfHistoryTraces(m_pHistoryDepth->Get());
    KW_CHECKED(m_pMaxNumOfSerialBusEvents->DbSet(NHorizontalHardware::kBusEventMemory / traces));
}

void CPgHorizontal::CalculateBasicHorizontalSettings()
{
    using namespace NHorizontalHardware;
    if (m_pDSPMode->Get() == eKW_ZEL_DSP_MODE_NORMAL)
    {
        CalculateBasicHorizontalSettingsAnalog();
        CalculateBasicHorizontalSettingsDigital();
        SetSettlingSamples(kMaxPreSettlingSamplesAnalog, kMaxPostSettlingSamplesAnalog,
                           kMaxPreSettlingSamplesDigital, kMaxPostSettlingSamplesDigital);
        KW_CHECKED(m_pBlockSize->DbSet(0));
        return;
    }
    CalculateBasicHorizontalSettingsAnalogAndDigitalSlowOrRollMode();
    ReportMismatches();
    SetSettlingSamples(kMaxPreSettlingSamplesAnalog, kMaxPostSettlingSamplesAnalog,
                       kMaxPreSettlingSamplesAnalog, kMaxPostSettlingSamplesAnalog);
    CalculateSlowModeBlockSize();
}

void CPgHorizontal::CalculateBasicHorizontalSettingsAnalog()
{
    t_Record record{};
    t_HorizontalHelper::CalculateDecimationFactorAndRecordLength(
        m_pAcquisitionTime->Get(), m_pSampleRate->Get(), m_pAcquisitionMode->Get(),
        m_pHistoryDepth->Get(), m_pPreselectedRecordLength->Get(), record.decimation,
        record.length);
    CalculateDependentHorizontalSettingsAnalog(record);
}

void CPgHorizontal::CalculateBasicHorizontalSettingsDigital()
{
    t_Record record{};
    // Two values a point are an analog matter: a logic sample is one bit in every mode.
    t_HorizontalHelper::CalculateDecimationFactorAndRecordLength(
        m_pAcquisitionTime->Get(), m_pSampleRateDigital->Get(), eKW_ZEL_ACQUISITION_MODE_SAMPLE,
        m_pHistoryDepth->Get(), m_pPreselectedRecordLength->Get(), record.decimation,
        record.length);
    CalculateDependentHorizontalSettingsDigital(record);
}

void CPgHorizontal::CalculateBasicHorizontalSettingsAnalogAndDigitalSlowOrRollMode()
{
    t_Record analog{};
    t_Record digital{};
    t_HorizontalHelper::CalculateDecimationFactorAndRecordLengthAnalogAndDigitalSlowOrRollMode(
        m_pAcquisitionTime->Get(), m_pSampleRate->Get(), m_pSampleRateDigital->Get(),
        m_pAcquisitionMode->Get(), m_pHistoryDepth->Get(), m_pPreselectedRecordLength->Get(),
        analog.decimation, digital.decimation, analog.length, digital.length);
    CalculateDependentHorizontalSettingsAnalog(analog);
    CalculateDependentHorizontalSettingsDigital(digital);
}

CPgHorizontal::t_Trace CPgHorizontal::TraceOf(const t_Record& record) const
{
    t_Trace trace{};
    // The fast mode, when it is forced, interpolates in hardware whatever the record's length.
    t_HorizontalHelper::CalculateDependentHorizontalSettings(
        record.length, static_cast<UINT32>(m_pForceDspFastMode->GetAsInt()),
        m_pAcquisitionTime->Get(), NHorizontalHardware::kRequiredPoints, trace.recordLength,
        trace.length, trace.interpolation, trace.isInterpolatedInHardware, trace.resolution);
    return trace;
}

void CPgHorizontal::CalculateDependentHorizontalSettingsAnalog(const t_Record& record)
{
    const t_Trace trace = TraceOf(record);
    KW_CHECKED(m_pDecimationFactor->DbSet(record.decimation));
    KW_CHECKED(m_pDecimationFactorAnalogEffective->DbSet(
        t_HorizontalHelper::CalculateDecimationFactorEffective(m_pZELMode->Get(),
                                                               record.decimation)));
    KW_CHECKED(m_pRecordLength->DbSet(trace.recordLength));
    KW_CHECKED(m_pPPLengthWithoutSettlingSamples->DbSet(trace.length));
    KW_CHECKED(m_pInterpolationFactor->DbSet(trace.interpolation));
    KW_CHECKED(m_pTOADoneInHWInterpolation->DbSet(OnOff(trace.isInterpolatedInHardware)));
    KW_CHECKED(m_pResolutionPP->DbSet(trace.resolution));
}

void CPgHorizontal::CalculateDependentHorizontalSettingsDigital(const t_Record& record)
{
    const t_Trace trace = TraceOf(record);
    KW_CHECKED(m_pDecimationFactorDigital->DbSet(record.decimation));
    KW_CHECKED(m_pRecordLengthDigital->DbSet(trace.recordLength));
    KW_CHECKED(m_pPPLengthWithoutSettlingSamplesDigital->DbSet(trace.length));
    KW_CHECKED(m_pInterpolationFactorDigital->DbSet(trace.interpolation));
    KW_CHECKED(m_pTOADoneInHWInterpolationDigital->DbSet(OnOff(trace.isInterpolatedInHardware)));
    KW_CHECKED(m_pResolutionPPDigital->DbSet(trace.resolution));
}

void CPgHorizontal::SetSettlingSamples(UINT32 preAnalog, UINT32 postAnalog, UINT32 preDigital,
                                       UINT32 postDigital)
{
    KW_CHECKED(m_pPreSettlingSamples->DbSet(preAnalog));
    KW_CHECKED(m_pPreSettlingSamplesDigital->DbSet(preDigital));
    KW_CHECKED(
        m_pPPLength->DbSet(m_pPPLengthWithoutSettlingSamples->Get() + preAnalog + postAnalog));
    KW_CHECKED(m_pPPLengthDigital->DbSet(m_pPPLengthWithoutSettlingSamplesDigital->Get() +
                                         preDigital + postDigital));
}

void CPgHorizontal::ReportMismatches() const
{
    const auto report = [](const char* quantity, double analog, double digital)
    {
        if (analog != digital)
        {
            KW_REPORT_ERROR(
                QStringLiteral("%1 mismatch in slow/roll mode: analog = %2, digital = %3")
                    .arg(QLatin1String(quantity), KW_ReportText(analog), KW_ReportText(digital)),
                __FILE__);
        }
    };
    report("PPLength w/o settling samples", m_pPPLengthWithoutSettlingSamples->Get(),
           m_pPPLengthWithoutSettlingSamplesDigital->Get());
    report("RecordLength", m_pRecordLength->Get(), m_pRecordLengthDigital->Get());
    report("ResolutionPP", m_pResolutionPP->Get(), m_pResolutionPPDigital->Get());
}

void CPgHorizontal::CalculateSlowModeBlockSize()
{
    const double points = m_pPPLengthWithoutSettlingSamples->Get() /
                          (m_pAcquisitionTime->Get() * NHorizontalHardware::kBlocksPerSecond);
    KW_CHECKED(m_pBlockSize->DbSet(std::max(KWMath::ToInteger<UINT32>(points), 1U)));
}

double CPgHorizontal::PositionLimit() const
{
    const double pointInterval = m_pAcquisitionTime->Get() / m_pRecordLength->Get();
    const double limit = NHorizontalHardware::kPositionRegisterMax * pointInterval;
    return std::min(limit, m_pPosition->GetDeclaredMax());
}

void CPgHorizontal::CalculateHorizontalPositionLimits()
{
    const double Position = PositionLimit();
    const double time = m_pAcquisitionTime->Get();
    if (std::fabs(m_pPosition->Get()) > Position)
    {
        KW_REPORT_ERROR(QStringLiteral("The required horizontal position %1 is greater than what "
                                       "the register dimensions allow (%2)for acq. time :%3")
                            .arg(KW_ReportText(m_pPosition->Get()), KW_ReportText(Position),
                                 KW_ReportText(time)),
                        __FILE__);
    }
    const double count = NHorizontalHardware::kPositionRegisterMax;
    const auto samples = static_cast<INT64>(count) + m_pPreSettlingSamples->Get();
    KW_ACCEPTANCE eAcc = eKW_ACC_OK;
    KW_CHECKED(eAcc = t_Common::SetMinMax(m_pPosition, -Position, Position));
    KW_CHECKED(m_pPosition->SetStep(NRules::StepOf(m_pScale->Get())));
    KW_CHECKED(eAcc = t_Common::SetMinMax(m_pHardwarePosition, -Position, Position));
    KW_CHECKED(eAcc = t_Common::SetMinMax(m_pLeft, -Position - time, Position));
    KW_CHECKED(eAcc = t_Common::SetMinMax(m_pRight, -Position, Position + time));
    KW_CHECKED(eAcc = t_Common::SetMinMax(m_pHardwareRight, -Position, Position + time));
    KW_CHECKED(eAcc = t_Common::SetMinMax(m_pPreTriggerSamplesWithSettlingSamples, -samples,
                                          samples + m_pRecordLength->Get()));
    UpdateHardwarePosition();
}

void CPgHorizontal::UpdateHardwarePosition()
{
    KW_CHECKED(m_pHardwarePosition->DbSet(KWMath::Bound(
        m_pHardwarePosition->GetMin(), m_pPosition->Get(), m_pHardwarePosition->GetMax())));
}

void CPgHorizontal::CalculateHorizontalBoundaries()
{
    const auto percent = KWMath::ToInteger<UINT16>(m_pReferencePoint->Get());
    double left = 0.0;
    double right = 0.0;
    t_HorizontalHelper::CalculateHorizontalBoundaries(m_pAcquisitionTime->Get(), percent,
                                                      m_pPosition->Get(), m_pResolutionPP->Get(),
                                                      left, right);
    KW_CHECKED(m_pLeft->DbSet(left));
    KW_CHECKED(m_pRight->DbSet(right));
    double hardwareLeft = 0.0;
    double hardwareRight = 0.0;
    t_HorizontalHelper::CalculateHorizontalBoundaries(
        m_pAcquisitionTime->Get(), percent, m_pHardwarePosition->Get(), m_pResolutionPP->Get(),
        hardwareLeft, hardwareRight);
    KW_CHECKED(m_pHardwareRight->DbSet(hardwareRight));
    CalculatePreTriggerSamples(hardwareLeft);
}

void CPgHorizontal::CalculatePreTriggerSamples(double left)
{
    const double samples = KWMath::Round(t_HorizontalHelper::CalculateNbPreTriggerSamples(
        m_pAcquisitionTime->Get(), m_pRecordLength->Get(), left));
    const auto count = KWMath::ToInteger<INT64>(samples);
    if (static_cast<double>(count) != samples)
    {
        KW_REPORT_ERROR(QStringLiteral("The type cast of the value changed the numerical value."),
                        __FILE__);
    }
    KW_CHECKED(
        m_pPreTriggerSamplesWithSettlingSamples->DbSet(count + m_pPreSettlingSamples->Get()));
}

void CPgHorizontal::UpdateClosing()
{
    // What was counted belongs to the acquisition that ran with the former settings.
    for (const auto& property : m_pSampleCounter->Properties())
    {
        if (property->GetObjectType() == eOBJECTTYPE_RESULT)
        {
            property->SetValidity(eKW_VALIDITY_INVALID);
        }
    }
}
