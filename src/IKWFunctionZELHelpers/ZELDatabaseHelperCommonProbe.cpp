// SPDX-License-Identifier: MIT
#include "IKWFunctionZELHelpers/ZELDatabaseHelperCommon.h"
#include "KWEnumerationsMeter.h"
#include "KWEnumerationsUnits.h"
#include "KWEnumerationsVertical.h"

#include "CommonHelperParts.h"
#include "ErrorReport.h"
#include "InstrumentSettings.h"
#include "KWMath.h"

using namespace NCommonHelper;

namespace
{
bool IsVoltageProbe(KW_PROBE_TYPE type)
{
    return type >= eKW_PROBE_TYPE_VOLTAGE_1_TO_1 && type <= eKW_PROBE_TYPE_VOLTAGE_1000_TO_1;
}

bool IsCurrentProbe(KW_PROBE_TYPE type)
{
    return type >= eKW_PROBE_TYPE_CURRENT_100_V_PER_A && type <= eKW_PROBE_TYPE_CURRENT_1_MV_PER_A;
}

KW_UNIT MeterUnit(KW_UNIT scopeUnit)
{
    return scopeUnit == eKW_UNIT_LEVEL_A_DIV ? eKW_UNIT_METER_A : eKW_UNIT_METER_V;
}

KW_UNIT TemperatureUnitOf(KW_PROBE_TYPE type)
{
    if (type == eKW_PROBE_TYPE_TEMPERATURE_1_MV_PER_DEG_C)
        return eKW_UNIT_TEMPERATURE_DEG;
    if (type == eKW_PROBE_TYPE_TEMPERATURE_1_MV_PER_DEG_F)
        return eKW_UNIT_TEMPERATURE_F;
    return NInstrumentSettings::TemperatureUnit().value_or(
        NInstrumentSettings::kFreshTemperatureUnit);
}
} // namespace

double CZELDatabaseHelperCommon::GetOverloadFactor()
{
    return 1.1;
}

KW_IEEE_DIVISION double CZELDatabaseHelperCommon::ConvertProbeFactor(const double& factor,
                                                                     KW_UNIT factorUnit)
{
    if (factorUnit == eKW_UNIT_LEVEL_V_V)
        return factor;
    if (factorUnit == eKW_UNIT_LEVEL_V_A)
        return 1.0 / factor;
    KW_REPORT_ERROR(QStringLiteral("Unknown probe unit= ") + KW_ReportText(factorUnit),
                    kHelperSource);
    return factor;
}

KW_UNIT CZELDatabaseHelperCommon::GetProbeUnit(KW_UNIT factorUnit)
{
    if (factorUnit == eKW_UNIT_LEVEL_V_DIV)
        return eKW_UNIT_LEVEL_V;
    if (factorUnit == eKW_UNIT_LEVEL_A_DIV)
        return eKW_UNIT_LEVEL_A;
    KW_REPORT_ERROR(QStringLiteral("Unknown probe factor unit= ") + KW_ReportText(factorUnit),
                    kHelperSource);
    return eKW_UNIT_LEVEL_V;
}

KW_UNIT CZELDatabaseHelperCommon::GetProbeFactorUnit(KW_UNIT measuredUnit)
{
    if (measuredUnit == eKW_UNIT_LEVEL_V)
        return eKW_UNIT_LEVEL_V_V;
    if (measuredUnit == eKW_UNIT_LEVEL_A)
        return eKW_UNIT_LEVEL_V_A;
    KW_REPORT_ERROR(QStringLiteral("Unknown probe unit= ") + KW_ReportText(measuredUnit),
                    kHelperSource);
    return eKW_UNIT_LEVEL_V_V;
}

CZELDatabaseHelperCommon::ProbeSettings
CZELDatabaseHelperCommon::GetProbeSettingsScope(const ProbeSettingsDb& probe)
{
    if (IsVoltageProbe(probe.type))
        return {NumberOf(probe.type, 1.0), eKW_UNIT_LEVEL_V_DIV};
    if (IsCurrentProbe(probe.type))
        return {NumberOf(probe.type, 1.0), eKW_UNIT_LEVEL_A_DIV};
    if (probe.type != eKW_PROBE_TYPE_USER)
    {
        KW_REPORT_ERROR(QStringLiteral("Unknown probe type= ") + KW_ReportText(probe.type),
                        kHelperSource);
        return {1.0, eKW_UNIT_LEVEL_V_DIV};
    }
    if (probe.userUnit == eKW_UNIT_LEVEL_A)
        return {probe.userFactor, eKW_UNIT_LEVEL_A_DIV};
    if (probe.userUnit != eKW_UNIT_LEVEL_V)
        KW_REPORT_ERROR(QStringLiteral("Unknown probe unit= ") + KW_ReportText(probe.userUnit),
                        kHelperSource);
    return {probe.userFactor, eKW_UNIT_LEVEL_V_DIV};
}

CZELDatabaseHelperCommon::ProbeSettings
CZELDatabaseHelperCommon::GetProbeSettingsDmm(KW_ZEL_DMM_MEAS_TYPE measType,
                                              const ProbeSettingsDb& probe, KW_UNIT& resultUnit)
{
    ProbeSettings settings;
    switch (measType)
    {
    case eKW_ZEL_DMM_MEAS_TYPE_AC_VOLT:
    case eKW_ZEL_DMM_MEAS_TYPE_DC_VOLT:
    case eKW_ZEL_DMM_MEAS_TYPE_AD_VOLT:
    case eKW_ZEL_DMM_MEAS_TYPE_FREQ:
        settings = GetProbeSettingsScope(probe);
        settings.unit = MeterUnit(settings.unit);
        break;
    case eKW_ZEL_DMM_MEAS_TYPE_CAPACITY:
        settings.unit = eKW_UNIT_FIELD_FARAD;
        break;
    case eKW_ZEL_DMM_MEAS_TYPE_CONTINUITY:
    case eKW_ZEL_DMM_MEAS_TYPE_OHM:
        settings.unit = eKW_UNIT_METER_OHM;
        break;
    case eKW_ZEL_DMM_MEAS_TYPE_DIODE:
        settings.unit = eKW_UNIT_LEVEL_V;
        break;
    case eKW_ZEL_DMM_MEAS_TYPE_TEMP:
        settings.unit = TemperatureUnitOf(probe.type);
        break;
    default:
        KW_REPORT_ERROR(QStringLiteral("Invalid measurement type!"), kHelperSource);
        settings.unit = eKW_UNIT_NONE;
    }
    resultUnit = measType == eKW_ZEL_DMM_MEAS_TYPE_FREQ ? eKW_UNIT_FREQ_HZ : settings.unit;
    return settings;
}
