// SPDX-License-Identifier: MIT
#pragma once

#include "Mathematics/Sources.h"

/** Operations that look at several points: derivative, integral, low-pass and high-pass. */
namespace NMathematics
{
constexpr bool IsTimeOperation(KW_ZEL_MATHEMATICS_TYPE type)
{
    return type >= eKW_ZEL_MATHEMATICS_TYPE_DERIVATIVE &&
           type <= eKW_ZEL_MATHEMATICS_TYPE_HIGH_PASS;
}

struct t_TimeSettings
{
    KW_ZEL_MATHEMATICS_TYPE type = eKW_ZEL_MATHEMATICS_TYPE_INTEGRAL;
    double interval = 1.0;      ///< between points, s
    UINT32 leftEdge = 0;        ///< first point of the integral
    double integralStart = 0.0; ///< its value there
    double frequency = 0.0;     ///< corner of the filters, Hz
};

/** Computes point by point, from the first on. NaN is an invalid point, of source and result. */
class CTimeOperation
{
public:
    explicit CTimeOperation(const t_TimeSettings& settings);

    /** @param value that of the source
        @param point from 0, each once */
    double Next(double value, UINT32 point);

private:
    double Integral(double value, UINT32 point);
    double Filter(double value);

    t_TimeSettings m_settings;
    bool m_hasBegun = false;
    double m_before = 0.0;    ///< the last valid value
    UINT32 m_beforeAt = 0;    ///< and its point
    double m_integral = 0.0;  ///< there
    bool m_passesAll = false; ///< the corner is at half of the sample rate or above
    double m_gains[3] = {};   ///< of the filter
    double m_states[2] = {};  ///< of its two integrators
};

/** The derivative at a point of a source with so many points of the result. */
double DerivativeAt(const CSource& source, UINT32 point, UINT32 count, double interval);
} // namespace NMathematics
