// SPDX-License-Identifier: MIT
#pragma once

#include "Streams/Extremes.h"
#include "Streams/Slots.h"

#include <algorithm>
#include <array>

/**
 * Behind the samples of a trace stand, for complete blocks of 64, 1,024 and 16,384 points, their
 * lows and their highs, each level's lows before its highs: 3.3 % of the bytes of 16-bit samples.
 * So a column of any width reads a few hundred bytes.
 */
namespace NStreams
{
constexpr std::array<UINT32, 3> kLevelShifts = {6, 10, 14}; ///< 2^shift points in a block
constexpr UINT32 kBlockPoints = 1U << kLevelShifts[0];

/** Bytes of a trace: samples and pyramid. A multiple of 64. */
UINT64 BytesOfTrace(KW_SAMPLE_FORMAT format, UINT32 points);

/** The points from `advanced` on, so many, are written: makes the blocks that they complete. */
void AdvanceTrace(t_Trace& trace, UINT32 points);

/** Lows and highs of one level. */
template <class TEntry>
struct t_Level
{
    TEntry* lows;
    TEntry* highs;
};

template <class TPoints>
std::array<t_Level<typename TPoints::t_Entry>, 3> LevelsOf(const t_Trace& trace)
{
    using t_Entry = typename TPoints::t_Entry;
    auto* next = reinterpret_cast<t_Entry*>(trace.samples) + TPoints::kStride * trace.room;
    std::array<t_Level<t_Entry>, 3> levels{};
    for (std::size_t i = 0; i < levels.size(); ++i)
    {
        const UINT32 blocks = trace.room >> kLevelShifts[i];
        levels[i] = {next, next + blocks};
        next += 2 * blocks;
    }
    return levels;
}

/** Lowest and highest of the points from `first` to before `end`, which are all shown; > 0. */
template <class TPoints>
class CStretch
{
public:
    using t_Entry = typename TPoints::t_Entry;
    explicit CStretch(const t_Trace& trace)
        : m_samples(reinterpret_cast<const t_Entry*>(trace.samples)),
          m_levels(LevelsOf<TPoints>(trace))
    {
    }

    void Find(UINT32 first, UINT32 end, t_Entry& low, t_Entry& high) const
    {
        CExtremes<TPoints> extremes;
        if (end - first < 3 * kBlockPoints)
        {
            extremes.Samples(m_samples + TPoints::kStride * first,
                             TPoints::kStride * (end - first));
        }
        else
        {
            // Whole vectors at the edges reach into the next block, which is looked at anyway.
            const UINT32 begin = (first + kBlockPoints - 1) / kBlockPoints;
            const UINT32 stop = end / kBlockPoints;
            const UINT32 before = VectorsFor(begin * kBlockPoints - first);
            const UINT32 after = VectorsFor(end - stop * kBlockPoints);
            extremes.Vectors(m_samples + TPoints::kStride * first, before);
            extremes.Vectors(m_samples + TPoints::kStride * end - kLanes * after, after);
            AddBlocks(extremes, begin, stop);
        }
        extremes.Get(low, high);
    }

private:
    static constexpr UINT32 kLanes = CExtremes<TPoints>::kLanes;

    static UINT32 VectorsFor(UINT32 points)
    {
        return (TPoints::kStride * points + kLanes - 1) / kLanes;
    }

    /** Blocks of 64 points; 16 of a level are one of the next. */
    void AddBlocks(CExtremes<TPoints>& extremes, UINT32 begin, UINT32 end) const
    {
        for (std::size_t i = 0;; ++i)
        {
            const auto [lows, highs] = m_levels[i];
            if (i + 1 == m_levels.size() || end - begin < 48)
            {
                extremes.Levels(lows + begin, highs + begin, end - begin);
                return;
            }
            const UINT32 up = (begin + 15) / 16;
            const UINT32 down = end / 16;
            extremes.Levels(lows + begin, highs + begin, up * 16 - begin);
            extremes.Levels(lows + down * 16, highs + down * 16, end - down * 16);
            begin = up;
            end = down;
        }
    }

    const t_Entry* m_samples;
    std::array<t_Level<t_Entry>, 3> m_levels;
};
} // namespace NStreams
