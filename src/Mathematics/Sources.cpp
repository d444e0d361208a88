// SPDX-License-Identifier: MIT
#include "Mathematics/Sources.h"

#include "KWMath.h"

#include <cmath>

namespace NMathematics
{
namespace
{
/** How far points may lie apart, in their distance, to be the same. */
constexpr double kNear = 1.0 / 1024.0;
/** The same where points fall on those of the trace now and then: rounding does not decide whether
    an invalid neighbour counts. */
constexpr double kOn = 1e-6;
} // namespace

CSource::CSource(std::span<const std::byte> samples, const KW_TraceInfo& trace,
                 const KW_TraceInfo& grid)
    : m_samples(samples.data()), m_trace(trace),
      m_first((grid.start - trace.start) / trace.interval), m_ratio(grid.interval / trace.interval),
      m_shift(KWMath::ToInteger<INT64>(std::round(m_first)))
{
    const double last = m_first + (grid.count - 1.0) * m_ratio;
    const double alignedLast = static_cast<double>(m_shift) + (grid.count - 1.0);
    m_isAligned = std::abs(m_first - static_cast<double>(m_shift)) <= kNear &&
                  std::abs(last - alignedLast) <= kNear;
}

double CSource::PointValue(INT64 place) const
{
    constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
    if (!Has(place))
    {
        return kNone;
    }
    if (m_trace.format == eKW_SAMPLES_FLOAT)
    {
        const double value = double{Sample<float>(place)} * m_trace.scale + m_trace.offset;
        return std::isfinite(value) ? value : kNone;
    }
    const auto sample = Sample<INT16>(place);
    return sample == std::numeric_limits<INT16>::min() ? kNone : Physical(sample);
}

double CSource::ValueAt(UINT32 point) const
{
    if (m_isAligned)
    {
        return PointValue(m_shift + point);
    }
    const double place = m_first + point * m_ratio;
    const double nearest = std::round(place);
    if (std::abs(place - nearest) <= kOn)
    {
        return PointValue(KWMath::ToInteger<INT64>(nearest));
    }
    const double before = std::floor(place);
    const auto index = KWMath::ToInteger<INT64>(before);
    const double left = PointValue(index);
    return left + (place - before) * (PointValue(index + 1) - left);
}

t_Interval CSource::IntervalAt(UINT32 point) const
{
    if (!HasPairs())
    {
        const double value = ValueAt(point);
        return {value, value};
    }
    const INT64 place = m_shift + point;
    if (!Has(place))
    {
        return {};
    }
    const auto low = Sample<INT16>(2 * place);
    const auto high = Sample<INT16>(2 * place + 1);
    if (low == std::numeric_limits<INT16>::min())
    {
        return {};
    }
    // A negative scale turns the curve over.
    const double a = Physical(low);
    const double b = Physical(high);
    return a <= b ? t_Interval{a, b} : t_Interval{b, a};
}

t_Input CSource::Fetch(UINT32 first, UINT32 count, float* scratch) const
{
    const INT64 place = m_shift + first;
    const bool isWords = m_trace.format == eKW_SAMPLES_INT16;
    const bool isPlain = isWords || (m_trace.scale == 1.0 && m_trace.offset == 0.0);
    if (!m_isAligned || !isPlain || place < 0 || place + count > INT64{m_trace.count})
    {
        for (UINT32 i = 0; i < count; ++i)
        {
            scratch[i] = static_cast<float>(ValueAt(first + i));
        }
        return {nullptr, scratch};
    }
    const std::byte* samples = m_samples + place * KW_GetPointSize(m_trace.format);
    if (count % kStep != 0)
    {
        std::memcpy(scratch, samples, std::size_t{count} * KW_GetPointSize(m_trace.format));
        samples = reinterpret_cast<const std::byte*>(scratch);
    }
    t_Input input;
    input.words = isWords ? reinterpret_cast<const INT16*>(samples) : nullptr;
    input.reals = isWords ? nullptr : reinterpret_cast<const float*>(samples);
    input.scale = static_cast<float>(m_trace.scale);
    input.offset = static_cast<float>(m_trace.offset);
    return input;
}
} // namespace NMathematics
