// SPDX-License-Identifier: MIT
#pragma once

#include "KWAcceptance.h"
#include "KWEnumerationsAcquisition.h"
#include "KWEnumerationsChannels.h"
#include "KWEnumerationsUnits.h"

#include <cstddef>
#include <span>
#include <utility>

/**
 * What one trigger caught: a record holds the traces of all channels, so that nobody shows or
 * multiplies channels of different triggers. Records come from a stream (Streams/Stream.h).
 */

/** How a point of a trace stands in memory, in the byte order of the machine. */
enum KW_SAMPLE_FORMAT : INT32
{
    eKW_SAMPLES_INT16,  ///< INT16; INT16_MIN is an invalid point
    eKW_SAMPLES_FLOAT,  ///< float; NaN is an invalid point
    eKW_SAMPLES_MINMAX, ///< two INT16, minimum and maximum; both INT16_MIN: an invalid point
    eKW_SAMPLES_LINES,  ///< UINT8 of eight digital lines, D0 its lowest bit
    eKW_SAMPLES_FRAMES, ///< KW_Frame of a bus (Streams/Frames.h), each with a time of its own
    eKW_SAMPLES_COUNT   ///< Number of formats.
};

/** Bytes of one point. */
constexpr UINT32 KW_GetPointSize(KW_SAMPLE_FORMAT format)
{
    switch (format)
    {
    case eKW_SAMPLES_INT16:
        return 2;
    case eKW_SAMPLES_LINES:
        return 1;
    case eKW_SAMPLES_FRAMES:
        return 96;
    default:
        return 4;
    }
}

/** Whether the points are values of a curve; digital lines and frames of a bus are none. */
constexpr bool KW_IsCurve(KW_SAMPLE_FORMAT format)
{
    return format == eKW_SAMPLES_INT16 || format == eKW_SAMPLES_FLOAT ||
           format == eKW_SAMPLES_MINMAX;
}

/** Flags of a trace. */
enum KW_TRACE_FLAG : UINT32
{
    eKW_TRACE_ABOVE_RANGE = 1, ///< The converter was at its upper end.
    eKW_TRACE_BELOW_RANGE = 2, ///< The converter was at its lower end.
};

/** Result of the mask test of a record. */
enum KW_MASK_RESULT : INT32
{
    eKW_MASK_NOT_TESTED,
    eKW_MASK_PASSED,
    eKW_MASK_FAILED,
};

/** What is said of one trace. Physical value = sample × scale + offset; of digital lines neither
    counts, and of frames interval and start do not, either. */
struct KW_TraceInfo
{
    KW_ZEL_CHANNEL channel = eKW_ZEL_CHANNEL_NONE; ///< of digital lines the first, D0
    KW_SAMPLE_FORMAT format = eKW_SAMPLES_INT16;   ///< how its points stand in memory
    KW_UNIT unit = eKW_UNIT_NOT_DEFINED;           ///< of physical values
    UINT32 flags = 0;                              ///< KW_TRACE_FLAG
    UINT32 count = 0;                              ///< points, settling ones included; 0: no trace
    UINT32 settlingPoints = 0;                     ///< at the beginning, which are not shown
    double interval = 1.0;                         ///< between two points, s; > 0
    double start = 0.0;                            ///< of the first point against the trigger, s
    double scale = 1.0;                            ///< of one count of a sample, in `unit`; not 0
    double offset = 0.0;                           ///< of the sample 0, in `unit`
};

/** Bounds of a record. */
enum KW_RECORD_BOUND : UINT32
{
    eKW_RECORD_TRACES = 16,                                      ///< traces
    eKW_RECORD_BYTES = (sizeof(void*) > 4 ? 256U : 128U) << 20U, ///< memory
};

/** What is said of the whole record. */
struct KW_RecordInfo
{
    UINT64 number = 0;         ///< from 1, rising; a gap: acquisitions that found no room
    INT64 triggerTime = 0;     ///< ns since 1970-01-01 UTC
    INT64 settingsCounter = 0; ///< change counter of the tree when the acquisition was armed
    KW_MASK_RESULT maskResult = eKW_MASK_NOT_TESTED; ///< of the test by the mask that stood then
    UINT64 source = 0; ///< number of the record that this one was made from, as frames are decoded
                       ///< from samples; 0: from none
};

/** Lowest and highest physical value of a stretch; both NaN where it has no valid point. */
struct KW_MinMax
{
    double minimum = 0.0; ///< lowest, in the unit of the trace
    double maximum = 0.0; ///< highest, likewise
};

/** Digital lines of a stretch, a bit each. `always` 1 and `once` 0 where it has no point. */
struct KW_LineStates
{
    UINT8 always = 0; ///< lines that are high at each point
    UINT8 once = 0;   ///< lines that are high at one point at least
};

/**
 * A record, or none. A value: copies share the record, which stays as it is until the last of them
 * goes, whatever becomes of the stream and its readers. Who keeps records takes room from the
 * stream: acquisitions that find none are dropped.
 *
 * A record of the roll mode grows. This value shows it as it was when it was fetched; fetched
 * again, it has more points.
 *
 * Different values may be used in different threads at once, also of one record. Nothing here
 * waits or takes memory.
 */
class KW_EXPORT CKWRecord
{
public:
    CKWRecord() noexcept = default;
    /** Copies hold the record, too; moving leaves the other without one. */
    ///@{
    CKWRecord(const CKWRecord& other) noexcept;
    CKWRecord(CKWRecord&& other) noexcept
        : m_slot(std::exchange(other.m_slot, nullptr)), m_progress(other.m_progress)
    {
    }
    CKWRecord& operator=(CKWRecord other) noexcept
    {
        std::swap(m_slot, other.m_slot);
        std::swap(m_progress, other.m_progress);
        return *this;
    }
    ///@}
    ~CKWRecord()
    {
        if (m_slot != nullptr)
        {
            Release();
        }
    }

    /** False: no record; infos are defaults, samples empty. */
    explicit operator bool() const noexcept { return m_slot != nullptr; }

    /** What is said of the whole record; defaults without one. */
    KW_RecordInfo GetInfo() const noexcept;
    /** Traces, those without points included: a trace has the place that the writer gave it. */
    UINT32 GetTraceCount() const noexcept;
    /** Info of a trace, `count` being the points that this value shows; defaults for a place that
        has none. */
    KW_TraceInfo GetTrace(UINT32 trace) const noexcept;
    /** The points of a trace, as its format says; empty for a place that has none. Good as long as
        a value of this record lives. */
    std::span<const std::byte> GetSamples(UINT32 trace) const noexcept;

    /**
     * Lowest and highest physical value of each column of a picture. Column c of n goes from
     * position first + count × c / n to that of the next one, in points of the trace; neighbours
     * share the point between them, so that steep edges show no gaps. What lies outside of the
     * record is NaN.
     *
     * With fewer points than columns the curve between points is what `interpolation` says, looked
     * at where columns begin and end, and at each point: straight lines, the value of the point
     * before, or sin x / x of 16 points (straight where one of them is invalid; the first and the
     * last point go on beyond the ends). Its coefficients are made with sin() of the C library.
     * Invalid points are left out; between an invalid and a valid one there is no line.
     *
     * @param first  position of the left edge; may lie outside of the record
     * @param count  points that the picture shows; > 0
     * @return eKW_ACC_BAD_INDEX for a place without a trace, eKW_ACC_WRONG_KIND for digital lines
     * and frames, eKW_ACC_NOT_A_NUMBER for a stretch that is none or begins or ends beyond ± 10^15
     *         points, eKW_ACC_UNKNOWN_VALUE for another interpolation; then nothing is written.
     */
    KW_ACCEPTANCE GetColumns(
        UINT32 trace, double first, double count, std::span<KW_MinMax> columns,
        KW_ZEL_INTERPOLATION_MODE interpolation = eKW_ZEL_INTERPOLATION_MODE_LINEAR) const noexcept;

    /** The same of digital lines, whose state holds until the next point: what is high throughout
        a column, and what at some time. eKW_ACC_WRONG_KIND for other traces. */
    KW_ACCEPTANCE GetLines(UINT32 trace, double first, double count,
                           std::span<KW_LineStates> columns) const noexcept;

    struct t_Access; ///< of the library's own; public, as streams and files make records by it

private:
    void Release() noexcept;

    void* m_slot = nullptr;
    UINT32 m_progress = 0; ///< points of the longest trace
};

/**
 * Makes a record of memory of its own, beside all streams: what a file holds, what was computed,
 * what is kept as a reference. It takes memory once, in the constructor. For one thread at a time.
 *
 * Reserve each trace that has points, write them and Advance, as with a stream; then Make.
 */
class KW_EXPORT CKWRecordMaker
{
public:
    /**
     * @param info   stands as it is, its number too
     * @param traces at most eKW_RECORD_TRACES, with the points of each; those without points have
     *               a place only
     * @param memory a record whose memory is taken for the new one, when it was made so, is large
     *               enough and nobody else holds it: to make one after the other takes none
     */
    CKWRecordMaker(const KW_RecordInfo& info, std::span<const KW_TraceInfo> traces,
                   CKWRecord memory = {}) noexcept;

    CKWRecordMaker(const CKWRecordMaker&) = delete;
    CKWRecordMaker& operator=(const CKWRecordMaker&) = delete;

    /** Whether the record can be made: eKW_ACC_BAD_INDEX for too many traces,
        eKW_ACC_UNKNOWN_VALUE for a format, eKW_ACC_NOT_A_NUMBER where interval, start, scale or
        offset are none, eKW_ACC_ABOVE_MAXIMUM for more than eKW_RECORD_BYTES,
        eKW_ACC_OPERATION_FAILED when the system has no such memory. */
    KW_ACCEPTANCE GetCode() const noexcept { return m_code; }

    /** Room for the points of a trace that are not advanced yet, at 64 bytes in the beginning;
        empty for a place without a trace, and when the record can not be made. */
    std::span<std::byte> Reserve(UINT32 trace) noexcept;
    /** The next points of a trace are written. eKW_ACC_BAD_INDEX for a place without a trace,
        eKW_ACC_ABOVE_MAXIMUM for more points than there is room; then nothing changes. */
    KW_ACCEPTANCE Advance(UINT32 trace, UINT32 points) noexcept;

    /** The record, once; none while points are missing, and when it can not be made. */
    CKWRecord Make() noexcept;

private:
    CKWRecord m_record;
    KW_ACCEPTANCE m_code;
};

/**
 * A record of its own memory from samples that stand somewhere; see CKWRecordMaker.
 *
 * @param samples for each trace as many bytes as its points are; copied
 * @param code    answers CKWRecordMaker::GetCode, or eKW_ACC_BAD_INDEX when samples do not fit the
 *                traces; may be null
 * @return none when the code is not eKW_ACC_OK
 */
KW_EXPORT CKWRecord KW_MakeRecord(const KW_RecordInfo& info, std::span<const KW_TraceInfo> traces,
                                  std::span<const std::span<const std::byte>> samples,
                                  KW_ACCEPTANCE* code = nullptr) noexcept;
