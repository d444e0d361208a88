// SPDX-License-Identifier: MIT
#include "Streams/Curve.h"

#include "Streams/Extremes.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace NStreams
{
namespace
{
constexpr UINT32 kPhases = 256; ///< between two points; between phases coefficients are linear
constexpr UINT32 kTaps = 16;

double Sinc(double x)
{
    constexpr double kPi = 3.14159265358979323846;
    return x == 0.0 ? 1.0 : std::sin(kPi * x) / (kPi * x);
}

/** Coefficients of sin x / x under a window of the same form, which is 0 eight points away. */
struct t_Coefficients
{
    alignas(16) float rows[kPhases + 1][kTaps];

    t_Coefficients()
    {
        for (UINT32 phase = 0; phase <= kPhases; ++phase)
        {
            double row[kTaps];
            double sum = 0.0;
            for (UINT32 i = 0; i < kTaps; ++i)
            {
                const double x = static_cast<double>(phase) / kPhases + (kTaps / 2 - 1.0) - i;
                // At a point the curve is that point, not sin(π), which is not 0.
                row[i] =
                    x == std::floor(x) ? (x == 0.0 ? 1.0 : 0.0) : Sinc(x) * Sinc(x / (kTaps / 2));
                sum += row[i];
            }
            // So that a constant stays one.
            std::transform(row, row + kTaps, rows[phase],
                           [sum](double value) { return static_cast<float>(value / sum); });
        }
    }
};

float ValidOrNaN(INT16 sample)
{
    return sample == std::numeric_limits<INT16>::min() ? std::numeric_limits<float>::quiet_NaN()
                                                       : sample;
}

template <class T>
T Read(const std::byte* samples, std::size_t index)
{
    T value;
    std::memcpy(&value, samples + index * sizeof value, sizeof value);
    return value;
}
} // namespace

CCurve::CCurve(const t_Trace& trace, UINT32 count, bool isSinc, bool isHigh)
    : m_trace(trace), m_last(INT64{count} - 1), m_isSinc(isSinc), m_isHigh(isHigh)
{
}

float CCurve::Point(INT64 index) const
{
    const auto place = static_cast<std::size_t>(std::clamp<INT64>(index, 0, m_last));
    switch (m_trace.format)
    {
    case eKW_SAMPLES_FLOAT:
        return Read<float>(m_trace.samples, place);
    case eKW_SAMPLES_MINMAX:
        return ValidOrNaN(Read<INT16>(m_trace.samples, 2 * place + (m_isHigh ? 1 : 0)));
    default:
        return ValidOrNaN(Read<INT16>(m_trace.samples, place));
    }
}

void CCurve::MoveTo(UINT32 base)
{
    const INT64 step = base - m_base;
    if (step == 0)
    {
        return;
    }
    m_base = base;
    UINT32 known = 0;
    if (step > 0 && step < kTaps)
    {
        known = kTaps - static_cast<UINT32>(step);
        std::memmove(m_points, m_points + step, known * sizeof m_points[0]);
    }
    for (; known < kTaps; ++known)
    {
        m_points[known] = Point(INT64{base} + known - kBefore);
    }
}

float CCurve::Sinc(double fraction) const
{
    static const t_Coefficients coefficients;
    const double phase = fraction * kPhases;
    const auto row = static_cast<UINT32>(phase); // < kPhases, as fraction < 1
    const t_Floats share = t_Floats{} + static_cast<float>(phase - row);
    t_Floats sum{};
    for (UINT32 i = 0; i < kTaps; i += 4)
    {
        const auto here = Load<t_Floats>(coefficients.rows[row] + i);
        const auto next = Load<t_Floats>(coefficients.rows[row + 1] + i);
        sum += (here + (next - here) * share) * Load<t_Floats>(m_points + i);
    }
    return (sum[0] + sum[1]) + (sum[2] + sum[3]);
}

double CCurve::At(double position)
{
    const auto base = static_cast<UINT32>(position);
    const double fraction = position - base;
    MoveTo(base);
    const double left = m_points[kBefore];
    if (fraction == 0.0)
    {
        return left;
    }
    if (m_isSinc)
    {
        const float value = Sinc(fraction);
        if (!std::isnan(value))
        {
            return value;
        }
    }
    return left + (m_points[kBefore + 1] - left) * fraction;
}
} // namespace NStreams
