// SPDX-License-Identifier: MIT
#include "Vectors.h"

#include "IKWFunctionZELHelpers/ZELDatabaseHelperHorizontal.h"
#include "Numbers.h"

namespace NVectors
{
namespace
{
using Horizontal = CZELDatabaseHelperHorizontal;

/** Modes, depths and lengths, one illegal value of each among them. */
struct t_Selection
{
    int acquisition;
    int depth;
    int length;
};
constexpr t_Selection kSelections[] = {{0, 0, 0}, {1, 1, 0}, {2, 2, 2}, {0, 2, 1},
                                       {3, 3, 3}, {0, 0, 2}, {1, 0, 0}};

void AddBudgets(t_Lines& lines)
{
    const auto numbers = [](int number)
    {
        return std::tuple{
            Horizontal::GetSampleRate(KW_ZEL_MODE(number)),
            Horizontal::CalculateDecimationFactorEffective(KW_ZEL_MODE(number), 4294967295U),
            Horizontal::GetNumberOfHistoryTraces(KW_ZEL_HISTORY_DEPTH(number))};
    };
    Add(lines, "Horizontal.Selections", kExact, numbers, Range(-1, 3));
    const auto budget = [](double rate, int acquisition, int depth, int length)
    {
        return Horizontal::GetMaxNumOfSamplesAfterDecimation(
            rate, KW_ZEL_ACQUISITION_MODE(acquisition), KW_ZEL_HISTORY_DEPTH(depth),
            KW_ZEL_RECORD_LENGTH(length));
    };
    // A rate is one of the three within the rounding of a quotient.
    for (const double rate : Joined(AndNeighbours({5e9}), {5.0000000000000019e9, 0.0, 1e6, 1.25e9,
                                                           2.5e9, 5e9 * (1 + 1e-14), kInf, kNan}))
    {
        for (int selection = 0; selection < 3 * 4 * 4; selection += 5)
        {
            Add(lines, "Horizontal.GetMaxNumOfSamplesAfterDecimation", kExact, budget, rate,
                selection / 16 - 1, selection / 4 % 4, selection % 4);
        }
    }
}

void AddDecimation(t_Lines& lines)
{
    const auto limited = [](double factor)
    {
        bool isLimited = false;
        const unsigned int decimation = Horizontal::LimitDecimationFactor(factor, isLimited);
        return std::tuple(decimation, isLimited);
    };
    for (const double value :
         Joined(Joined(Edges(), AndNeighbours({125000.5, 2e9, 249999.5, 250000.0})),
                Scattered(10, 0, 70)))
    {
        Add(lines, "Horizontal.LimitDecimationFactor", kExact, limited, value);
        Add(lines, "Horizontal.CalculateDecimationFactor", kExact,
            Horizontal::CalculateDecimationFactor, value, std::vector{0U, 1250U, 125000U});
    }
}

void AddRecordLengths(t_Lines& lines)
{
    const auto single = [](double time, double rate, int acquisition, int depth, int length)
    {
        unsigned int decimation = 0;
        double points = 0.0;
        Horizontal::CalculateDecimationFactorAndRecordLength(
            time, rate, KW_ZEL_ACQUISITION_MODE(acquisition), KW_ZEL_HISTORY_DEPTH(depth),
            KW_ZEL_RECORD_LENGTH(length), decimation, points);
        return std::tuple(decimation, points);
    };
    const auto both =
        [](double time, double rate, double digitalRate, int acquisition, int depth, int length)
    {
        unsigned int analog = 0;
        unsigned int digital = 0;
        double analogPoints = 0.0;
        double digitalPoints = 0.0;
        Horizontal::CalculateDecimationFactorAndRecordLengthAnalogAndDigitalSlowOrRollMode(
            time, rate, digitalRate, KW_ZEL_ACQUISITION_MODE(acquisition),
            KW_ZEL_HISTORY_DEPTH(depth), KW_ZEL_RECORD_LENGTH(length), analog, digital,
            analogPoints, digitalPoints);
        return std::tuple(analog, digital, analogPoints, digitalPoints);
    };
    // No 32-bit budget serves the last times: the search must end, and say so once.
    for (const double time : {1e-9, 1e-8, 1e-7, 1e-4, 1.00000000000000002e-4, 1.999e-4, 0.02, 1.0,
                              1.7, 750.0, 5000.0, 2e6, 1.7e9, 3e9, 1e10, 1e30, kInf})
    {
        for (const t_Selection& s : kSelections)
        {
            for (const double rate : {1.25e9, 5e9})
            {
                Add(lines, "Horizontal.CalculateDecimationFactorAndRecordLength", kExact, single,
                    time, rate, s.acquisition, s.depth, s.length);
                Add(lines, "Horizontal.AnalogAndDigitalSlowOrRollMode", kExact, both, time, rate,
                    1.25e9, s.acquisition, s.depth, s.length);
            }
            Add(lines, "Horizontal.AnalogAndDigitalSlowOrRollMode", kExact, both, time, 1.25e9, 5e9,
                s.acquisition, s.depth, s.length);
        }
    }
}

void AddDependentSettings(t_Lines& lines)
{
    const auto dependent = [](double samples, unsigned int selector, double required)
    {
        unsigned int record = 0;
        unsigned int trace = 0;
        double factor = 0.0;
        bool isHardware = false;
        double resolution = 0.0;
        Horizontal::CalculateDependentHorizontalSettings(samples, selector, 1e-3, required, record,
                                                         trace, factor, isHardware, resolution);
        return std::tuple(record, trace, factor, isHardware, resolution);
    };
    const double step = 0x1p-23;
    for (const double samples :
         Joined(Edges(), AndNeighbours({12.5, 12.5 + step, 12.5 - step, 37.5, 62.5, 62.5 + step,
                                        62.5 - step, 500.0, 1000.0, 1250.0, 1249.5, 125000.0})))
    {
        Add(lines, "Horizontal.AdjustRecordLength", kExact, Horizontal::AdjustRecordLength,
            samples);
        Add(lines, "Horizontal.CalculateInterpolationFactor", kExact,
            Horizontal::CalculateInterpolationFactor, samples, 1250.0);
        for (const unsigned int selector : {0U, 1U, 2U})
        {
            Add(lines, "Horizontal.CalculateDependentHorizontalSettings", kExact, dependent,
                samples, selector, selector == 0 ? 1000.0 : 1250.0);
        }
    }
}

void AddBoundaries(t_Lines& lines)
{
    const auto boundaries = [](double time, int percent, double position, double resolution)
    {
        double left = 0.0;
        double right = 0.0;
        Horizontal::CalculateHorizontalBoundaries(time, static_cast<UINT16>(percent), position,
                                                  resolution, left, right);
        return std::tuple{left, right, Horizontal::CalculateNbPreTriggerSamples(time, 1250, left)};
    };
    const std::vector resolutions{0.0, 8e-12, -1.6e-5, 3e-4, -3e-4, 1e-3, 1e300, kInf, kNan};
    const auto add = [&](double time, double position, double resolution, int percent)
    {
        Add(lines, "Horizontal.CalculateHorizontalBoundaries", kExact, boundaries, time, percent,
            position, resolution);
    };
    Combine(add, std::vector{1e-8, 1e-3, 5000.0, 0.0, 5e-324}, std::vector{0.0, -1.7e-5},
            resolutions, std::vector{0, 33, 50, 100});
}

void AddZoom(t_Lines& lines)
{
    const auto zoom = [](unsigned int record, double factor, unsigned int minimum)
    {
        unsigned int points = 0;
        double interpolation = 0.0;
        const bool isDone = Horizontal::CalculateZoomParameter(record, factor, 10.0, minimum,
                                                               points, interpolation);
        return std::tuple(isDone, points, interpolation);
    };
    for (const double factor : Joined(Edges(), AndNeighbours({1.7, 1e3, 2500.0, 25e3})))
    {
        for (const unsigned int record : {0U, 5U, 1250U, 4294967295U})
        {
            Add(lines, "Horizontal.CalculateZoomParameter", kExact, zoom, record, factor,
                record <= 5 ? 0U : 50U);
        }
    }
    const auto around = [](double time, double position)
    {
        double left = 0.0;
        double right = 0.0;
        Horizontal::CalculateHorizontalBoundariesZoom(time, position, left, right);
        return std::tuple{left, right, Horizontal::GetRightHorizontalBoudary(position, time)};
    };
    Add(lines, "Horizontal.CalculateHorizontalBoundariesZoom", kExact, around, 4.0, 1.0);
}
} // namespace

void AddTimebase(t_Lines& lines)
{
    AddBudgets(lines);
    AddDecimation(lines);
    AddRecordLengths(lines);
    AddDependentSettings(lines);
    AddBoundaries(lines);
    AddZoom(lines);
}
} // namespace NVectors
