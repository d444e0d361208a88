// SPDX-License-Identifier: MIT
#include "Calculation.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperCommon.h"
#include "KWEnumerationsMeter.h"
#include "KWEnumerationsUnits.h"
#include "KWEnumerationsVertical.h"
#include "MeterBase/MeterMeasurementBaseData.h"

namespace
{
using CommonHelper = CZELDatabaseHelperCommon;

KW_UNIT GetMeterUnit(KW_ZEL_DMM_MEAS_TYPE type)
{
    switch (type)
    {
    case eKW_ZEL_DMM_MEAS_TYPE_CAPACITY:
        return eKW_UNIT_FIELD_FARAD;
    case eKW_ZEL_DMM_MEAS_TYPE_CONTINUITY:
    case eKW_ZEL_DMM_MEAS_TYPE_OHM:
        return eKW_UNIT_METER_OHM;
    case eKW_ZEL_DMM_MEAS_TYPE_FREQ:
        return eKW_UNIT_FREQ_HZ;
    case eKW_ZEL_DMM_MEAS_TYPE_TEMP:
        return eKW_UNIT_TEMPERATURE_DEG;
    default:
        return eKW_UNIT_METER_V;
    }
}

std::shared_ptr<CMeasurementBlockBase> GetBlock(KW_ZEL_DMM_MEAS_TYPE type)
{
    const CMeterMeasurementBaseData catalogue;
    const auto block = catalogue.GetMeasurementBlocks().find(type);
    return block == catalogue.GetMeasurementBlocks().end()
               ? std::make_shared<CMeasurementBlockBase>("")
               : block->second;
}

QString ListRanges(KW_ZEL_DMM_MEAS_TYPE type)
{
    QStringList ranges;
    for (const auto& [range, settings] : GetBlock(type)->GetRangeTable())
    {
        ranges.append(KW_FormatNumber(settings.range, GetMeterUnit(type)));
    }
    return ranges.join(QLatin1String(", "));
}

void AddSettings(const t_RangeSettings& settings, KW_UNIT unit, CFigures& out)
{
    out.Add("lower limit", settings.lowerLimit, unit)
        .Add("upper limit", settings.upperLimit, unit)
        .Add("divider", settings.divider)
        .Add("gain", settings.gain)
        .Add("gain stage", settings.gainStage)
        .Add("range factor", settings.rangeFactor)
        .Add("current path", GetEnumText(settings.currentSource));
}

void Range(const CArguments& in, CFigures& out)
{
    const auto type = in.Enum<KW_ZEL_DMM_MEAS_TYPE>("type");
    const KW_UNIT unit = GetMeterUnit(type);
    if (!in.Has("range"))
    {
        out.Add("ranges", ListRanges(type));
        return;
    }
    const double nominal = in.Number("range", unit);
    const KW_ZEL_METER_RANGE value = CMeterMeasurementBaseData::GetRangeAsEnumValue(nominal);
    if (GetBlock(type)->GetRangeTable().count(value) == 0)
    {
        throw CFailure(eSTATUS_USAGE, QStringLiteral("%1 has no range %2; it has %3")
                                          .arg(GetEnumText(type), KW_FormatNumber(nominal, unit),
                                               ListRanges(type)));
    }
    out.Add("range", CMeterMeasurementBaseData::GetRangeAsDoubleValue(value), unit)
        .Add("enumeration value", GetEnumText(value));
    AddSettings(CMeterMeasurementBaseData().GetRangeSettings(type, nominal), unit, out);
}

void Block(const CArguments& in, CFigures& out)
{
    const auto block = GetBlock(in.Enum<KW_ZEL_DMM_MEAS_TYPE>("type"));
    out.Add("name", QString::fromStdString(block->GetName()))
        .Add("input selection", block->GetMeasurementSettings().first)
        .Add("converter path", block->GetMeasurementSettings().second);
}

void IndexedTable(const CArguments& in, CFigures& out)
{
    const CMeterMeasurementBaseData catalogue;
    const auto row = catalogue.GetIndexedTable().find(in.Whole<INT32>("index"));
    if (row == catalogue.GetIndexedTable().end())
    {
        throw CFailure(eSTATUS_USAGE,
                       QStringLiteral("the second table has %1 rows, counted from 0")
                           .arg(static_cast<int>(catalogue.GetIndexedTable().size())));
    }
    out.Add("a", row->second.a).Add("b", row->second.b).Add("c", row->second.c);
    out.Add("d", row->second.d);
}

void VoltagePath(const CArguments& in, CFigures& out)
{
    double factor = 0.0;
    unsigned int code = 0;
    CommonHelper::GetDMMVoltagePathSettings(in.Enum<KW_ZEL_DMM_MEAS_TYPE>("type"),
                                            in.Enum<KW_PROBE_TYPE>("--probe"),
                                            in.Number("range", eKW_UNIT_METER_V), factor, code);
    out.Add("factor", factor).Add("path code", code);
}

void TestCurrent(const CArguments& in, CFigures& out)
{
    out.Add("current", CommonHelper::GetDMMCurrent(in.Enum<KW_ZEL_DMM_CURRENT>("path")),
            eKW_UNIT_LEVEL_A);
}

void RangeScale(const CArguments& in, CFigures& out)
{
    const double range = in.Number("range", eKW_UNIT_METER_V);
    out.Add("scale",
            in.IsSet("--counter") ? CommonHelper::ConvertCounterRange2VerticalScale(range)
                                  : CommonHelper::ConvertMeterRange2VerticalScale(range),
            eKW_UNIT_LEVEL_V_DIV);
}

void ConverterRate(const CArguments&, CFigures& out)
{
    out.Add("sample rate", CommonHelper::GetSamplingRateADC(), eKW_UNIT_SAMPLES_S);
}
} // namespace

t_CalculationGroup GetMeterCalculations()
{
    const t_Argument type{"type", "KW_ZEL_DMM_MEAS_TYPE"};
    return {
        "Meter and counter",
        {{"meterrange",
          "Ranges of the meter and their paths",
          {"GetRangeTable", "GetRangeAsEnumValue", "GetRangeAsDoubleValue", "GetRangeSettings"},
          {type, {"range", "Nominal range; all ranges are listed when left out", ""}},
          &Range,
          {"OHM", "DC_VOLT 10V"}},
         {"meterblock",
          "Remote control's name of a measurement, and how its input is set",
          {"GetMeasurementBlocks", "GetName", "GetMeasurementSettings"},
          {type},
          &Block,
          {"AC_VOLT"}},
         {"metertable",
          "A row of the meter's second table",
          {"GetIndexedTable"},
          {{"index", "Row, counted from 0"}},
          &IndexedTable,
          {"3"}},
         {"voltagepath",
          "Factor and switches of the meter's voltage input",
          {"GetDMMVoltagePathSettings"},
          {type, {"range", "Nominal range in V"}, {"--probe", "KW_PROBE_TYPE", "VOLTAGE_1_TO_1"}},
          &VoltagePath,
          {"AC_VOLT 100V"}},
         {"testcurrent",
          "Calibrated current of a test current path",
          {"GetDMMCurrent"},
          {{"path", "KW_ZEL_DMM_CURRENT"}},
          &TestCurrent,
          {"1_MILLI_A"}},
         {"rangescale",
          "Vertical scale of a channel that serves as meter or counter",
          {"ConvertMeterRange2VerticalScale", "ConvertCounterRange2VerticalScale"},
          {{"range", "Range in V"},
           {"--counter", "Range of the counter", "", t_Argument::eTAKES::Flag}},
          &RangeScale,
          {"10V", "300V --counter"}},
         {"meterrate",
          "Sample rate of the meter's converter, as the meter is set",
          {"GetSamplingRateADC"},
          {},
          &ConverterRate,
          {""}}}};
}
