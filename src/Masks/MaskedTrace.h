// SPDX-License-Identifier: MIT
#pragma once

#include "Masks/MaskGeometry.h"
#include "Streams/Columns.h"

namespace NMasks
{
/** eKW_ACC_OK, or why the trace of a record can not be compared in a frame. */
KW_ACCEPTANCE CheckTrace(const CKWRecord& record, UINT32 trace, const KW_MaskFrame& frame);

/** A trace, checked, in divisions. Lives no longer than its record. */
class CMaskedTrace
{
public:
    CMaskedTrace(const CKWRecord& record, UINT32 trace, const KW_MaskFrame& frame)
        : m_trace(CKWRecord::t_Access::SlotOf(record)->record->traces[trace]),
          m_geometry(record.GetTrace(trace), frame)
    {
    }

    const CGeometry& Geometry() const { return m_geometry; }
    /** The first point that is not for settling; may lie behind the last one. */
    UINT32 First() const { return m_trace.info.settlingPoints; }

    /** Lowest and highest level of the points from `begin` to before `end`; > 0. */
    KW_MinMax LevelsOf(UINT32 begin, UINT32 end) const
    {
        const KW_MinMax levels = NStreams::FindExtremes(m_trace, begin, end);
        return {m_geometry.Y(levels.minimum), m_geometry.Y(levels.maximum)};
    }

private:
    const NStreams::t_Trace& m_trace;
    const CGeometry m_geometry;
};
} // namespace NMasks
