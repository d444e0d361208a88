// SPDX-License-Identifier: MIT
#include "Commands.h"
#include "Figures.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperCommon.h"
#include "LabelList/LabelListConversion.h"
#include "MeterBase/MeterMeasurementBaseData.h"

#include <functional>
#include <stdexcept>
#include <typeinfo>

namespace
{
/** The unit that a temperature is written in; Celsius when none is. */
KW_UNIT GetTemperatureUnit(const std::string& text)
{
    const char last = text.empty() ? '\0' : text.back();
    return last == 'K' ? eKW_UNIT_TEMPERATURE_K
                       : (last == 'F' ? eKW_UNIT_TEMPERATURE_F : eKW_UNIT_TEMPERATURE_DEG);
}

struct t_Temperature
{
    std::string probe;
    std::string resistance;

    void Declare(CLI::App& command)
    {
        command.add_option("probe", probe, "Platinum thermometer, of KW_PROBE_TYPE")->required();
        command.add_option("resistance", resistance, "Resistance in Ω")->required();
    }

    t_Answer Run(CSession& session) const
    {
        using Helper = CZELDatabaseHelperCommon;
        CFigures figures(session, "temperature");
        const double celsius = Helper::ConvertResistance2Temperature(
            ReadArgument<KW_PROBE_TYPE>(probe),
            ReadArgument(resistance, eKW_UNIT_IMPEDANCE_OHM, "RESISTANCE"));
        for (const KW_UNIT unit :
             {eKW_UNIT_TEMPERATURE_DEG, eKW_UNIT_TEMPERATURE_F, eKW_UNIT_TEMPERATURE_K})
        {
            figures.Add(QStringLiteral("temperature in ") + GetUnitText(unit),
                        Helper::ConvertTempCelsius(celsius, unit), unit);
        }
        return figures.Send();
    }
};

struct t_Resistance
{
    std::string probe;
    std::string temperature;

    void Declare(CLI::App& command)
    {
        command.add_option("probe", probe, "Platinum thermometer, of KW_PROBE_TYPE")->required();
        command
            .add_option("temperature", temperature, "Temperature in °C, or with its unit °F or K")
            ->required();
    }

    t_Answer Run(CSession& session) const
    {
        using Helper = CZELDatabaseHelperCommon;
        CFigures figures(session, "resistance");
        const KW_UNIT unit = GetTemperatureUnit(temperature);
        const double celsius =
            Helper::ConvertTemp2Celsius(ReadArgument(temperature, unit, "TEMPERATURE"), unit);
        return figures
            .Add("resistance",
                 Helper::ConvertTemperature2Resistance(ReadArgument<KW_PROBE_TYPE>(probe), celsius),
                 eKW_UNIT_IMPEDANCE_OHM)
            .Send();
    }
};

struct t_MeterRange
{
    std::string type;
    std::string range;

    void Declare(CLI::App& command)
    {
        command.add_option("type", type, "KW_ZEL_DMM_MEAS_TYPE")->required();
        command.add_option("range", range, "Nominal range; all ranges are listed when left out");
    }

    t_Answer Run(CSession& session) const;
};

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

CMeasurementBlockBase::t_RangeTable GetRanges(KW_ZEL_DMM_MEAS_TYPE type)
{
    const CMeterMeasurementBaseData catalogue;
    const auto block = catalogue.GetMeasurementBlocks().find(type);
    return block == catalogue.GetMeasurementBlocks().end() ? CMeasurementBlockBase::t_RangeTable{}
                                                           : block->second->GetRangeTable();
}

QString ListRanges(KW_ZEL_DMM_MEAS_TYPE type)
{
    QStringList ranges;
    for (const auto& [range, settings] : GetRanges(type))
    {
        ranges.append(ShowNumber(settings.range, GetMeterUnit(type)));
    }
    return ranges.join(QLatin1String(", "));
}

t_Answer t_MeterRange::Run(CSession& session) const
{
    CFigures figures(session, "meterrange");
    const auto measurement = ReadArgument<KW_ZEL_DMM_MEAS_TYPE>(type);
    const KW_UNIT unit = GetMeterUnit(measurement);
    if (range.empty())
    {
        return figures.Add("ranges", ListRanges(measurement)).Send();
    }
    const double nominal = ReadArgument(range, unit, "RANGE");
    const KW_ZEL_METER_RANGE value = CMeterMeasurementBaseData::GetRangeAsEnumValue(nominal);
    const auto ranges = GetRanges(measurement);
    const auto found = ranges.find(value);
    if (found == ranges.end())
    {
        throw CFailure(eSTATUS_USAGE, QStringLiteral("%1 has no range %2; it has %3")
                                          .arg(GetEnumText(measurement), ShowNumber(nominal, unit),
                                               ListRanges(measurement)));
    }
    const t_RangeSettings& settings = found->second;
    return figures.Add("range", settings.range, unit)
        .Add("enumeration value", GetEnumText(value))
        .Add("lower limit", settings.lowerLimit, unit)
        .Add("upper limit", settings.upperLimit, unit)
        .Add("divider", settings.divider)
        .Add("gain", settings.gain)
        .Add("gain stage", settings.gainStage)
        .Add("range factor", settings.rangeFactor)
        .Add("current path", GetEnumText(settings.currentSource))
        .Send();
}

/** What raw and physical values of a bus signal have in common. */
struct t_SignalCoding
{
    std::string type = "UNSIGNED_INT";
    std::string factor = "1";
    std::string offset = "0";

    void Declare(CLI::App& command)
    {
        command.add_option("--type", type, "KW_SIGNAL_TRANSLATION_VALUE_TYPE")
            ->capture_default_str();
        command.add_option("--factor", factor, "Physical value per count")->capture_default_str();
        command.add_option("--offset", offset, "Physical value of a raw 0")->capture_default_str();
    }

    KW_SIGNAL_TRANSLATION_VALUE_TYPE GetType() const
    {
        return ReadArgument<KW_SIGNAL_TRANSLATION_VALUE_TYPE>(type);
    }
    double GetFactor() const { return ReadArgument(factor, eKW_UNIT_NONE, "FACTOR"); }
    double GetOffset() const { return ReadArgument(offset, eKW_UNIT_NONE, "OFFSET"); }
};

/** A conversion that does not fit its type is the only thing that the conversions throw. */
QString Convert(const std::function<std::string()>& conversion)
{
    try
    {
        return QString::fromStdString(conversion());
    }
    catch (const std::bad_cast&)
    {
        throw CFailure(eSTATUS_REFUSED, QStringLiteral("the value does not fit the signal's type"));
    }
    catch (const std::out_of_range&)
    {
        throw CFailure(eSTATUS_REFUSED, QStringLiteral("a signed integer has at most 64 bits"));
    }
}

struct t_Raw
{
    std::string value;
    UINT16 bits = 0;
    t_SignalCoding coding;

    void Declare(CLI::App& command)
    {
        command.add_option("value", value, "Physical value")->required();
        command.add_option("--bits", bits, "Number of bits of the signal")->required();
        coding.Declare(command);
    }

    t_Answer Run(CSession& session) const
    {
        CFigures figures(session, "raw");
        const double physical = ReadArgument(value, eKW_UNIT_NONE, "VALUE");
        const QString text = Convert(
            [&] {
                return getRawValue(physical, bits, coding.GetType(), coding.GetFactor(),
                                   coding.GetOffset());
            });
        return figures.Add("bits", text).Send();
    }
};

struct t_Physical
{
    std::string bits;
    t_SignalCoding coding;

    void Declare(CLI::App& command)
    {
        command.add_option("bits", bits, "Bits of the signal, most significant first")->required();
        coding.Declare(command);
    }

    t_Answer Run(CSession& session) const
    {
        CFigures figures(session, "physical");
        const QString text = Convert(
            [&] {
                return getPhysicalValue(bits, coding.GetType(), coding.GetFactor(),
                                        coding.GetOffset());
            });
        return figures.Add("value", text).Send();
    }
};
} // namespace

void AddMeterCalculations(CLI::App& calc, t_Run& run)
{
    AddCommand<t_Temperature>(calc, run, "temperature", "Temperature of a platinum thermometer",
                              "Example:\n  zelctl calc temperature PT100 138.5");
    AddCommand<t_Resistance>(calc, run, "resistance", "Resistance of a platinum thermometer",
                             "Example:\n  zelctl calc resistance PT1000 212°F");
    AddCommand<t_MeterRange>(calc, run, "meterrange", "Ranges of the meter and their paths",
                             "Examples:\n  zelctl calc meterrange OHM\n"
                             "  zelctl calc meterrange DC_VOLT 10V");
    AddCommand<t_Raw>(calc, run, "raw", "Bits of a physical value",
                      "Example:\n  zelctl calc raw 2500 --bits 16 --factor 0.25");
    AddCommand<t_Physical>(calc, run, "physical", "Physical value of bits",
                           "Example:\n  zelctl calc physical 11110110 --type SIGNED_INT");
}
