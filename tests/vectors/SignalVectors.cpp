// SPDX-License-Identifier: MIT
#include "Vectors.h"

#include "IKWFunctionZELHelpers/ZELDatabaseHelperCommon.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperVertical.h"
#include "LabelList/LabelListConversion.h"
#include "MeterBase/MeterMeasurementBaseData.h"

#include <boost/numeric/conversion/cast.hpp>
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
    for (const double value : {-273.15, -200.0, -50.1, -1e-9, 0.0, 1e-9, 25.5, 99.9, 849.9, 850.0,
                               850.1, 1e9, 760.0, 3900.0, 7600.1})
    {
        for (int type = 14; type <= 17; ++type)
        {
            const auto platinum = [](double x, int probe)
            {
                const auto sensor = KW_PROBE_TYPE(probe);
                return std::tuple(Common::ConvertTemperature2Resistance(sensor, x),
                                  Common::ConvertResistance2Temperature(sensor, x));
            };
            Add(lines, "Common.Platinum", kExact, platinum, value, type);
        }
        const auto units = [](double x, KW_UNIT unit) {
            return std::tuple(Common::ConvertTempCelsius(x, unit),
                              Common::ConvertTemp2Celsius(x, unit));
        };
        Add(lines, "Common.Temperature", kExact, units, value, eKW_UNIT_TEMPERATURE_F);
        Add(lines, "Common.Temperature", kExact, units, value, eKW_UNIT_TEMPERATURE_K);
    }
}

void AddMeterRanges(t_Lines& lines)
{
    const auto scales = [](double range)
    {
        return std::tuple(Common::ConvertMeterRange2VerticalScale(range),
                          Common::ConvertCounterRange2VerticalScale(range),
                          CMeterMeasurementBaseData::GetRangeAsEnumValue(range));
    };
    std::vector<double> nominal;
    for (int range = 0; range <= 16; ++range)
    {
        nominal.push_back(
            CMeterMeasurementBaseData::GetRangeAsDoubleValue(KW_ZEL_METER_RANGE(range)));
        Add(lines, "Meter.GetRangeAsDoubleValue", kExact,
            CMeterMeasurementBaseData::GetRangeAsDoubleValue, KW_ZEL_METER_RANGE(range));
    }
    const std::vector<double> rounded = {0.1, 0.3, 3.0, 30.0, 300.0, 0.0995, 0.1005, 2.9996, 1e19};
    for (const double range :
         Joined(Joined(AndNeighbours(nominal), AndNeighbours(rounded)), Edges()))
    {
        Add(lines, "Meter.Scales", kExact, scales, range);
    }
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
        for (const double range : {1e-8, 1.0, 10.0, 100.0, 1000.0, 1e7, 2.0})
            Add(lines, "Meter.Path", kExact, path, type, type + 1, range);
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
    catch (const std::out_of_range&)
    {
        return "out_of_range";
    }
}

std::vector<std::string> Patterns()
{
    std::vector<std::string> patterns = {"", "0", "1", "10", "X1", "01101", "1x01"};
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
    for (const double scale : Joined(Joined(Steps(), Edges()), Scattered(20, -60, 60)))
    {
        Add(lines, "Vertical.GetNextHighestScale", kExact, upper, scale);
        Add(lines, "Vertical.GetNextLowestScale", kExact, Vertical::GetNextLowestScale, scale);
        Add(lines, "Vertical.GetNextHighestScaleOfRange", kExact, of, scale);
    }
    const auto values = [](double a, double b, double c)
    {
        return std::tuple(
            Vertical::GetPhysicalValueRange(a, b), Vertical::GetPhysicalValueOffset(a, b, c),
            Vertical::GetRangeFromTopBottom(a, b), Vertical::GetOffsetFromTopBottom(a, b));
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
    const auto factor = [](double value)
    {
        return std::tuple(Common::ConvertProbeFactor(value, eKW_UNIT_LEVEL_V_V),
                          Common::ConvertProbeFactor(value, eKW_UNIT_LEVEL_V_A),
                          Common::GetCalFrequency(value));
    };
    for (const double value :
         Joined(Joined(Edges(), AndNeighbours({900.0, 1e3, 1.1e3, 1e6})), Scattered(10, -10, 30)))
    {
        Add(lines, "Common.Factors", kExact, factor, value);
    }
    AddTemperatures(lines);
    AddMeterRanges(lines);
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
    const UINT16 lengths[] = {16, 8, 40, 32, 64, 65};
    for (const double value : Edges())
    {
        for (int type = 0; type <= 5; ++type)
            Add(lines, "Label.getRawValue", kExact, raw, value, lengths[type], type, 1.0, 0.0);
    }
    for (const double value : AndNeighbours({65535.5, -32768.5, 3.4e38, 1e-46, 1234.5678}))
    {
        for (int type = 0; type <= 5; ++type)
            Add(lines, "Label.getRawValue", kExact, raw, value, lengths[type], type, -0.1, 3.0);
    }
    for (const std::string& bits : Patterns())
    {
        for (int type = 0; type <= 5; ++type)
        {
            Add(lines, "Label.getPhysicalValue", kExact, physical, bits, type, 1.0, 0.0);
            Add(lines, "Label.getPhysicalValue", kExact, physical, bits, type, -0.37, 1e-3);
        }
    }
}
} // namespace NVectors
