// SPDX-License-Identifier: MIT
#pragma once

#include "Streams/Slots.h"

namespace NStreams
{
/** A stretch of a trace, arguments checked. */
struct t_Picture
{
    const t_Trace& trace;
    UINT32 shown; ///< points of the trace
    double first; ///< position at the left edge
    double count; ///< points from there to the right edge

    /** Position of the left edge of a column of so many. */
    double EdgeOf(double column, double columns) const { return first + count * column / columns; }
};

/** Lowest and highest physical value of the points from `first` to before `end`, which are all
    shown; > 0. Of no digital lines. */
KW_MinMax FindExtremes(const t_Trace& trace, UINT32 first, UINT32 end);

/** As CKWRecord has them. */
///@{
void FindColumns(const t_Picture& picture, std::span<KW_MinMax> columns,
                 KW_ZEL_INTERPOLATION_MODE interpolation);
void FindLines(const t_Picture& picture, std::span<KW_LineStates> columns);
///@}
} // namespace NStreams
