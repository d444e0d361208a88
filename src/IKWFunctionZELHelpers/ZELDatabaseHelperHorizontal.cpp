// SPDX-License-Identifier: MIT
#include "IKWFunctionZELHelpers/ZELDatabaseHelperHorizontal.h"

#include "ErrorReport.h"
#include "KWEnumerationsAcquisition.h"
#include "KWEnumerationsLogger.h"
#include "KWMath.h"
#include "MatConstants.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr char kHorizontalSource[] = "src/IKWFunctionZELHelpers";
constexpr char kHistorySource[] = "ifc/IKWFunctionZelHelpers";

constexpr double kSampleRateA = 1250000000.0;
constexpr double kSampleRateB = 2500000000.0;
constexpr double kSampleRateC = 5000000000.0;
constexpr UINT32 kBudgetA = 125000;
constexpr UINT32 kBudgetB = 250000;
constexpr UINT32 kBudgetC = 500000;
constexpr UINT32 kFallbackBudget = 125000;
constexpr UINT32 kRecordCapLong = 12500;
constexpr UINT32 kRecordCapShort = 1250;

constexpr UINT32 kHighestDecimation = 2000000000;
// Each pass at least doubles the budget, so one that has not wrapped fits before that.
constexpr int kBudgetPasses = 32;

constexpr double kHalfWindow = 0x1p-23;
constexpr double kSnapTolerance = 0x1p-52;

/** Factor by which a limited decimation misses the needed one, as a whole number. */
UINT32 BudgetGrowth(double factor, UINT32 decimation)
{
    return KWMath::ToInteger<UINT32>(std::ceil(factor / decimation));
}

/** The budget of the next pass; 0 when growing has not helped, which ends the search. */
UINT32 GrowBudget(UINT32 budget, UINT32 growth, int pass)
{
    return pass < kBudgetPasses ? budget * growth : 0;
}

bool IsAroundHalf(double value, double half)
{
    return value > half - kHalfWindow && value < half + kHalfWindow;
}

UINT32 CapRecord(UINT32 points, KW_ZEL_RECORD_LENGTH selection)
{
    if (selection == eKW_ZEL_RECORD_LENGTH_LIMIT_12500)
        return std::min(points, kRecordCapLong);
    if (selection == eKW_ZEL_RECORD_LENGTH_LIMIT_1250)
        return std::min(points, kRecordCapShort);
    return points;
}
} // namespace

double CZELDatabaseHelperHorizontal::GetSampleRate(KW_ZEL_MODE mode)
{
    switch (mode)
    {
    case eKW_ZEL_MODE_ZEL_A:
        return kSampleRateA;
    case eKW_ZEL_MODE_ZEL_B:
        return kSampleRateB;
    case eKW_ZEL_MODE_ZEL_C:
        return kSampleRateC;
    }
    // The capital letter tells this report from that of the effective decimation.
    KW_REPORT_ERROR(QStringLiteral("illegal ZEL mode: ") + KW_ReportText(mode), kHorizontalSource);
    return 0.0;
}

UINT64 CZELDatabaseHelperHorizontal::CalculateDecimationFactorEffective(KW_ZEL_MODE mode,
                                                                        UINT32 decimation)
{
    switch (mode)
    {
    case eKW_ZEL_MODE_ZEL_A:
        return UINT64{decimation} * 4;
    case eKW_ZEL_MODE_ZEL_B:
        return UINT64{decimation} * 2;
    case eKW_ZEL_MODE_ZEL_C:
        return decimation;
    }
    KW_REPORT_ERROR(QStringLiteral("Illegal ZEL mode: ") + KW_ReportText(mode), kHorizontalSource);
    return decimation;
}

unsigned int CZELDatabaseHelperHorizontal::GetNumberOfHistoryTraces(KW_ZEL_HISTORY_DEPTH depth)
{
    switch (depth)
    {
    case eKW_ZEL_HISTORY_DEPTH_100:
        return 100;
    case eKW_ZEL_HISTORY_DEPTH_1000:
        return 1000;
    case eKW_ZEL_HISTORY_DEPTH_5000:
        return 5000;
    }
    KW_REPORT_ERROR(QStringLiteral("Invalid history depth: ") + KW_ReportText(depth),
                    kHistorySource);
    return 1;
}

unsigned int CZELDatabaseHelperHorizontal::GetMaxNumOfSamplesAfterDecimation(
    double sampleRate, KW_ZEL_ACQUISITION_MODE acquisitionMode, KW_ZEL_HISTORY_DEPTH historyDepth,
    KW_ZEL_RECORD_LENGTH recordLength)
{
    UINT32 budget = kFallbackBudget;
    if (CMatConstants::AreEqual(sampleRate, kSampleRateA))
        budget = kBudgetA;
    else if (CMatConstants::AreEqual(sampleRate, kSampleRateB))
        budget = kBudgetB;
    else if (CMatConstants::AreEqual(sampleRate, kSampleRateC))
        budget = kBudgetC;
    else
        KW_REPORT_ERROR(
            QStringLiteral(
                "Illegal sample rate of %1. Setting max. number of samples after decimation to %2")
                .arg(KW_ReportText(sampleRate), KW_ReportText(kFallbackBudget)),
            kHorizontalSource);
    if (acquisitionMode != eKW_ZEL_ACQUISITION_MODE_SAMPLE)
        budget >>= 1;
    const UINT32 points = GetNumberOfHistoryTraces(eKW_ZEL_HISTORY_DEPTH_100) * budget /
                          GetNumberOfHistoryTraces(historyDepth);
    return CapRecord(points, recordLength);
}

double CZELDatabaseHelperHorizontal::CalculateDecimationFactor(double samples, UINT32 maxPoints)
{
    if (!(samples > maxPoints))
        return 1.0;
    if (maxPoints == 0)
    {
        KW_REPORT_ERROR(
            QStringLiteral("MaxNumOfSamplesAfterDecimation is zero. Decimation factor is set to 1"),
            kHorizontalSource);
        return 1.0;
    }
    return std::floor(KWMath::Round(samples) / maxPoints);
}

unsigned int CZELDatabaseHelperHorizontal::LimitDecimationFactor(double factor, bool& limited)
{
    limited = factor > kHighestDecimation;
    return limited ? kHighestDecimation : KWMath::ToInteger<UINT32>(factor);
}

unsigned int CZELDatabaseHelperHorizontal::CalculateDecimationFactorAndRecordLength(
    double acquisitionTime, double sampleRate, KW_ZEL_ACQUISITION_MODE acquisitionMode,
    KW_ZEL_HISTORY_DEPTH historyDepth, KW_ZEL_RECORD_LENGTH recordLengthSelection,
    unsigned int& decimation, double& recordLength)
{
    UINT32 budget = GetMaxNumOfSamplesAfterDecimation(sampleRate, acquisitionMode, historyDepth,
                                                      recordLengthSelection);
    const double samples = acquisitionTime * sampleRate;
    for (int pass = 0;; ++pass)
    {
        bool limited = false;
        const double factor = CalculateDecimationFactor(samples, budget);
        decimation = LimitDecimationFactor(factor, limited);
        if (!limited)
            break;
        budget = GrowBudget(budget, BudgetGrowth(factor, decimation), pass);
    }
    recordLength = samples / decimation;
    return decimation;
}

void CZELDatabaseHelperHorizontal::
    CalculateDecimationFactorAndRecordLengthAnalogAndDigitalSlowOrRollMode(
        double acquisitionTime, double analogSampleRate, double digitalSampleRate,
        KW_ZEL_ACQUISITION_MODE acquisitionMode, KW_ZEL_HISTORY_DEPTH historyDepth,
        KW_ZEL_RECORD_LENGTH recordLengthSelection, unsigned int& analogDecimation,
        unsigned int& digitalDecimation, double& analogRecordLength, double& digitalRecordLength)
{
    const UINT32 analogBudget = GetMaxNumOfSamplesAfterDecimation(
        analogSampleRate, acquisitionMode, historyDepth, recordLengthSelection);
    const UINT32 digitalBudget = GetMaxNumOfSamplesAfterDecimation(
        digitalSampleRate, eKW_ZEL_ACQUISITION_MODE_SAMPLE, historyDepth, recordLengthSelection);
    UINT32 budget = std::min(analogBudget, digitalBudget);
    const double analogSamples = acquisitionTime * analogSampleRate;
    const double digitalSamples = acquisitionTime * digitalSampleRate;
    for (int pass = 0;; ++pass)
    {
        bool analogLimited = false;
        bool digitalLimited = false;
        const double analogFactor = CalculateDecimationFactor(analogSamples, budget);
        const double digitalFactor = CalculateDecimationFactor(digitalSamples, budget);
        analogDecimation = LimitDecimationFactor(analogFactor, analogLimited);
        digitalDecimation = LimitDecimationFactor(digitalFactor, digitalLimited);
        if (!analogLimited && !digitalLimited)
            break;
        budget = GrowBudget(budget,
                            std::max(BudgetGrowth(digitalFactor, digitalDecimation),
                                     BudgetGrowth(analogFactor, analogDecimation)),
                            pass);
    }
    analogRecordLength = analogSamples / analogDecimation;
    digitalRecordLength = digitalSamples / digitalDecimation;
}

unsigned int CZELDatabaseHelperHorizontal::AdjustRecordLength(double samples)
{
    // Wanted: only these two half samples, which the fastest time scales produce, are completed.
    // Every other fraction is a sample that was not wholly acquired.
    if (IsAroundHalf(samples, 12.5))
        return 13;
    if (IsAroundHalf(samples, 62.5))
        return 63;
    return KWMath::ToInteger<UINT32>(samples);
}

KW_IEEE_DIVISION double
CZELDatabaseHelperHorizontal::CalculateInterpolationFactor(double recordLength,
                                                           double requiredPoints)
{
    return recordLength < requiredPoints ? requiredPoints / recordLength : 1.0;
}

KW_IEEE_DIVISION void CZELDatabaseHelperHorizontal::CalculateDependentHorizontalSettings(
    double samples, unsigned int selector, double acquisitionTime, double requiredPoints,
    unsigned int& recordLength, unsigned int& traceLength, double& interpolationFactor,
    bool& hardwareInterpolation, double& resolution)
{
    interpolationFactor = CalculateInterpolationFactor(samples, requiredPoints);
    const double displayedPoints = samples * interpolationFactor;
    resolution = acquisitionTime / displayedPoints;
    hardwareInterpolation = CMatConstants::IsGreater(interpolationFactor, 1.0) || selector == 1;
    traceLength = KWMath::ToInteger<UINT32>(displayedPoints);
    recordLength = AdjustRecordLength(samples);
}

double CZELDatabaseHelperHorizontal::CalculateNbPreTriggerSamples(double acquisitionTime,
                                                                  unsigned int recordLength,
                                                                  double leftBoundary)
{
    if (CMatConstants::IsEqualZero(acquisitionTime))
        return 0.0;
    return -(leftBoundary * recordLength) / acquisitionTime;
}

void CZELDatabaseHelperHorizontal::CalculateHorizontalBoundaries(
    double acquisitionTime, unsigned short referencePointPercent, double position,
    double resolution, double& left, double& right)
{
    double offset = referencePointPercent * acquisitionTime / 100.0;
    const double interval = std::fabs(resolution);
    if (interval > 0.0)
    {
        if (interval * 0.5 > std::fabs(offset) + kSnapTolerance)
            offset = 0.0;
        else
            offset = interval * std::floor((offset + interval * 0.5) / interval);
    }
    left = position - offset;
    right = acquisitionTime + left;
}

void CZELDatabaseHelperHorizontal::CalculateHorizontalBoundariesZoom(double width, double centre,
                                                                     double& left, double& right)
{
    left = centre - width * 0.5;
    right = width + left;
}

double CZELDatabaseHelperHorizontal::GetRightHorizontalBoudary(const double& left,
                                                               const double& width)
{
    return left + width;
}

KW_IEEE_DIVISION bool CZELDatabaseHelperHorizontal::CalculateZoomParameter(
    unsigned int recordLength, double zoomFactor, double interpolationFactor,
    unsigned int minimumPoints, unsigned int& points, double& zoomInterpolationFactor)
{
    points = 0;
    zoomInterpolationFactor = 1.0;
    const double wanted = KWMath::Round(recordLength / zoomFactor);
    const double lowest = minimumPoints;
    const double visible = wanted > lowest ? wanted : lowest;
    if (CMatConstants::IsEqualZero(visible))
    {
        KW_REPORT_ERROR(QStringLiteral("Liz is zero"), kHorizontalSource);
        return false;
    }
    // Wanted twin of the guard above: it stands at the division that it protects, under the name
    // that the divisor has there, and stays silent as long as both tests agree on what zero is.
    if (CMatConstants::IsEqualZero(visible))
    {
        KW_REPORT_ERROR(QStringLiteral("Z1 is zero"), kHorizontalSource);
        return false;
    }
    zoomInterpolationFactor = zoomFactor / (recordLength / visible) * interpolationFactor;
    points = KWMath::ToInteger<UINT32>(visible);
    return true;
}
