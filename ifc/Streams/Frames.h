// SPDX-License-Identifier: MIT
#pragma once

#include "KWEnumerationsSerialBus.h"
#include "Streams/Record.h"

#include <algorithm>
#include <array>
#include <type_traits>

/**
 * Decoded frames of a bus, on their way as samples are: a trace of the format eKW_SAMPLES_FRAMES,
 * whose points are frames. What decodes while it acquires puts them beside the samples of their
 * record; what decodes afterwards has a stream of its own, whose records name theirs by `source`.
 * Signals are not stored: who wants them decodes frames with a label list
 * (LabelList/LabelListDecoder.h), and with another list again.
 */

/** Flags of a frame. */
enum KW_FRAME_FLAG : UINT32
{
    eKW_FRAME_FD = 1,              ///< CAN FD
    eKW_FRAME_BIT_RATE_SWITCH = 2, ///< its data had the other bit rate
    eKW_FRAME_REMOTE = 4,          ///< asks for data and has none
    eKW_FRAME_READ = 8,            ///< read access, as of I²C; else it writes
    eKW_FRAME_ERROR = 16,          ///< error frame, or one that ended early
    eKW_FRAME_BAD_CHECKSUM = 32,   ///< checksum, CRC or parity is another
    eKW_FRAME_NO_ACKNOWLEDGE = 64, ///< nobody took it
    eKW_FRAME_CUT = 128,           ///< had more bytes than there is room for here
};

/** A frame as it was on the bus. */
struct KW_Frame
{
    static constexpr UINT32 kLongest = 64; ///< bytes of the longest payload

    double time = 0.0;     ///< of its beginning against the trigger of the record, s
    double duration = 0.0; ///< to its end, s; 0 where that is not known
    UINT32 identifier = 0; ///< of buses whose frames have none 0
    UINT32 flags = 0;      ///< KW_FRAME_FLAG
    KW_ZEL_SERIALBUS_PROTOCOL protocol = eKW_ZEL_SERIALBUS_PROTOCOL_CAN; ///< of its bus
    UINT8 identifierLength = 0;        ///< bits, as labels have it; 0: the frame has none
    UINT8 bus = 0;                     ///< which one of several
    UINT8 length = 0;                  ///< bytes of the payload, ≤ kLongest
    UINT8 reserved = 0;                ///< 0
    std::array<UINT8, kLongest> bytes; ///< as many as `length` says count

    /** What it carries; of a remote frame nothing. Good as long as the frame. */
    std::span<const UINT8> GetPayload() const
    {
        const bool isEmpty = (flags & eKW_FRAME_REMOTE) != 0;
        return std::span(bytes).first(isEmpty ? 0 : std::min(UINT32{length}, kLongest));
    }
};
static_assert(sizeof(KW_Frame) == KW_GetPointSize(eKW_SAMPLES_FRAMES) &&
              std::is_trivially_copyable_v<KW_Frame>);

/** The frames of a trace, in the order of the writer; none of a trace of another format. Good as
    long as a value of the record lives. */
inline std::span<const KW_Frame> KW_GetFrames(const CKWRecord& record, UINT32 trace = 0)
{
    const KW_TraceInfo info = record.GetTrace(trace);
    if (info.format != eKW_SAMPLES_FRAMES)
    {
        return {};
    }
    return {reinterpret_cast<const KW_Frame*>(record.GetSamples(trace).data()), info.count};
}
