// SPDX-License-Identifier: MIT
#include "Mathematics/TimeOperations.h"

#include <cmath>
#include <limits>
#include <numbers>

namespace NMathematics
{
namespace
{
constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
constexpr double kDamping = std::numbers::sqrt2; ///< of Butterworth's second order
} // namespace

/*
 * Of the analog filter H(s) = ω² / (s² + √2 ω s + ω²) the bilinear transform makes s the tangent of
 * π × frequency × interval, so that the corner stays where it is. Written as two integrators, each
 * the mean of its input before and now, rather than with five coefficients: these would lose the
 * corner to rounding when it is far below the sample rate.
 */
CTimeOperation::CTimeOperation(const t_TimeSettings& settings) : m_settings(settings)
{
    const double turns = settings.frequency * settings.interval;
    m_passesAll = !(turns < 0.5);
    if (!m_passesAll && settings.frequency > 0)
    {
        const double g = std::tan(std::numbers::pi * turns);
        m_gains[0] = 1.0 / (1.0 + g * (g + kDamping));
        m_gains[1] = g * m_gains[0];
        m_gains[2] = g * m_gains[1];
    }
}

double CTimeOperation::Next(double value, UINT32 point)
{
    return m_settings.type == eKW_ZEL_MATHEMATICS_TYPE_INTEGRAL ? Integral(value, point)
                                                                : Filter(value);
}

double CTimeOperation::Integral(double value, UINT32 point)
{
    if (point < m_settings.leftEdge || std::isnan(value))
    {
        return kNone;
    }
    if (m_hasBegun)
    {
        const double time = m_settings.interval * (point - m_beforeAt);
        m_integral += (m_before + value) * 0.5 * time;
    }
    else
    {
        m_integral = m_settings.integralStart;
    }
    m_hasBegun = true;
    m_before = value;
    m_beforeAt = point;
    return m_integral;
}

double CTimeOperation::Filter(double value)
{
    const bool isLow = m_settings.type == eKW_ZEL_MATHEMATICS_TYPE_LOW_PASS;
    if (std::isnan(value))
    {
        m_hasBegun = false;
        return kNone;
    }
    if (m_passesAll)
    {
        return isLow ? value : 0.0;
    }
    if (!m_hasBegun)
    {
        m_hasBegun = true;
        m_states[0] = 0.0;
        m_states[1] = value;
    }
    const double rest = value - m_states[1];
    const double band = m_gains[0] * m_states[0] + m_gains[1] * rest;
    const double low = m_states[1] + m_gains[1] * m_states[0] + m_gains[2] * rest;
    m_states[0] = 2.0 * band - m_states[0];
    m_states[1] = 2.0 * low - m_states[1];
    return isLow ? low : value - kDamping * band - low;
}

double DerivativeAt(const CSource& source, UINT32 point, UINT32 count, double interval)
{
    const double value = source.ValueAt(point);
    if (std::isnan(value))
    {
        return kNone;
    }
    const double before = point > 0 ? source.ValueAt(point - 1) : kNone;
    const double behind = point + 1 < count ? source.ValueAt(point + 1) : kNone;
    const double left = std::isnan(before) ? value : before;
    const double right = std::isnan(behind) ? value : behind;
    const int distance = (std::isnan(before) ? 0 : 1) + (std::isnan(behind) ? 0 : 1);
    return distance == 0 ? kNone : (right - left) / (distance * interval);
}
} // namespace NMathematics
