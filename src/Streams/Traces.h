// SPDX-License-Identifier: MIT
#pragma once

#include "Streams/Slots.h"

/** What records of streams and records of their own memory have in common while they are filled. */
namespace NStreams
{
constexpr UINT32 kHeadBytes = (sizeof(t_Record) + 63) / 64 * 64;

/** Bytes of a record: head, samples and pyramids. */
UINT64 BytesOfRecord(std::span<const KW_TraceLayout> layout);

/** A record with its traces at `begin`, where so many bytes are. */
t_Record* PlaceRecord(std::byte* begin, std::span<const KW_TraceLayout> layout);

/** Codes as IKWStreamWriter::Publish has them. */
KW_ACCEPTANCE CheckTraces(const t_Record& record, std::span<const KW_TraceInfo> traces);

/** Says what the record is; its number stays. Traces are checked. */
void DescribeRecord(t_Record& record, const KW_RecordInfo& info,
                    std::span<const KW_TraceInfo> traces);

/** Points of the longest trace to which all traces have got. */
UINT32 ProgressOf(const t_Record& record);

/** Points that are not advanced yet. */
std::span<std::byte> RoomOf(const t_Trace& trace);
} // namespace NStreams
