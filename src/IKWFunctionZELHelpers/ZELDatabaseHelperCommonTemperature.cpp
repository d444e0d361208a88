// SPDX-License-Identifier: MIT
#include "IKWFunctionZELHelpers/ZELDatabaseHelperCommon.h"
#include "KWEnumerationsUnits.h"
#include "KWEnumerationsVertical.h"

#include "CommonHelperParts.h"
#include "ErrorReport.h"
#include "MatConstants.h"

#include <cmath>

using namespace NCommonHelper;

namespace
{
constexpr double kFahrenheitZero = 32.0;
constexpr double kFahrenheitPerDegree = 1.8;
constexpr double kKelvinZero = 273.15;

/** A platinum thermometer: c[0] its resistance at 0 °C, c[1] to c[4] the completed square from
    there up, c[5] to c[10] the polynomial below, for R^5, R^4, R^3, R^2, R and the constant. */
struct t_Platinum
{
    KW_PROBE_TYPE type;
    double c[11];
};

constexpr t_Platinum kPlatinum[] = {
    {eKW_PROBE_TYPE_PT100,
     {100.0, -0.0039083, 1.758481e-05, -2.31e-08, -1.155e-06, 1.524259e-10, -2.818339e-08,
      -4.826042e-06, 0.002585885, 2.222812, -242.0199}},
    {eKW_PROBE_TYPE_PT500,
     {500.0, -0.0039083, 1.758481e-05, -4.62e-09, -1.155e-06, 4.877629e-14, -4.509342e-11,
      -3.860833e-08, 0.0001034354, 0.4445625, -242.0199}},
    {eKW_PROBE_TYPE_PT1000,
     {1000.0, -0.0039083, 1.758481e-05, -2.31e-09, -1.155e-06, 1.524259e-15, -2.818339e-12,
      -4.826042e-09, 2.585885e-05, 0.2222812, -242.0199}},
};

const double* FindCoefficients(KW_PROBE_TYPE type)
{
    for (const t_Platinum& platinum : kPlatinum)
    {
        if (platinum.type == type)
            return platinum.c;
    }
    return nullptr;
}

double FullEquation(double r0, double t)
{
    const double cubed = t * t * t;
    return (1.0 + t * 0.0039083 + ((t - r0) * -4.183e-12 * cubed + t * t * -5.775e-7)) * r0;
}

double Polynomial(const double* c, double r)
{
    const double r2 = r * r;
    const double r3 = r2 * r;
    const double r4 = r3 * r;
    const double r5 = r4 * r;
    // The order of the sum decides the last digits, and the calibration was made with this one.
    return c[6] * r4 + c[5] * r5 + c[7] * r3 + c[8] * r2 + c[9] * r + c[10];
}
} // namespace

double CZELDatabaseHelperCommon::ConvertTempCelsius(const double& celsius, KW_UNIT target)
{
    if (target == eKW_UNIT_TEMPERATURE_F)
        return kFahrenheitZero + celsius * kFahrenheitPerDegree;
    if (target == eKW_UNIT_TEMPERATURE_K)
        return celsius + kKelvinZero;
    return celsius;
}

double CZELDatabaseHelperCommon::ConvertTemp2Celsius(const double& value, KW_UNIT unit)
{
    if (unit == eKW_UNIT_TEMPERATURE_F)
        return (value - kFahrenheitZero) / kFahrenheitPerDegree;
    if (unit == eKW_UNIT_TEMPERATURE_K)
        return value - kKelvinZero;
    return value;
}

double CZELDatabaseHelperCommon::ConvertTemperature2Resistance(KW_PROBE_TYPE probeType,
                                                               double celsius)
{
    const double* c = FindCoefficients(probeType);
    if (!c)
    {
        KW_REPORT_ERROR(QStringLiteral("Unsupported temperature probe."), kHelperSource);
        return 0.0;
    }
    if (CMatConstants::IsGreaterOrEqual(celsius, 0.0) &&
        CMatConstants::IsLessOrEqual(celsius, 850.0))
    {
        const double u = -c[1] + celsius * c[4];
        return (-c[2] + u * u) / c[3];
    }
    return FullEquation(c[0], celsius);
}

double CZELDatabaseHelperCommon::ConvertResistance2Temperature(KW_PROBE_TYPE probeType,
                                                               const double& resistance)
{
    const double* c = FindCoefficients(probeType);
    if (!c)
    {
        KW_REPORT_ERROR(QStringLiteral("Unsupported temperature probe."), kHelperSource);
        return 0.0;
    }
    if (CMatConstants::IsGreaterOrEqual(resistance, c[0]))
        return (c[1] + std::sqrt(c[2] + c[3] * resistance)) / c[4];
    if (CMatConstants::IsLess(resistance, c[0]))
        return Polynomial(c, resistance);
    return 0.0;
}
