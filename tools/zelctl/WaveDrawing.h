// SPDX-License-Identifier: MIT
#pragma once

#include "Diagram.h"
#include "Streams/Record.h"

#include <vector>

/** The stretch of a record that is shown. */
struct t_WaveView
{
    double from = 0.0; ///< s against the trigger
    double to = 0.0;   ///< likewise, > from
    KW_ZEL_INTERPOLATION_MODE interpolation = eKW_ZEL_INTERPOLATION_MODE_LINEAR;
};

/** All points of these traces, the settling ones left out. */
t_WaveView GetWholeView(const CKWRecord& record, const std::vector<UINT32>& traces);

/** Lowest and highest physical value in columns of the view; of digital lines NaN. */
std::vector<KW_MinMax> GetViewColumns(const CKWRecord& record, UINT32 trace, const t_WaveView& view,
                                      int columns);

/** A diagram of each trace, one below the other. */
std::vector<t_Diagram> DrawWave(const CKWRecord& record, const std::vector<UINT32>& traces,
                                const t_WaveView& view);

/** What there is to say of a trace beside its curve. */
struct t_WaveFigures
{
    KW_TraceInfo info;
    UINT32 invalid = 0; ///< points without a value
    KW_MinMax range;    ///< of the whole trace; both NaN where it has no valid point
};
t_WaveFigures GetWaveFigures(const CKWRecord& record, UINT32 trace);
