// SPDX-License-Identifier: MIT
#pragma once

#include "KWTypes.h"

#include <cstring>
#include <limits>

/**
 * Lowest and highest of many points, 16 bytes at a time, for each format one policy:
 * - `t_Entry`: an element of the samples; `kStride` of them are a point
 * - `Lowly`: what stands for entries where the lowest is looked for: invalid ones beyond all others
 * - `Low`, `High`: the lower and the higher one; only the first may be NaN
 * - `kNoLow`, `kNoHigh`: what is left where no point is valid
 *
 * The pyramid holds lows and highs in this form. A point that is looked at twice changes nothing,
 * so that the end of a stretch is a vector that overlaps the one before.
 */
namespace NStreams
{
using t_Words = INT16 __attribute__((vector_size(16)));
using t_UnsignedWords = UINT16 __attribute__((vector_size(16)));
using t_Longs = INT32 __attribute__((vector_size(16)));
using t_Floats = float __attribute__((vector_size(16)));
using t_Bytes = UINT8 __attribute__((vector_size(16)));

/** INT16_MIN, which is invalid, is the lowest number, so that highs pass it by; less one it is the
    highest, so that lows do. */
struct t_Int16Points
{
    using t_Entry = INT16;
    using t_Vector = t_Words;
    static constexpr UINT32 kStride = 1;
    static constexpr INT16 kNoLow = std::numeric_limits<INT16>::max();
    static constexpr INT16 kNoHigh = std::numeric_limits<INT16>::min();

    static t_Words Lowly(t_Words v) { return (t_Words)((t_UnsignedWords)v - 1); }
    static t_Words Low(t_Words a, t_Words b) { return a < b ? a : b; }
    static t_Words High(t_Words a, t_Words b) { return a > b ? a : b; }
    static bool IsValid(INT16 low, INT16 high) { return low < high; } // the low is less one
    static INT32 LowValue(INT16 low) { return low + 1; }
};

/** A minimum is not above its maximum, so that the lowest of both is that of the minima. */
struct t_PairPoints : t_Int16Points
{
    static constexpr UINT32 kStride = 2;
};

/** NaN, which is invalid, is less and greater than nothing. */
struct t_FloatPoints
{
    using t_Entry = float;
    using t_Vector = t_Floats;
    static constexpr UINT32 kStride = 1;
    static constexpr float kNoLow = std::numeric_limits<float>::infinity();
    static constexpr float kNoHigh = -std::numeric_limits<float>::infinity();

    static t_Floats Lowly(t_Floats v) { return v; }
    static t_Floats Low(t_Floats a, t_Floats b) { return a < b ? a : b; }
    static t_Floats High(t_Floats a, t_Floats b) { return a > b ? a : b; }
    static bool IsValid(float low, float high) { return low <= high; }
    static float LowValue(float low) { return low; }
};

/** Lines that are always high, and lines that are high at some time. */
struct t_LinePoints
{
    using t_Entry = UINT8;
    using t_Vector = t_Bytes;
    static constexpr UINT32 kStride = 1;
    static constexpr UINT8 kNoLow = 0xFF;
    static constexpr UINT8 kNoHigh = 0;

    static t_Bytes Lowly(t_Bytes v) { return v; }
    static t_Bytes Low(t_Bytes a, t_Bytes b) { return a & b; }
    static t_Bytes High(t_Bytes a, t_Bytes b) { return a | b; }
};

template <class TVector, class TEntry>
TVector Load(const TEntry* entries)
{
    TVector v;
    std::memcpy(&v, entries, sizeof v);
    return v;
}

/** The lowest and the highest of all that it has seen. */
template <class TPoints>
class CExtremes
{
public:
    using t_Entry = typename TPoints::t_Entry;
    using t_Vector = typename TPoints::t_Vector;
    static constexpr UINT32 kLanes = sizeof(t_Vector) / sizeof(t_Entry);

    /** @param count entries, not points */
    void Samples(const t_Entry* entries, UINT32 count)
    {
        if (count < kLanes)
        {
            t_Entry few[kLanes];
            for (UINT32 i = 0; i < kLanes && count > 0; ++i)
            {
                few[i] = entries[i < count ? i : i % TPoints::kStride];
            }
            if (count > 0)
            {
                Add(Load<t_Vector>(few));
            }
            return;
        }
        const UINT32 whole = count / kLanes;
        Vectors(entries, whole);
        if (whole * kLanes < count)
        {
            Add(Load<t_Vector>(entries + count - kLanes));
        }
    }

    /** So many whole vectors of samples. */
    void Vectors(const t_Entry* entries, UINT32 count)
    {
        const t_Entry* const end = entries + kLanes * count;
        if (count % 2 != 0)
        {
            Add(Load<t_Vector>(entries));
            entries += kLanes;
        }
        for (; entries != end; entries += 2 * kLanes)
        {
            Add(Load<t_Vector>(entries));
            const auto other = Load<t_Vector>(entries + kLanes);
            m_otherLow = TPoints::Low(TPoints::Lowly(other), m_otherLow);
            m_otherHigh = TPoints::High(other, m_otherHigh);
        }
    }

    /** Blocks of the pyramid. */
    void Levels(const t_Entry* lows, const t_Entry* highs, UINT32 count)
    {
        if (count < kLanes)
        {
            for (UINT32 i = 0; i < count; ++i)
            {
                m_low = TPoints::Low(t_Vector{} + lows[i], m_low);
                m_high = TPoints::High(t_Vector{} + highs[i], m_high);
            }
            return;
        }
        UINT32 i = 0;
        for (; i + kLanes < count; i += kLanes)
        {
            AddLevel(lows + i, highs + i);
        }
        AddLevel(lows + count - kLanes, highs + count - kLanes);
    }

    void Get(t_Entry& low, t_Entry& high) const
    {
        t_Vector lows = TPoints::Low(m_otherLow, m_low);
        t_Vector highs = TPoints::High(m_otherHigh, m_high);
        Meet<8>(lows, highs);
        Meet<4>(lows, highs);
        if constexpr (sizeof(t_Entry) <= 2)
        {
            Meet<2>(lows, highs);
        }
        if constexpr (sizeof(t_Entry) == 1)
        {
            Meet<1>(lows, highs);
        }
        low = lows[0];
        high = highs[0];
    }

private:
    void Add(t_Vector v)
    {
        m_low = TPoints::Low(TPoints::Lowly(v), m_low);
        m_high = TPoints::High(v, m_high);
    }

    void AddLevel(const t_Entry* lows, const t_Entry* highs)
    {
        m_low = TPoints::Low(Load<t_Vector>(lows), m_low);
        m_high = TPoints::High(Load<t_Vector>(highs), m_high);
    }

    /** Each lane meets the one so many bytes behind it, as far as lane 0 needs it. */
    template <UINT32 Bytes>
    static t_Vector Shifted(t_Vector v)
    {
        if constexpr (Bytes == 8)
        {
            return (t_Vector)__builtin_shufflevector((t_Longs)v, (t_Longs)v, 2, 3, 2, 3);
        }
        else if constexpr (Bytes == 4)
        {
            return (t_Vector)__builtin_shufflevector((t_Longs)v, (t_Longs)v, 1, 1, 1, 1);
        }
        else if constexpr (Bytes == 2)
        {
            return (t_Vector)__builtin_shufflevector((t_Words)v, (t_Words)v, 1, 1, 1, 1, 4, 5, 6,
                                                     7);
        }
        else
        {
            return (t_Vector)((t_UnsignedWords)v >> 8);
        }
    }

    template <UINT32 Bytes>
    static void Meet(t_Vector& lows, t_Vector& highs)
    {
        lows = TPoints::Low(Shifted<Bytes>(lows), lows);
        highs = TPoints::High(Shifted<Bytes>(highs), highs);
    }

    t_Vector m_low = t_Vector{} + TPoints::kNoLow;
    t_Vector m_high = t_Vector{} + TPoints::kNoHigh;
    t_Vector m_otherLow = m_low; // two at once: neither waits for the other
    t_Vector m_otherHigh = m_high;
};
} // namespace NStreams
