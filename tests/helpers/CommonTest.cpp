// SPDX-License-Identifier: MIT
#include "AllocationCount.h"
#include "HelperCases.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperCommon.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperVertical.h"
#include "MeterBase/MeterMeasurementBaseData.h"
#include "Numbers.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <functional>
#include <limits>
#include <string>
#include <vector>

namespace
{
using Common = CZELDatabaseHelperCommon;

/** A function that answers a number for each value 0, 1, … of an enumeration. */
struct t_NumberTable
{
    std::string function;
    std::function<double(INT32)> answer;
    std::vector<double> numbers;
    double fallback;
    std::string report; ///< "#" stands for the illegal value
};

template <typename T, typename V>
T As(V value)
{
    return static_cast<T>(value);
}

const t_NumberTable kNumberTables[] = {
    {"GetDMMCurrent",
     [](INT32 v) { return Common::GetDMMCurrent(As<KW_ZEL_DMM_CURRENT>(v)); },
     {1.0, 0.001004016, 0.0001012556, 1.013418e-05, 1.00253e-06, 1.003384e-07},
     1.0,
     "Invalid current path: #"},
    {"GetLfGain_dB",
     [](INT32 v) { return Common::GetLfGain_dB(As<KW_ZEL_LPF_GAIN>(v)); },
     {-0.134, -0.07, -0.064, -0.046, -0.003, 0.01, 0.064, 0.125},
     0.0,
     "Undefined enum value."},
    {"GetCalFrequency",
     [](INT32 v) { return Common::GetCalFrequency(As<KW_ZEL_CAL_FREQ>(v)); },
     {0.0, 39062500.0, 19531250.0, 4882812.5, 152587.890625,
      std::bit_cast<double>(UINT64{0x4092A05F1FFFFFF5})},
     0.0,
     "Undefined enum value."},
    {"GetNOfBytesPerSample",
     [](INT32 v) { return Common::GetNOfBytesPerSample(As<KW_DATAFORMAT>(v)); },
     {0, 4, 8, 1, 2, 4, 1, 2},
     0,
     "unsupported format: #"},
    {"GetSampleSize",
     [](INT32 v) { return Common::GetSampleSize(As<KW_SIGNAL_FORMAT>(v)); },
     {1, 2, 3, 4, 8, 16, 4, 8, 1, 2, 3, 4, 8, 16, 8},
     1,
     "Unsupported sample format."}};

TEST(CommonNumbers, AreWrongOrIllegalValueIsTaken)
{
    for (const auto& [function, answer, numbers, fallback, text] : kNumberTables)
    {
        SCOPED_TRACE(function);
        const auto count = static_cast<INT32>(numbers.size());
        {
            CReports reports;
            for (INT32 value = 0; value < count; ++value)
                EXPECT_EQ(answer(value), numbers[static_cast<std::size_t>(value)]) << value;
            EXPECT_EQ(reports.TakeMessages(), OneMessage(""));
        }
        for (const INT32 value : {-1, count, std::numeric_limits<INT32>::min()})
        {
            std::string report = text;
            if (report.back() == '#')
                report.replace(report.size() - 1, 1, std::to_string(value));
            CReports reports;
            EXPECT_EQ(answer(value), fallback) << value;
            ExpectReport(reports, report, kHelpers, "CZELDatabaseHelperCommon::" + function);
        }
    }
    EXPECT_EQ(Common::GetOverloadFactor(), 1.1);
}

TEST(CommonCalFrequency, MatchesWrongSelection)
{
    const std::string none = "No cal frequency matches the required frequency.";
    const struct
    {
        double frequency;
        INT32 selection;
    } rows[] = {{40e6, 1},
                {19531250.0, 2},
                {4882812.5, 3},
                {152587.890625, 4},
                {1192.0928955078, 5},
                {30e6, 0},
                {42968749.0, 1},
                {42968750.0, 0},
                {35156250.0, 0}, // deviation of 10 % is
                                 // too much
                {35156251.0, 1},
                {0.0, 0},
                {-4882812.5, 0},
                {kNan, 0},
                {kInf, 0}};
    for (const auto& [frequency, selection] : rows)
    {
        CReports reports;
        EXPECT_EQ(Common::GetCalFrequency(frequency), selection) << frequency;
        ExpectReport(reports, selection == 0 ? none : "", kHelpers,
                     "CZELDatabaseHelperCommon::GetCalFrequency(double)");
    }
}

TEST(CommonMeterScale, IsWrongOrRangeIsTaken)
{
    const struct
    {
        double range;
        double scale;
        std::string report;
    } rows[] = {{0.1, 0.0525, ""},
                {0.3, 0.1575, ""},
                {1.0, 0.525, ""},
                {3.0, 1.575, ""},
                {10.0, 5.25, ""},
                {30.0, 15.75, ""},
                {100.0, 52.5, ""},
                {300.0, 109.5, ""},
                {0.0995, 0.0525, ""}, // halves go away from zero
                {0.09949, 0.0, "Invalid Range: 0.09949"},
                {0.1005, 0.0, "Invalid Range: 0.1005"},
                {0.10049, 0.0525, ""},
                {0.2, 0.0, "Invalid Range: 0.2"},
                {0.0, 0.0, "Invalid Range: 0"},
                {-0.1, 0.0, "Invalid Range: -0.1"},
                {4294967.396, 0.0, "Invalid Range: 4.29497e+06"}, // 100 above 2^32 thousandths
                {1e300, 0.0, "Invalid Range: 1e+300"},
                {kInf, 0.0, "Invalid Range: inf"},
                {kNan, 0.0, "Invalid Range: nan"}};
    for (const auto& convert :
         {Common::ConvertMeterRange2VerticalScale, Common::ConvertCounterRange2VerticalScale})
    {
        for (const auto& [range, scale, report] : rows)
        {
            CReports reports;
            EXPECT_EQ(convert(range), scale) << range;
            ExpectReport(reports, report, kHelpers, "ConvertMeterRange2VerticalScale");
        }
    }
}

TEST(CommonMeterPath, IsMisconfigured)
{
    const struct
    {
        INT32 measType;
        INT32 probeType;
        double range;
        double factor;
        unsigned int code;
        std::string report;
        std::string source;
    } rows[] = {{1, 0, 1.0, 1.0, 0b0101, "", ""},
                {1, 0, 10.0, 10.0, 0b0001, "", ""},
                {1, 0, 100.0, 100.0, 0b0010, "", ""},
                {1, 0, 1000.0, 1000.0, 0b0011, "", ""},
                {0, 1, 10.0, 100.0, 0b1001, "", ""},
                {2, 7, 1.0, 0.01, 0b1101, "", ""},
                {6, 18, 1000.0, 1000.0, 0b1011, "", ""},
                {1, 6, 10.0, 10.0, 0b0001, "Unknown probe type= 6", kHelpers},
                {3, 0, 10.0, 1.0, 0, "Invalid measurement type!", kHelpers},
                {9, 0, 2.0, 1.0, 0, "Invalid measurement type!", kHelpers},
                {1, 0, 2.0, 1.0, 0, "Invalid Range selected: 2", "src/MeterBase"},
                {1, 6, 1e4, 1.0, 0, "Invalid Range: 10000", kHelpers}};
    for (const auto& [measType, probeType, range, factor, code, report, source] : rows)
    {
        SCOPED_TRACE(testing::Message() << "type " << measType << ", range " << range);
        CReports reports;
        double gotFactor = -1.0;
        unsigned int gotCode = 99;
        Common::GetDMMVoltagePathSettings(As<KW_ZEL_DMM_MEAS_TYPE>(measType),
                                          As<KW_PROBE_TYPE>(probeType), range, gotFactor, gotCode);
        EXPECT_DOUBLE_EQ(gotFactor, factor);
        EXPECT_EQ(gotCode, code);
        ExpectReport(reports, report, source, "Get");
    }
}

TEST(CommonAdcRate, IsNotTheFreshSettingWithoutTree)
{
    CReports reports;
    EXPECT_EQ(Common::GetSamplingRateADC(), 1000000.0);
    EXPECT_EQ(reports.TakeMessages(), OneMessage(""));
}

/** Two limits that must never cross; answers the codes it is told to, and notes the calls. */
class CLimits
{
public:
    CLimits(double min, double max, KW_ACCEPTANCE minCode, KW_ACCEPTANCE maxCode)
        : m_min(min), m_max(max), m_minCode(minCode), m_maxCode(maxCode)
    {
    }
    double GetMin() const { return m_min; }
    double GetMax() const { return m_max; }
    KW_ACCEPTANCE SetMin(double min) { return Set(m_min, min, 'm', m_minCode); }
    KW_ACCEPTANCE SetMax(double max) { return Set(m_max, max, 'M', m_maxCode); }
    std::string Calls() const { return m_calls; }

private:
    KW_ACCEPTANCE Set(double& limit, double value, char call, KW_ACCEPTANCE code)
    {
        m_calls += call;
        if (code > 1)
            return code;
        limit = value;
        EXPECT_LE(m_min, m_max);
        return code;
    }

    double m_min;
    double m_max;
    KW_ACCEPTANCE m_minCode;
    KW_ACCEPTANCE m_maxCode;
    std::string m_calls;
};

TEST(CommonSetMinMax, CrossesLimitsOrHidesRefusal)
{
    const std::string minRefused = "by database access: eAcc = pProperty->SetMin(Min)";
    const std::string maxRefused = "by database access: eAcc = pProperty->SetMax(Max)";
    const struct
    {
        double min, max; ///< wanted; the present limits are 10 and 20
        KW_ACCEPTANCE minCode, maxCode;
        KW_ACCEPTANCE code;
        std::string calls;
        std::string report;
    } rows[] = {{30, 40, 0, 0, 0, "Mm", ""},
                {1, 5, 0, 0, 0, "mM", ""},
                {12, 25, 0, 0, 0, "Mm", ""},
                {10, 10, 0, 0, 0, "Mm", ""}, // the present minimum is not above the new maximum
                {0, std::nextafter(10.0, 0.0), 0, 0, 0, "mM", ""},
                {30, 40, 1, 0, 1, "Mm", ""},
                {30, 40, 0, 1, 0, "Mm", ""}, // the second call's code
                {30, 40, 0, 7, 7, "M", "Error (7) " + maxRefused},
                {30, 40, 3, 1, 3, "Mm", "Error (3) " + minRefused},
                {1, 5, 2, 0, 2, "m", "Error (2) " + minRefused},
                {1, 5, 1, 2, 2, "mM", "Error (2) " + maxRefused}};
    for (const auto& [min, max, minCode, maxCode, code, calls, report] : rows)
    {
        SCOPED_TRACE(testing::Message() << min << " … " << max << ", " << minCode << maxCode);
        CLimits limits(10, 20, minCode, maxCode);
        CReports reports;
        EXPECT_EQ(Common::SetMinMax(&limits, min, max), code);
        EXPECT_EQ(limits.Calls(), calls);
        ExpectReport(reports, report, kHelpers, "CZELDatabaseHelperCommon::SetMinMax");
        EXPECT_EQ(limits.GetMin(), calls.find('m') < 2 && minCode <= 1 ? min : 10);
        EXPECT_EQ(limits.GetMax(), calls.find('M') < 2 && maxCode <= 1 ? max : 20);
    }
}

/** One legal call of every calculation whose result is a number. */
double SumOfAll()
{
    KW_UNIT unit = eKW_UNIT_NONE;
    double sum = CZELDatabaseHelperVertical::GetNextHighestScale(2.3, 8U) +
                 CZELDatabaseHelperVertical::GetNextLowestScale(0.7);
    for (const t_NumberTable& table : kNumberTables)
        sum += table.answer(1);
    for (const INT32 type : {0, 8, 18})
        sum +=
            Common::GetProbeSettingsScope({As<KW_PROBE_TYPE>(type), 2.0, eKW_UNIT_LEVEL_A}).factor;
    for (const INT32 type : {1, 6, 8})
        sum += Common::GetProbeSettingsDmm(As<KW_ZEL_DMM_MEAS_TYPE>(type),
                                           {eKW_PROBE_TYPE_USER, 2.0, eKW_UNIT_LEVEL_V}, unit)
                   .factor;
    sum += Common::ConvertTemperature2Resistance(eKW_PROBE_TYPE_PT500, -20.0);
    sum += Common::ConvertResistance2Temperature(eKW_PROBE_TYPE_PT500, 520.0);
    sum += Common::ConvertMeterRange2VerticalScale(30.0) + Common::GetSamplingRateADC();
    sum += As<INT32>(Common::GetCalFrequency(4.9e6));
    CLimits limits(10, 20, 0, 0);
    sum += Common::SetMinMax(&limits, 1.0, 2.0);
    return sum + As<INT32>(CMeterMeasurementBaseData::GetRangeAsEnumValue(1e8)) +
           CMeterMeasurementBaseData::GetRangeAsDoubleValue(eKW_ZEL_METER_RANGE_1);
}

TEST(CommonAllocations, HappenThoughNothingIsReported)
{
    EXPECT_GT(SumOfAll(), 0.0); // the first use fills the name tables
    const auto before = AllocationCount();
    EXPECT_GT(SumOfAll(), 0.0);
    EXPECT_EQ(AllocationCount(), before);
}
} // namespace
