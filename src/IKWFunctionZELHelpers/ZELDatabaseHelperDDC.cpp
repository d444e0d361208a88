// SPDX-License-Identifier: MIT
#include "IKWFunctionZELHelpers/ZELDatabaseHelperDDC.h"

#include "ErrorReport.h"
#include "FixedPoint.h"
#include "KWMath.h"
#include "MatConstants.h"

#include <array>
#include <cmath>

namespace
{
constexpr char kDDCSource[] = "src/IKWFunctionZELHelperDDC";

constexpr double kCoarseStep = 4882812.5; // 1.25e9 Hz / 256
constexpr double kCoarseIncrement = 0.00390625;
constexpr double kFineModulus = 0x1p32;
constexpr double kFineStep = 2.5e8 / kFineModulus;
constexpr UINT32 kFineDecimation = 120;

constexpr double kTableSpanMaximum = 39495000.0;
constexpr double kTableSpanMinimum = 1473210.0;
constexpr double kManualSpanMinimum = 825.0;
constexpr double kManualRateRatio = 8.25e8;
constexpr UINT8 kManualFirRate = 16;
constexpr UINT8 kFixedStageRate = 5;
constexpr double kHighestCic1Rate = 12500.0;
constexpr UINT32 kLowestGainDecimation = 20;

constexpr DDC::DecimationRate kNoDecimation{1, 1, 1, 1, -1};
constexpr DDC::Gain kUnityGain{1.0, 1.0, 1.0, 1.0, 1.0};
constexpr double kGainScale = 125000.0;
constexpr double kGainShift = 0.0625;

constexpr INT32 kRows = 10;
constexpr std::array<double, kRows> kSpanThresholds{39495000.0, 24703300.0, 14842200.0, 9911670.0,
                                                    6875000.0,  4583330.0,  3055560.0,  2291670.0,
                                                    1718750.0,  1473210.0};
constexpr std::array<UINT32, kRows> kTotalRates{20, 30, 45, 60, 120, 180, 270, 360, 480, 560};
constexpr std::array<UINT16, kRows> kCic1Rates{1, 1, 1, 1, 6, 6, 6, 6, 6, 7};
constexpr std::array<UINT8, kRows> kFirRates{4, 6, 9, 12, 4, 6, 9, 12, 16, 16};

struct t_FirGain
{
    UINT8 rate;
    double cic1Bypassed;
    double cic1InUse;
};

constexpr t_FirGain kFirGains[] = {
    {4, 540.7875671386719, 562.2326965332031},  {6, 409.76424407958984, 426.40540313720703},
    {9, 308.710262298584, 321.3106002807617},   {12, 412.25387954711914, 429.0809097290039},
    {16, 550.1438941955566, 572.5791473388672},
};

/** Null for a rate that the FIR stage does not have. */
const t_FirGain* FindFirGain(UINT8 rate)
{
    for (const t_FirGain& gain : kFirGains)
    {
        if (gain.rate == rate)
            return &gain;
    }
    return nullptr;
}

// The cube of a 16-bit rate is exact, so the sixth power is rounded once, as a power function that
// may differ between platforms would not promise.
double Cic1Gain(UINT16 rate)
{
    const double cube = static_cast<double>(rate) * rate * rate;
    const double shift = std::floor(-6.0 * std::log2(rate));
    return std::ldexp(cube * cube, KWMath::ToInteger<INT32>(shift)) * 8.0;
}

UINT32 PhaseWord(double increment, UINT32 width)
{
    const CFixedPoint phase(increment, 0, width, CFixedPoint::eSIGN::Unsigned,
                            CFixedPoint::eROUNDING::Nearest, CFixedPoint::eOVERFLOW::Wrap);
    return static_cast<UINT32>(phase.LSB());
}
} // namespace

DDC::DecimationRate CZELDatabaseHelperDDC::CalculateDecimation(double span)
{
    if (CMatConstants::IsLessOrEqual(span, kTableSpanMinimum))
        return CalculateDecimationManually(span);
    if (CMatConstants::IsLessOrEqual(span, kTableSpanMaximum))
        return CalculateDecimationWithLUT(span);
    return kNoDecimation;
}

DDC::DecimationRate CZELDatabaseHelperDDC::CalculateDecimationWithLUT(double span)
{
    const INT32 row = SearchRowIndexInLUT(span);
    if (row < 0 || row >= kRows)
    {
        KW_REPORT_ERROR(QStringLiteral("Span is out of range, index= %1, no entry in LUT.")
                            .arg(KW_ReportText(row)),
                        kDDCSource);
        return kNoDecimation;
    }
    const auto index = static_cast<UINT32>(row);
    return {kTotalRates[index], kFixedStageRate, kCic1Rates[index], kFirRates[index],
            static_cast<INT8>(row)};
}

DDC::DecimationRate CZELDatabaseHelperDDC::CalculateDecimationManually(double span)
{
    if (CMatConstants::IsGreater(span, kTableSpanMinimum))
    {
        KW_REPORT_ERROR(QStringLiteral("Can not compute decimation for this span."), kDDCSource);
        return kNoDecimation;
    }
    if (!CMatConstants::IsGreaterOrEqual(span, kManualSpanMinimum))
    {
        KW_REPORT_ERROR(QStringLiteral("Span is too small, can not proceed."), kDDCSource);
        return kNoDecimation;
    }
    const UINT16 cic1Rate = SearchDecimationRateCic1(kManualRateRatio / span);
    const UINT32 total = UINT32{kManualFirRate} * cic1Rate * kFixedStageRate;
    return {total, kFixedStageRate, cic1Rate, kManualFirRate, -1};
}

INT32 CZELDatabaseHelperDDC::SearchRowIndexInLUT(double span)
{
    if (!CMatConstants::IsLessOrEqual(span, kTableSpanMaximum) ||
        !CMatConstants::IsGreaterOrEqual(span, kTableSpanMinimum))
        return -1;
    INT32 row = -1;
    for (const double threshold : kSpanThresholds)
    {
        if (CMatConstants::IsGreater(span, threshold))
            return row;
        ++row;
    }
    return row;
}

UINT16 CZELDatabaseHelperDDC::SearchDecimationRateCic1(double rateRatio)
{
    const double rate = std::floor(rateRatio * 0.0125);
    return KWMath::ToInteger<UINT16>(rate > kHighestCic1Rate ? kHighestCic1Rate : rate);
}

DDC::NcoFrequency CZELDatabaseHelperDDC::CalculateNcoFrequency(double centerFrequency,
                                                               UINT32 totalDecimation)
{
    DDC::NcoFrequency nco{0.0, 0.0, 0.0, 0.0};
    if (totalDecimation == 1)
        return nco;
    const double coarseSteps = KWMath::Round(centerFrequency / kCoarseStep);
    nco.m_CoarseFrequency = coarseSteps * kCoarseStep;
    nco.m_CoarseIncrement = coarseSteps * kCoarseIncrement;
    if (totalDecimation < kFineDecimation)
        return nco;

    const double residual = centerFrequency - nco.m_CoarseFrequency;
    const double fineSteps = KWMath::Round(residual / kFineStep);
    nco.m_FineFrequency = fineSteps * kFineStep;
    const double increment = fineSteps / kFineModulus;
    if (!(std::fabs(increment) < 0.5))
        KW_REPORT_ERROR(QStringLiteral("DDC value for PINC2 exceeds range."), kDDCSource);
    else
        nco.m_FineIncrement = increment < 0.0 ? 1.0 - std::fabs(increment) : increment;
    return nco;
}

double CZELDatabaseHelperDDC::CalculateFrequencyShift(const DDC::NcoFrequency& nco)
{
    return nco.m_CoarseFrequency + nco.m_FineFrequency;
}

DDC::Gain CZELDatabaseHelperDDC::CalculateGain(const DDC::DecimationRate& rate,
                                               const DDC::NcoFrequency&)
{
    if (rate.m_R_DDC < kLowestGainDecimation)
        return kUnityGain;
    const t_FirGain* firGain = FindFirGain(rate.R_FIR);
    if (firGain == nullptr)
    {
        KW_REPORT_ERROR(
            QStringLiteral("unknown R_FIR = %1 detected").arg(KW_ReportText(INT32{rate.R_FIR})),
            kDDCSource);
        firGain = FindFirGain(kManualFirRate);
    }
    const double cic1 = Cic1Gain(rate.m_R_CIC1);
    const double fir = rate.m_R_CIC1 == 1 ? firGain->cic1Bypassed : firGain->cic1InUse;
    return {cic1 * (kGainScale * kGainShift) * fir, kGainScale, kGainShift, cic1, fir};
}

DDC::HWSettings CZELDatabaseHelperDDC::CalculateHWSettingsDDC(const DDC::DecimationRate& rate,
                                                              const DDC::NcoFrequency& nco)
{
    const double shift = std::floor(82.0 - 6.0 * std::log2(rate.m_R_CIC1));
    return {UINT32{rate.m_R_CIC1} - 1, KWMath::ToInteger<UINT32>(shift),
            PhaseWord(nco.m_CoarseIncrement, 8), PhaseWord(nco.m_FineIncrement, 32)};
}
