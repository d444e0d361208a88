// SPDX-License-Identifier: MIT
#include "Spectrum/SpectrumRange.h"

#include "ErrorReport.h"

double BoundReported(double min, double value, double max)
{
    if (min == max)
    {
        KW_REPORT_WARNING(QStringLiteral("min and max are equal: ") + KW_ReportText(min), __FILE__);
    }
    else if (value < min)
    {
        KW_REPORT_WARNING(QStringLiteral("property value is lower than property min value"),
                          __FILE__);
    }
    else if (value > max)
    {
        KW_REPORT_WARNING(QStringLiteral("property value is higher than property max value"),
                          __FILE__);
    }
    return KWMath::Bound(min, value, max);
}
