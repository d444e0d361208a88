// SPDX-License-Identifier: MIT
#pragma once

#include "Streams/Record.h"

namespace NSamples
{
/** Where a channel has its trace in a record; the count of traces when it has none with points. */
inline UINT32 PlaceOf(const CKWRecord& record, KW_ZEL_CHANNEL channel)
{
    const UINT32 count = record.GetTraceCount();
    UINT32 place = 0;
    while (place < count)
    {
        const KW_TraceInfo trace = record.GetTrace(place);
        if (trace.channel == channel && trace.count > 0)
        {
            break;
        }
        ++place;
    }
    return place;
}
} // namespace NSamples
