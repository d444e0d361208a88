// SPDX-License-Identifier: MIT
#include "IKWFunctionZELHelpers/ZELDatabaseHelperVertical.h"

#include "CommonHelperParts.h"
#include "ErrorReport.h"
#include "KWMath.h"
#include "MatConstants.h"

#include <cmath>
#include <limits>

using namespace NCommonHelper;

namespace
{
bool IsScale(double value)
{
    return value > 0.0 && std::isfinite(value);
}

/** 10^floor(log10(scale)), also where the logarithm is no number. */
double DecadeBelow(double scale)
{
    if (IsScale(scale))
        return KWMath::Pow10(KWMath::DecimalExponent(scale));
    return std::pow(10.0, std::floor(std::log10(scale)));
}

KW_IEEE_DIVISION double Ratio(double scale, double decade)
{
    return scale / decade;
}
} // namespace

double CZELDatabaseHelperVertical::GetPhysicalValueRange(const double& scale,
                                                         const double& divisions)
{
    return divisions * scale;
}

double CZELDatabaseHelperVertical::GetPhysicalValueOffset(const double& offset,
                                                          const double& position,
                                                          const double& scale)
{
    return offset - position * scale;
}

double CZELDatabaseHelperVertical::GetRangeFromTopBottom(const double& top, const double& bottom)
{
    return top - bottom;
}

double CZELDatabaseHelperVertical::GetOffsetFromTopBottom(const double& top, const double& bottom)
{
    return (top + bottom) * 0.5;
}

double CZELDatabaseHelperVertical::GetNextHighestScale(const double& scale)
{
    if (!IsScale(scale))
        return scale < 0.0 ? std::numeric_limits<double>::quiet_NaN() : scale;
    const double decade = DecadeBelow(scale);
    const double tolerated = decade + scale * 1e-8;
    if (CMatConstants::IsLessOrEqual(scale, tolerated))
        return scale;
    for (const double step : {2.0, 4.0, 5.0})
    {
        if (CMatConstants::IsLessOrEqual(scale, step * tolerated))
            return step * decade;
    }
    return KWMath::Pow10(KWMath::DecimalExponent(scale) + 1);
}

double CZELDatabaseHelperVertical::GetNextHighestScale(const double& range, UINT32 divisions)
{
    if (divisions == 0)
    {
        KW_REPORT_ERROR(QStringLiteral("The number of vertical divisions is zero."), kHelperSource);
        return 0.0;
    }
    return GetNextHighestScale(range / divisions);
}

double CZELDatabaseHelperVertical::GetNextLowestScale(const double& scale)
{
    const double decade = DecadeBelow(scale);
    const double ratio = Ratio(scale, decade);
    if (CMatConstants::IsLess(ratio, 2.0))
        return decade;
    if (CMatConstants::IsLess(ratio, 4.0))
        return 2.0 * decade;
    if (CMatConstants::IsLess(ratio, 5.0))
        return 4.0 * decade;
    if (CMatConstants::IsLess(ratio, 10.0))
        return 5.0 * decade;
    // A rounding error below a decade neither is less than 10 nor shall leave a channel without
    // scale.
    if (CMatConstants::AreEqual(ratio, 10.0))
        return KWMath::Pow10(KWMath::DecimalExponent(scale) + 1);
    KW_REPORT_ERROR(QStringLiteral("Next lowest scale could not be calculated. Scale = %1, "
                                   "scale from exponent = %2, ratio = %3")
                        .arg(KW_ReportText(scale), KW_ReportText(decade), KW_ReportText(ratio)),
                    kHelperSource);
    return 0.0;
}
