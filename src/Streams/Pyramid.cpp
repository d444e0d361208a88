// SPDX-License-Identifier: MIT
#include "Streams/Pyramid.h"

namespace NStreams
{
namespace
{
/** Blocks of a level from those below it. */
template <class TPoints>
void Raise(const t_Level<typename TPoints::t_Entry>& below,
           const t_Level<typename TPoints::t_Entry>& level, UINT32 begin, UINT32 end)
{
    for (UINT32 block = begin; block < end; ++block)
    {
        CExtremes<TPoints> extremes;
        extremes.Levels(below.lows + 16 * block, below.highs + 16 * block, 16);
        extremes.Get(level.lows[block], level.highs[block]);
    }
}

template <class TPoints>
void Advance(const t_Trace& trace, UINT32 from, UINT32 to)
{
    const auto levels = LevelsOf<TPoints>(trace);
    const auto* samples = reinterpret_cast<const typename TPoints::t_Entry*>(trace.samples);
    constexpr UINT32 kEntries = TPoints::kStride * kBlockPoints;
    for (UINT32 block = from >> kLevelShifts[0]; block < to >> kLevelShifts[0]; ++block)
    {
        CExtremes<TPoints> extremes;
        extremes.Samples(samples + kEntries * block, kEntries);
        extremes.Get(levels[0].lows[block], levels[0].highs[block]);
    }
    for (std::size_t i = 1; i < levels.size(); ++i)
    {
        Raise<TPoints>(levels[i - 1], levels[i], from >> kLevelShifts[i], to >> kLevelShifts[i]);
    }
}
} // namespace

UINT64 BytesOfTrace(KW_SAMPLE_FORMAT format, UINT32 points)
{
    UINT64 entries = points;
    // Frames have no lowest and highest one.
    for (const UINT32 shift : kLevelShifts)
    {
        // A pair's lows and highs are half a point each.
        const UINT32 blocks = format == eKW_SAMPLES_FRAMES ? 0 : points >> shift;
        entries += format == eKW_SAMPLES_MINMAX ? blocks : 2 * blocks;
    }
    return (entries * KW_GetPointSize(format) + 63) / 64 * 64;
}

void AdvanceTrace(t_Trace& trace, UINT32 points)
{
    const UINT32 from = trace.advanced;
    const UINT32 to = from + points;
    switch (trace.format)
    {
    case eKW_SAMPLES_FLOAT:
        Advance<t_FloatPoints>(trace, from, to);
        break;
    case eKW_SAMPLES_MINMAX:
        Advance<t_PairPoints>(trace, from, to);
        break;
    case eKW_SAMPLES_LINES:
        Advance<t_LinePoints>(trace, from, to);
        break;
    case eKW_SAMPLES_FRAMES:
        break;
    default:
        Advance<t_Int16Points>(trace, from, to);
        break;
    }
    trace.advanced = to;
}
} // namespace NStreams
