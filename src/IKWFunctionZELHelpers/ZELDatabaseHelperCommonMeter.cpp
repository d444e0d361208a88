// SPDX-License-Identifier: MIT
#include "IKWFunctionZELHelpers/ZELDatabaseHelperCommon.h"
#include "KWEnumerationsMeter.h"
#include "KWEnumerationsUnits.h"
#include "KWEnumerationsVertical.h"

#include "CommonHelperParts.h"
#include "ErrorReport.h"
#include "InstrumentSettings.h"
#include "KWMath.h"
#include "MeterBase/MeterMeasurementBaseData.h"

using namespace NCommonHelper;

namespace
{
struct t_MeterScale
{
    UINT32 rangeMilli; ///< thousandths of the range's unit
    double scale;
};

// 0.525 × range but for the last, see ConvertMeterRange2VerticalScale.
constexpr t_MeterScale kMeterScales[] = {
    {100, 0.0525}, {300, 0.1575},  {1000, 0.525},  {3000, 1.575},
    {10000, 5.25}, {30000, 15.75}, {100000, 52.5}, {300000, 109.5},
};

struct t_DividerTap
{
    KW_ZEL_METER_RANGE range;
    UINT32 tap;
};

// The 1 V range shares the tap of the 10 V range and adds the ×10 stage.
constexpr t_DividerTap kDividerTaps[] = {
    {eKW_ZEL_METER_RANGE_1, 1},
    {eKW_ZEL_METER_RANGE_10, 1},
    {eKW_ZEL_METER_RANGE_100, 2},
    {eKW_ZEL_METER_RANGE_1_KILO, 3},
};
constexpr unsigned int kGainStageShift = 2;
constexpr unsigned int kAcPathShift = 3;

const t_DividerTap* FindDividerTap(KW_ZEL_METER_RANGE range)
{
    for (const t_DividerTap& entry : kDividerTaps)
    {
        if (entry.range == range)
            return &entry;
    }
    return nullptr;
}

bool UsesVoltageInput(KW_ZEL_DMM_MEAS_TYPE type)
{
    return type == eKW_ZEL_DMM_MEAS_TYPE_AC_VOLT || type == eKW_ZEL_DMM_MEAS_TYPE_DC_VOLT ||
           type == eKW_ZEL_DMM_MEAS_TYPE_AD_VOLT || type == eKW_ZEL_DMM_MEAS_TYPE_FREQ;
}

unsigned int PathCode(UINT32 tap, INT32 gainStage, INT32 acPath)
{
    return tap | static_cast<UINT32>(gainStage) << kGainStageShift |
           static_cast<UINT32>(acPath) << kAcPathShift;
}
} // namespace

double CZELDatabaseHelperCommon::GetDMMCurrent(KW_ZEL_DMM_CURRENT path)
{
    if (!IsLegal(path))
        KW_REPORT_ERROR(QStringLiteral("Invalid current path: ") + KW_ReportText(path),
                        kHelperSource);
    return NumberOf(path, 1.0);
}

double CZELDatabaseHelperCommon::ConvertMeterRange2VerticalScale(const double& range)
{
    const auto rangeMilli = KWMath::ToInteger<UINT32>(KWMath::Round(range * 1000.0));
    for (const t_MeterScale& entry : kMeterScales)
    {
        if (entry.rangeMilli == rangeMilli)
            return entry.scale;
    }
    KW_REPORT_ERROR(QStringLiteral("Invalid Range: ") + KW_ReportText(range), kHelperSource);
    return 0.0;
}

double CZELDatabaseHelperCommon::ConvertCounterRange2VerticalScale(const double& range)
{
    return ConvertMeterRange2VerticalScale(range);
}

double CZELDatabaseHelperCommon::GetSamplingRateADC()
{
    const KW_ZEL_DMM_ADC_RATE rate =
        NInstrumentSettings::DmmAdcRate().value_or(NInstrumentSettings::kFreshDmmAdcRate);
    if (!IsLegal(rate))
        KW_REPORT_ERROR(QStringLiteral("Invalid ADC sample rate"), kHelperSource);
    return NumberOf(rate, 1.0);
}

void CZELDatabaseHelperCommon::GetDMMVoltagePathSettings(const KW_ZEL_DMM_MEAS_TYPE& measType,
                                                         const KW_PROBE_TYPE& probeType,
                                                         const double& range, double& factor,
                                                         unsigned int& pathCode)
{
    factor = 1.0;
    pathCode = 0;
    if (!UsesVoltageInput(measType))
    {
        KW_REPORT_ERROR(QStringLiteral("Invalid measurement type!"), kHelperSource);
        return;
    }
    const KW_ZEL_METER_RANGE selected = CMeterMeasurementBaseData::GetRangeAsEnumValue(range);
    if (!IsLegal(selected))
        return; // reported by the conversion
    const t_DividerTap* entry = FindDividerTap(selected);
    if (!entry)
    {
        KW_REPORT_ERROR(QStringLiteral("Invalid Range: ") + KW_ReportText(range), kHelperSource);
        return;
    }
    CMeterMeasurementBaseData catalogue;
    const t_RangeSettings settings = catalogue.GetRangeSettings(measType, range);
    const auto path = catalogue.GetMeasurementBlocks().at(measType)->GetMeasurementSettings();
    const ProbeSettings probe = GetProbeSettingsScope({probeType, 1.0, eKW_UNIT_LEVEL_V});
    factor = probe.factor / (settings.divider * settings.gain);
    pathCode = PathCode(entry->tap, settings.gainStage, path.second);
}
