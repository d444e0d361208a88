// SPDX-License-Identifier: MIT
// The side that acquires: a signal in, records out. It knows neither scale nor record length.
#include "acquire.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstring>
#include <thread>

namespace
{
/** Volts at an input at a time against the trigger: a damped ringing, another one for each. */
double Signal(KW_ZEL_CHANNEL channel, double time)
{
    const double input = 1.0 + (channel - eKW_ZEL_CHANNEL_C1);
    const double since = std::max(time, 0.0);
    return 3.0 / input * std::exp(-since * 5e6) * std::sin(6.283185307 * 8e6 * input * since);
}

/** Eight lines that count up, 20 ns a step. */
UINT8 Lines(double time)
{
    return static_cast<UINT8>(static_cast<INT64>(std::floor(time / 20e-9)));
}

INT16 ToCounts(double value, const KW_TraceInfo& trace, UINT32& flags)
{
    const double counts = std::round((value - trace.offset) / trace.scale);
    flags |= counts > INT16_MAX ? eKW_TRACE_ABOVE_RANGE : 0U;
    flags |= counts < -INT16_MAX ? eKW_TRACE_BELOW_RANGE : 0U;
    return static_cast<INT16>(std::clamp<double>(counts, -INT16_MAX, INT16_MAX));
}

/** A point into memory: a count, a pair of them, or eight lines. */
void Write(std::byte* place, const KW_TraceInfo& trace, double time, UINT32& flags)
{
    if (trace.format == eKW_SAMPLES_LINES)
    {
        const UINT8 lines = Lines(time);
        std::memcpy(place, &lines, sizeof lines);
        return;
    }
    const INT16 counts = ToCounts(Signal(trace.channel, time), trace, flags);
    for (UINT32 i = 0; i < KW_GetPointSize(trace.format); i += sizeof counts)
    {
        std::memcpy(place + i, &counts, sizeof counts);
    }
}

/** The next points of a trace: all of them, or a block. */
void Fill(IKWAcquisition& acquisition, UINT32 place, UINT32& flags)
{
    const KW_ArmedAcquisition& armed = acquisition.GetArmed();
    const KW_TraceInfo& trace = armed.traces[place];
    const std::span<std::byte> room = acquisition.Reserve(place);
    const UINT32 done = acquisition.GetAdvanced(place);
    const UINT32 size = KW_GetPointSize(trace.format);
    auto points = static_cast<UINT32>(room.size() / size); // none: this record is dropped
    points = armed.blockSize > 0 ? std::min(points, armed.blockSize) : points;
    for (UINT32 i = 0; i < points; ++i)
    {
        Write(room.data() + i * size, trace, trace.start + (done + i) * trace.interval, flags);
    }
    acquisition.Advance(place, points);
}

INT64 Now()
{
    using namespace std::chrono;
    return duration_cast<nanoseconds>(system_clock::now().time_since_epoch()).count();
}
} // namespace

void Acquire(IKWAcquisition& acquisition, const std::atomic<bool>& isEnd)
{
    for (; !isEnd; std::this_thread::sleep_for(std::chrono::milliseconds(10)))
    {
        if (!KW_IsAccepted(acquisition.Arm()))
        {
            continue; // the scope stands
        }
        KW_AcquiredInfo info;
        info.triggerTime = Now();
        for (UINT32 place = 0; place < eKW_PLACE_COUNT; ++place)
        {
            Fill(acquisition, place, info.flags[place]);
        }
        acquisition.Publish(info);
    }
}
