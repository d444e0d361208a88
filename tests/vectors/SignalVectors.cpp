// SPDX-License-Identifier: MIT
#include "Vectors.h"

#include "Analysis/MeasurementRules.h"
#include "EnumNameInfo.h"
#include "Harmonic/HarmonicLimits.h"
#include "IKWFunctionZELHelpers/ApplicationDefinitions.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperCommon.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperVertical.h"
#include "LabelList/LabelListConversion.h"
#include "Mathematics/UnitRules.h"
#include "MeterBase/MeterMeasurementBaseData.h"
#include "Numbers.h"

#include <boost/numeric/conversion/cast.hpp>
#include <limits>
#include <stdexcept>

namespace NVectors
{
namespace
{
using Common = CZELDatabaseHelperCommon;
using Vertical = CZELDatabaseHelperVertical;

/** What a decade and its steps have to decide between. */
std::vector<double> Steps()
{
    std::vector<double> steps;
    for (const double decade : {1e-9, 1e-3, 0.1, 1.0, 100.0, 1e12})
    {
        for (const double step : {1.0, 2.0, 4.0, 5.0, 2.0 + 2e-8, 3.3, 7.0})
            steps.push_back(step * decade);
    }
    return AndNeighbours(steps);
}

void AddTemperatures(t_Lines& lines)
{
    const auto platinum = [](double x, int probe)
    {
        const auto sensor = KW_PROBE_TYPE(probe);
        return std::tuple{Common::ConvertTemperature2Resistance(sensor, x),
                          Common::ConvertResistance2Temperature(sensor, x)};
    };
    const auto units = [](double x, int number)
    {
        const auto unit = KW_UNIT(number);
        return std::tuple{Common::ConvertTempCelsius(x, unit),
                          Common::ConvertTemp2Celsius(x, unit)};
    };
    // Beside the seams of the formulas, and where the last digits depend on the order of the terms.
    for (const double value :
         Joined(AndNeighbours({0.0, 100.0, 500.0, 850.0, 1000.0}),
                {-1000.0, -273.15, -200.0, -199.0, -50.1, -1e-9, 1e-9, 1.02,   18.423, 25.5, 99.9,
                 123.0,   400.0,   761.3,  849.9,  850.1, 900.0, 1e9,  3900.0, 7600.1, kInf, kNan}))
    {
        Add(lines, "Common.Platinum", kExact, platinum, value, std::vector{-1, 14, 15, 16, 17, 18});
        Add(lines, "Common.Temperature", kExact, units, value, std::vector{28, 84, 85, 86, -1});
    }
}

void AddProbes(t_Lines& lines)
{
    const auto scope = [](int type, int user)
    {
        const auto s = Common::GetProbeSettingsScope({KW_PROBE_TYPE(type), 42.5, KW_UNIT(user)});
        return std::tuple(s.factor, s.unit, s.attributes);
    };
    const auto meter = [](int measurement, int type, int user)
    {
        auto unit = KW_UNIT(-1);
        const auto s = Common::GetProbeSettingsDmm(
            KW_ZEL_DMM_MEAS_TYPE(measurement), {KW_PROBE_TYPE(type), 42.5, KW_UNIT(user)}, unit);
        return std::tuple(s.factor, s.unit, unit);
    };
    for (int type = -1; type <= 20; ++type)
    {
        for (const int user : {28, 42, 43})
        {
            Add(lines, "Common.GetProbeSettingsScope", kExact, scope, type, user);
            for (int measurement = -1; measurement <= 9; ++measurement)
            {
                if (type == 18 || user == 28)
                    Add(lines, "Common.GetProbeSettingsDmm", kExact, meter, measurement, type,
                        user);
            }
        }
    }
    const auto unit = [](int number)
    {
        return std::tuple{Common::GetProbeUnit(KW_UNIT(number)),
                          Common::GetProbeFactorUnit(KW_UNIT(number))};
    };
    const auto factor = [](double value, int number)
    { return Common::ConvertProbeFactor(value, KW_UNIT(number)); };
    for (const int number : {-1, 28, 42, 77, 78, 91, 95})
    {
        Add(lines, "Common.ProbeUnits", kExact, unit, number);
        Add(lines, "Common.ConvertProbeFactor", kExact, factor, std::vector{8.0, 0.0, -0.0},
            number);
    }
}

/** What functions answer to each value of an enumeration, and to what is none. */
void AddNumbers(t_Lines& lines)
{
    const auto frequency = [](int n) { return Common::GetCalFrequency(KW_ZEL_CAL_FREQ(n)); };
    const auto gain = [](int n) { return Common::GetLfGain_dB(KW_ZEL_LPF_GAIN(n)); };
    const auto current = [](int n) { return Common::GetDMMCurrent(KW_ZEL_DMM_CURRENT(n)); };
    const auto bytes = [](int n) { return Common::GetNOfBytesPerSample(KW_DATAFORMAT(n)); };
    const auto size = [](int n) { return Common::GetSampleSize(KW_SIGNAL_FORMAT(n)); };
    std::vector<int> numbers = Range(-2, 15);
    numbers.front() = std::numeric_limits<int>::min();
    for (const int number : numbers)
    {
        Add(lines, "Common.GetDMMCurrent", kExact, current, number);
        Add(lines, "Common.GetLfGain_dB", kExact, gain, number);
        Add(lines, "Common.GetCalFrequency", kExact, frequency, number);
        Add(lines, "Common.GetNOfBytesPerSample", kExact, bytes, number);
        Add(lines, "Common.GetSampleSize", kExact, size, number);
    }
    const auto overload = [] { return Common::GetOverloadFactor(); };
    Add(lines, "Common.GetOverloadFactor", kExact, overload);
}

/** The catalogue of the meter: every type with every range, those that it lacks among them. */
void AddMeterCatalogue(t_Lines& lines)
{
    const auto text = [](const t_RangeSettings& s)
    {
        return std::tuple(s.range, s.lowerLimit, s.upperLimit, s.divider, s.gain, s.gainStage,
                          s.rangeFactor, s.currentSource);
    };
    const CMeterMeasurementBaseData catalogue;
    for (const auto& [type, block] : catalogue.GetMeasurementBlocks())
    {
        const auto head = [&block = block](KW_ZEL_DMM_MEAS_TYPE)
        {
            const auto [input, path] = block->GetMeasurementSettings();
            return std::tuple{block->GetName(), input, path, block->GetRangeTable().size()};
        };
        Add(lines, "Meter.Block", kExact, head, type);
        const auto settings = [&, &block = block](KW_ZEL_DMM_MEAS_TYPE, int number)
        { return text(block->GetRangeSettings(KW_ZEL_METER_RANGE(number))); };
        Add(lines, "Meter.GetRangeSettings", kExact, settings, type, Range(-1, 16));
    }
    for (const auto& [index, row] : catalogue.GetIndexedTable())
    {
        const auto figures = [&row = row](INT32) { return std::tuple(row.a, row.b, row.c, row.d); };
        Add(lines, "Meter.GetIndexedTable", kExact, figures, index);
    }
}

void AddMeterRanges(t_Lines& lines)
{
    const auto scales = [](double range)
    {
        return std::tuple{Common::ConvertMeterRange2VerticalScale(range),
                          Common::ConvertCounterRange2VerticalScale(range),
                          CMeterMeasurementBaseData::GetRangeAsEnumValue(range)};
    };
    std::vector<double> nominal;
    for (int number = -1; number <= 16; ++number)
    {
        const auto range = KW_ZEL_METER_RANGE(number);
        if (number >= 0 && number < 16)
            nominal.push_back(CMeterMeasurementBaseData::GetRangeAsDoubleValue(range));
        Add(lines, "Meter.GetRangeAsDoubleValue", kExact,
            CMeterMeasurementBaseData::GetRangeAsDoubleValue, range);
    }
    // Halves of a thousandth go away from zero; one is 100 above 2^32 thousandths.
    const std::vector<double> rounded = {0.1,         0.3,     3.0,     30.0, 300.0, 0.0995,
                                         0.1005,      0.09949, 0.10049, -0.1, 2.0,   1.0000001,
                                         4294967.396, 2.9996,  1e9,     1e19};
    Add(lines, "Meter.Scales", kExact, scales,
        Joined(Joined(AndNeighbours(nominal), AndNeighbours(rounded)), Edges()));
    const auto path = [](int type, int probe, double range)
    {
        double factor = 0.0;
        unsigned int code = 0;
        Common::GetDMMVoltagePathSettings(KW_ZEL_DMM_MEAS_TYPE(type), KW_PROBE_TYPE(probe), range,
                                          factor, code);
        const t_RangeSettings s =
            CMeterMeasurementBaseData().GetRangeSettings(KW_ZEL_DMM_MEAS_TYPE(type), range);
        return std::tuple(factor, code, s.lowerLimit, s.upperLimit, s.divider, s.gain, s.gainStage,
                          s.rangeFactor, s.currentSource);
    };
    for (int type = 0; type <= 9; ++type)
    {
        for (const double range : {1e-8, 1.0, 10.0, 100.0, 1000.0, 1e4, 1e7, 2.0})
        {
            Add(lines, "Meter.Path", kExact, path, type, std::vector{0, type + 1, 6, 18}, range);
        }
    }
}

std::string OrWhy(const std::function<std::string()>& conversion)
{
    try
    {
        return conversion();
    }
    catch (const boost::numeric::positive_overflow&)
    {
        return "positive_overflow";
    }
    catch (const boost::numeric::negative_overflow&)
    {
        return "negative_overflow";
    }
    catch (const std::out_of_range& error)
    {
        return std::string(error.what(), std::string(error.what()).find(':', 14));
    }
}

/** A text with as many digits behind it as make up a length. */
std::string Bits(const std::string& start, std::size_t length, char digit = '0')
{
    return start + std::string(length - start.size(), digit);
}

std::vector<std::string> Patterns()
{
    std::vector<std::string> patterns = {
        "", "0", "1", "10", "X1", "01101", "1x01", "12", "-1", " 1", "0b1",
        // 1, the next, the least and the most of a float, its infinity; as many of a double.
        Bits("001111111", 32), Bits("001111111", 31) + "1", Bits("011111110", 31, '1') + "1",
        Bits("0", 31) + "1", Bits("0", 9, '1') + Bits("0", 23), Bits("1", 9, '1') + Bits("0", 23),
        Bits("001111111111", 64), Bits("001111111111", 63) + "1", Bits("0011111111111", 64),
        Bits("0", 12, '1') + Bits("0", 52), Bits("1", 12, '1') + Bits("0", 52), "1" + Bits("", 63)};
    for (const std::size_t length : {8, 31, 32, 33, 64})
    {
        for (const char* const unit : {"0", "1", "10", "011", "0000000001"})
        {
            std::string text;
            while (text.size() < length)
                text += unit;
            patterns.push_back(text.substr(0, length));
        }
    }
    return patterns;
}
} // namespace

void AddVertical(t_Lines& lines)
{
    const auto upper = [](double scale) { return Vertical::GetNextHighestScale(scale); };
    const auto of = [](double range) { return Vertical::GetNextHighestScale(range, 8); };
    // The allowance is a relative 1e-8 upward; it passes only the decade on unchanged.
    const std::vector<double> beside = {-0.25,      0.3,      0.45,      0.6,       0.7,
                                        1.001,      5.5,      9.99,      7e22,      1 + 0.9e-8,
                                        1 + 1.1e-8, 2 + 5e-8, 4 + 15e-8, 4 + 17e-8, 5 + 24e-8,
                                        5 + 26e-8,  2 - 2e-8, 10 - 1e-8, 5e-324};
    for (const double scale :
         Joined(Joined(Joined(Steps(), beside), Edges()), Scattered(20, -60, 60)))
    {
        Add(lines, "Vertical.GetNextHighestScale", kExact, upper, scale);
        Add(lines, "Vertical.GetNextLowestScale", kExact, Vertical::GetNextLowestScale, scale);
        Add(lines, "Vertical.GetNextHighestScaleOfRange", kExact, of, scale);
    }
    const auto divided = [](double range, UINT32 divisions)
    { return Vertical::GetNextHighestScale(range, divisions); };
    Add(lines, "Vertical.GetNextHighestScaleOfRange", kExact, divided, 8e9,
        std::vector{0U, 8U, 4000000000U});
    const auto values = [](double a, double b, double c)
    {
        return std::tuple{
            Vertical::GetPhysicalValueRange(a, b), Vertical::GetPhysicalValueOffset(a, b, c),
            Vertical::GetRangeFromTopBottom(a, b), Vertical::GetOffsetFromTopBottom(a, b)};
    };
    const std::vector<double> all = Scattered(31, -40, 40);
    for (std::size_t i = 0; i + 2 < all.size(); ++i)
    {
        // With factors of full length a fused multiplication would show.
        Add(lines, "Vertical.Values", kExact, values, all[i] * all[i + 1], all[i], all[i + 1]);
    }
}

void AddProbesAndMeter(t_Lines& lines)
{
    const auto selection = [](double value) { return Common::GetCalFrequency(value); };
    // A deviation of 10 % is too much.
    Add(lines, "Common.GetCalFrequency", kExact, selection,
        Joined(Joined(Edges(), AndNeighbours({1192.0928955078, 152587.890625, 4882812.5, 19531250.0,
                                              40e6, 35156250.0, 42968750.0, 30e6})),
               {35156251.0, 42968749.0, -4882812.5}));
    AddNumbers(lines);
    AddProbes(lines);
    AddTemperatures(lines);
    AddMeterCatalogue(lines);
    AddMeterRanges(lines);
}

void AddApplication(t_Lines& lines)
{
    using namespace NApplicationDefinitions;
    const auto channels = [](int number)
    {
        const auto channel = KW_ZEL_CHANNEL(number);
        return std::tuple{IsAnalogChannel(channel),
                          IsDigitalChannel(channel),
                          IsSerialBusChannel(channel),
                          IsHardwareInputChannel(channel),
                          IsAcquisitionChannel(channel),
                          MapApplicationChannelToAnalogChannel(channel),
                          RequiresLTG(eKW_ZEL_TRIGGER_TYPE_EDGE, channel),
                          RequiresLTG(eKW_ZEL_TRIGGER_TYPE_PATTERN, channel)};
    };
    const auto triggers = [](int number)
    {
        const auto type = KW_ZEL_TRIGGER_TYPE(number);
        return std::tuple{IsAnalogTrigger(type), IsSerialBusTrigger(type), IsLogicTrigger(type)};
    };
    for (int number = -1; number <= 21; ++number)
    {
        Add(lines, "Application.Channel", kExact, channels, number);
        Add(lines, "Application.Trigger", kExact, triggers, number);
    }
}

void AddUnits(t_Lines& lines)
{
    const auto name = [](KW_UNIT unit)
    { return GetStaticEnumNameInfo<KW_UNIT>().GetSerialName(unit).toStdString(); };
    const KW_UNIT units[] = {
        eKW_UNIT_NONE,          eKW_UNIT_LEVEL_V,       eKW_UNIT_LEVEL_A,
        eKW_UNIT_LEVEL_W,       eKW_UNIT_IMPEDANCE_OHM, eKW_UNIT_IMPEDANCE_SIEMENS,
        eKW_UNIT_FREQ_SEC,      eKW_UNIT_FREQ_HZ,       eKW_UNIT_LEVEL_V_SQUARE,
        eKW_UNIT_V_S,           eKW_UNIT_A_S,           eKW_UNIT_LEVEL_V_PER_S,
        eKW_UNIT_LEVEL_A_PER_S, eKW_UNIT_NOT_DEFINED};
    for (const KW_UNIT a : units)
    {
        const auto ofTime = [&](const std::string&)
        {
            return std::tuple{name(NUnits::TimesSecond(a)), name(NUnits::PerSecond(a)),
                              name(NUnits::PerDivision(a))};
        };
        Add(lines, "Unit.OfTime", kExact, ofTime, name(a));
        for (const KW_UNIT b : units)
        {
            const auto ofTwo = [&](const std::string&, const std::string&) {
                return std::tuple{name(NUnits::Product(a, b)), name(NUnits::Quotient(a, b))};
            };
            Add(lines, "Unit.ProductAndQuotient", kExact, ofTwo, name(a), name(b));
        }
    }
    const CEnumNameInfo& quantities = GetStaticEnumNameInfo<KW_ZEL_MEASUREMENT_TYPE>();
    for (const KW_UNIT second : {eKW_UNIT_LEVEL_V, eKW_UNIT_LEVEL_A})
    {
        for (INT32 type = 0; type < quantities.GetEnumSize(); ++type)
        {
            const auto of = [&](const std::string&, const std::string&)
            {
                const auto quantity = KW_ZEL_MEASUREMENT_TYPE(type);
                const KW_UNIT unit =
                    NMeasurementRules::UnitOfQuantity(quantity, eKW_UNIT_LEVEL_V, second);
                return std::tuple{name(unit), NMeasurementRules::IsDigitalQuantity(quantity)};
            };
            Add(lines, "Unit.OfQuantity", kExact, of, quantities.GetSerialName(type).toStdString(),
                name(second));
        }
    }
}

void AddHarmonics(t_Lines& lines)
{
    const auto limit = [](int standard, double power, double ratio, int order)
    {
        const auto limits =
            NHarmonicLimits::OfStandard(KW_HMA_STANDARD(standard), {power, 20.0, 0.9, ratio, 60.0});
        const auto found = limits.orders.find(static_cast<UINT32>(order));
        return std::tuple{found == limits.orders.end() ? 0.0 : found->second, limits.scale,
                          limits.thd.value_or(0.0), limits.pwhd.value_or(0.0)};
    };
    // Some look at the power, EN 61000-3-12 at the short circuit, between two of its rows.
    for (int standard = 0; standard <= eKW_HMA_STANDARD_RTCA_DO_160_THREE_PHASE; ++standard)
    {
        for (const double power : {4.9, 25.0, 75.0})
            Add(lines, "Harmonic.OfStandard", kExact, limit, standard, power, 33.0, Range(2, 5));
        Add(lines, "Harmonic.OfStandard", kExact, limit, standard, 100.0, 33.0, Range(1, 42));
        for (const int order : {3, 5, 8, 13})
        {
            Add(lines, "Harmonic.OfStandard", kExact, limit, standard, 1000.0, 49.5, order);
            Add(lines, "Harmonic.OfStandard", kExact, limit, standard, 1000.0, 350.0, order);
        }
    }
}

void AddLabels(t_Lines& lines)
{
    const auto raw = [](double physical, UINT16 length, int type, double slope, double offset)
    {
        return OrWhy(
            [=] {
                return getRawValue(physical, length, KW_SIGNAL_TRANSLATION_VALUE_TYPE(type), slope,
                                   offset);
            });
    };
    const auto physical = [](const std::string& bits, int type, double slope, double offset)
    {
        return OrWhy(
            [=] {
                return getPhysicalValue(bits, KW_SIGNAL_TRANSLATION_VALUE_TYPE(type), slope,
                                        offset);
            });
    };
    // One length behind each type: where a value of that type ends, or just does not fit.
    const UINT16 lengths[] = {16, 8, 40, 32, 64, 65};
    for (const double value : Edges())
    {
        for (int type = 0; type <= 5; ++type)
            Add(lines, "Label.getRawValue", kExact, raw, value, lengths[type], type, 1.0, 0.0);
    }
    for (const double value : AndNeighbours({65535.5, -32768.5, -0.5, 3.4028234663852886e38, 1e-46,
                                             1234.5678, 2147483647.5, -2147483648.5}))
    {
        for (int type = 0; type <= 5; ++type)
            Add(lines, "Label.getRawValue", kExact, raw, value, lengths[type], type, -0.1, 3.0);
        Add(lines, "Label.getRawValue", kExact, raw, value, UINT16{16}, 0, 1.0, 0.0);
        Add(lines, "Label.getRawValue", kExact, raw, value, UINT16{33}, 2, 1.0, 0.0);
        Add(lines, "Label.getRawValue", kExact, raw, value, UINT16{32}, 3, 1.0, 0.0);
    }
    // Too short and too long, by factors that are none; what has no bits is shown as X.
    for (const double value : {5.0, 2.5, -2.5, 65535.4, 4661.0, 1.0000000000000011, 1e10})
    {
        for (int type = 0; type <= 5; ++type)
        {
            Add(lines, "Label.getRawValue", kExact, raw, value,
                std::vector<UINT16>{0, 3, 16, 32, 64, 65}, type, 1.0, 0.0);
            Add(lines, "Label.getRawValue", kExact, raw, value, UINT16{64}, type,
                std::vector{0.0, -0.0, 2.0, 1e-320}, kInf);
        }
    }
    for (const std::string& bits : Patterns())
    {
        for (int type = 0; type <= 5; ++type)
        {
            Add(lines, "Label.getPhysicalValue", kExact, physical, bits, type, 1.0, 0.0);
            Add(lines, "Label.getPhysicalValue", kExact, physical, bits, type, -0.37, 1e-3);
            // What is left of large numbers, and of small ones.
            Add(lines, "Label.getPhysicalValue", kExact, physical, bits, type, 1.0, -2147483646.0);
            Add(lines, "Label.getPhysicalValue", kExact, physical, bits, type, 0x1p52, -0x1p52);
        }
    }
    Add(lines, "Label.getPhysicalValue", kExact, physical, std::string("1"), 0,
        std::vector{123456.5, 1234567.0, 0.0001, 0.00001}, 0.0);
    // There is no zero.
    Add(lines, "Label.getPhysicalValue", kExact, physical, Bits("", 64), 4, 0x1p1000, 0.0);
}
} // namespace NVectors
