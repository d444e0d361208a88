// SPDX-License-Identifier: MIT
#include "IKWFunctionZELHelpers/ZELDatabaseHelperCommon.h"
#include "Reports.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace
{
using Common = CZELDatabaseHelperCommon;

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
        const CReports reports;
        EXPECT_EQ(Common::SetMinMax(&limits, min, max), code);
        EXPECT_EQ(limits.Calls(), calls);
        EXPECT_EQ(reports.Messages().toStdString(), report);
        for (const KW_ErrorReport& told : reports.All())
        {
            EXPECT_EQ(told.file, QStringLiteral("src/IKWFunctionZELHelpers"));
            EXPECT_TRUE(told.function.contains(u"CZELDatabaseHelperCommon::SetMinMax"));
            EXPECT_EQ(told.type, e_KW_MESSAGE_TYPE_ERROR);
            EXPECT_GT(told.line, 0);
        }
        EXPECT_EQ(limits.GetMin(), calls.find('m') < 2 && minCode <= 1 ? min : 10);
        EXPECT_EQ(limits.GetMax(), calls.find('M') < 2 && maxCode <= 1 ? max : 20);
    }
}
} // namespace
