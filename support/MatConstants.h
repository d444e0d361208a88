// SPDX-License-Identifier: MIT
#pragma once

#include <limits>

/**
 * Tolerant comparisons of doubles, for thresholds that computed values are meant to hit.
 *
 * Two finite numbers count as equal when they differ by at most kTolerance (four double epsilons)
 * times the larger magnitude, so the neighbours of a double always equal it; next to zero among
 * subnormal numbers, by one representable step. Zero has no scale of its own: a number equals 0.0
 * when its magnitude is at most kTolerance. Infinities and NaN equal nothing, not even themselves.
 * Like every tolerant equality this one is not transitive.
 *
 * The orders treat equal numbers as neither less nor greater, put infinities at the ends, and
 * answer false whenever a NaN takes part. As infinities equal nothing, IsLessOrEqual and
 * IsGreaterOrEqual of two equal infinities are false.
 *
 * Stateless and callable from any thread; nothing allocates.
 */
class CMatConstants
{
public:
    static constexpr double kTolerance = 4.0 * std::numeric_limits<double>::epsilon();

    static constexpr bool AreEqual(double a, double b) noexcept
    {
        if (!IsFinite(a) || !IsFinite(b))
            return false;
        if (a == 0.0 || b == 0.0)
            return Magnitude(a + b) <= kTolerance;
        const double scale = Magnitude(a) > Magnitude(b) ? Magnitude(a) : Magnitude(b);
        const double allowed = scale * kTolerance;
        const double step = std::numeric_limits<double>::denorm_min();
        return Magnitude(a - b) <= (allowed > step ? allowed : step);
    }

    static constexpr bool IsEqualZero(double value) noexcept { return AreEqual(value, 0.0); }

    static constexpr bool IsLess(double a, double b) noexcept { return a < b && !AreEqual(a, b); }

    static constexpr bool IsLessOrEqual(double a, double b) noexcept
    {
        return a < b || AreEqual(a, b);
    }

    static constexpr bool IsGreater(double a, double b) noexcept { return IsLess(b, a); }

    static constexpr bool IsGreaterOrEqual(double a, double b) noexcept
    {
        return IsLessOrEqual(b, a);
    }

    /**
     * The multiple of `resolution` nearest to `value`, halves away from zero; never −0.0.
     * A resolution that is the reciprocal of a whole number (0.1, 0.001, 0.5) counts as exactly
     * that, so that 0.31 at 0.1 is 0.3 and not 0.30000000000000004. The value is answered
     * unchanged when the resolution is 0, negative or not finite, when the value is not finite or
     * at least 2^52 resolutions away from 0, and when the multiple would not be finite.
     */
    static double AdjustToResolution(double value, double resolution) noexcept;

private:
    static constexpr bool IsFinite(double value) noexcept
    {
        return value >= std::numeric_limits<double>::lowest() &&
               value <= std::numeric_limits<double>::max();
    }
    static constexpr double Magnitude(double value) noexcept
    {
        return value < 0.0 ? -value : value;
    }
};
