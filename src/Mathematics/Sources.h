// SPDX-License-Identifier: MIT
#pragma once

#include "Mathematics/Program.h"
#include "Streams/Record.h"

#include <array>
#include <cstring>
#include <limits>

/** Traces as sources of a calculation: which samples stand at a point of the result. */
namespace NMathematics
{
/** Points that are computed at once: results of steps stay in the fastest cache. */
constexpr UINT32 kBlock = 1024;
/** Points of one step of vectors: blocks are whole ones. */
constexpr UINT32 kStep = 8;

constexpr float kInvalid = std::numeric_limits<float>::quiet_NaN();

/** What an operation reads: numbers of 16 bit with scale and offset, numbers, or one constant. */
struct t_Input
{
    const INT16* words = nullptr;
    const float* reals = nullptr; ///< null as `words` is: a constant
    float scale = 1.0F;           ///< of words
    float offset = 0.0F;          ///< of words; the constant
};

/** Lowest and highest value of a point; both NaN where it is invalid. */
struct t_Interval
{
    double low = std::numeric_limits<double>::quiet_NaN();
    double high = low;
};

/** One trace, and where its points lie among those of the result. */
class CSource
{
public:
    CSource() = default;
    CSource(std::span<const std::byte> samples, const KW_TraceInfo& trace,
            const KW_TraceInfo& grid);

    bool HasPairs() const { return m_trace.format == eKW_SAMPLES_MINMAX; }
    bool IsAligned() const { return m_isAligned; }
    const KW_TraceInfo& Trace() const { return m_trace; }

    /** Points of the result from `first` on, at most kBlock, and up to a whole step more that mean
        nothing. They stand in the trace itself where they can. Not of pairs. */
    t_Input Fetch(UINT32 first, UINT32 count, float* scratch) const;

    /** Physical value at a point of the result; NaN where it is invalid. Not of pairs. */
    double ValueAt(UINT32 point) const;
    /** Of all formats with levels. */
    t_Interval IntervalAt(UINT32 point) const;

private:
    template <class T>
    T Sample(INT64 place) const
    {
        T sample;
        std::memcpy(&sample, m_samples + place * static_cast<INT64>(sizeof(T)), sizeof sample);
        return sample;
    }
    bool Has(INT64 place) const { return place >= 0 && place < INT64{m_trace.count}; }
    double Physical(INT64 sample) const
    {
        return static_cast<double>(sample) * m_trace.scale + m_trace.offset;
    }
    double PointValue(INT64 place) const;

    const std::byte* m_samples = nullptr;
    KW_TraceInfo m_trace;
    double m_first = 0.0; ///< place of the result's first point, in points of the trace
    double m_ratio = 1.0; ///< points of the trace for one of the result
    INT64 m_shift = 0;    ///< m_first, of an aligned source
    bool m_isAligned = false;
};
} // namespace NMathematics
