// SPDX-License-Identifier: MIT
#pragma once

#include "Streams/Stream.h"

#include <array>
#include <memory>

class IKWFunctionZEL;

/**
 * A stream that follows the tree. What is acquired, how long it is and what its samples mean comes
 * from the settings; how far the acquisition is goes back into the results. The thread that
 * acquires gives samples, and knows neither scale nor record length.
 *
 *     for each acquisition: Arm, then per trace Reserve, write, Advance; then Publish
 *     thirty times a second, elsewhere: Deliver
 */

/** Places of the traces in a record; of what is off, the place has no trace. */
enum KW_TRACE_PLACE : UINT32
{
    eKW_PLACE_C1,
    eKW_PLACE_C2,
    eKW_PLACE_C3,
    eKW_PLACE_C4,
    eKW_PLACE_LINES, ///< D0 to D7, one byte a point
    eKW_PLACE_COUNT  ///< Number of places.
};

/** Samples of an analog input are counts of its screen: 0 is the middle, a division has so many,
    whatever the scale. An 8-bit converter with 25 steps a division gives its steps times 256;
    filters and averages use the digits below. ±32767 is a good division beyond the screen. */
constexpr double KW_COUNTS_PER_DIVISION = 6400.0;

/** What is to be acquired, as one moment of the settings says. */
struct KW_ArmedAcquisition
{
    bool isRunning = false; ///< false: the scope stands, or no channel is on
    /** By KW_TRACE_PLACE. `count` is the points to be acquired, settling ones included (0: none),
        of peak detect and envelope as pairs. `start` counts from the trigger; the skew of an input
        is taken off. `scale` is negative for an inverted channel. Flags are the client's. */
    std::array<KW_TraceInfo, eKW_PLACE_COUNT> traces{};
    UINT32 blockSize = 0; ///< points that slow and roll mode show at a time; 0: whole records
    KW_ZEL_DSP_MODE mode = eKW_ZEL_DSP_MODE_NORMAL; ///< whether it is slow or roll mode
    UINT32 historyDepth = 0;                        ///< records that the history is to keep
    UINT32 left = 0;           ///< acquisitions that a single run still makes; 0: no end
    INT64 settingsCounter = 0; ///< change counter of the tree
};

/** What the client says of an acquisition. */
struct KW_AcquiredInfo
{
    INT64 triggerTime = 0; ///< ns since 1970-01-01 UTC; in roll mode, of the time 0 on the screen
    double shift = 0.0;    ///< of all points to later times, within their interval, s
    std::array<UINT32, eKW_PLACE_COUNT> flags{}; ///< KW_TRACE_FLAG of each place
};

/** Judges each record before others see it. */
class KW_EXPORT IKWRecordTest
{
public:
    virtual ~IKWRecordTest();
    /** In the thread that acquires: waits for nothing, takes no memory, keeps no record. */
    virtual KW_MASK_RESULT Test(const CKWRecord& draft) = 0;
};

/** Joins the thread that acquires, the tree and whoever shows the traces. Keeps the tree alive. */
class KW_EXPORT IKWAcquisition
{
public:
    virtual ~IKWAcquisition();

    /** For the thread that acquires. */
    ///@{
    /**
     * Before each acquisition, in slow and roll mode before each block; and now and then while the
     * scope stands, so that a history that is cleared becomes empty. Next to nothing while the
     * settings stand. Else it reads those that belong together, under the tree's lock.
     *
     * Other lengths, formats or channels, or another depth, end the history but for its newest
     * record. Another scale, position or time does not, as each record says its own; but a record
     * that grows ends with whatever changes its traces. One that was begun and not published is
     * dropped.
     *
     * @return eKW_ACC_OK; eKW_ACC_WARNING when the memory holds less than the history depth.
     * Nothing is to be acquired: eKW_ACC_NOTHING_TO_ACT_ON while the scope stands or nothing is on,
     *         eKW_ACC_ABOVE_MAXIMUM when two such records have no room in the stream
     */
    virtual KW_ACCEPTANCE Arm() = 0;
    /** What Arm found; good until it is called again. */
    virtual const KW_ArmedAcquisition& GetArmed() const = 0;
    /** As IKWStreamWriter has them, by KW_TRACE_PLACE; nothing unless Arm said that there is
        something to acquire. */
    ///@{
    virtual std::span<std::byte> Reserve(UINT32 place) = 0;
    virtual KW_ACCEPTANCE Advance(UINT32 place, UINT32 points) = 0;
    /** Points of the record being filled that are advanced: where the next block goes on. */
    virtual UINT32 GetAdvanced(UINT32 place) const = 0;
    ///@}
    /**
     * Shows the record to readers and wakes them, with what was armed. In slow and roll mode the
     * record grows until all its points are there.
     *
     * With a test, a record that the history is not to keep (Mask/HistoryMode, while a mask test
     * runs) is tested and counted, and then dropped. One of slow or roll mode is seen already when
     * it is whole and tested: it stays, and does not say its result.
     *
     * @return the codes of IKWStreamWriter::Publish
     */
    virtual KW_ACCEPTANCE Publish(const KW_AcquiredInfo& info) = 0;
    /** Null for none. It must live as long as it is set. */
    virtual void SetTest(IKWRecordTest* test) = 0;
    ///@}

    /** To make readers of; it has its writer. Callable from any thread. */
    virtual std::shared_ptr<IKWStream> GetStream() const = 0;

    /**
     * Delivers to the tree, in one go: Horizontal/SampleCounter; what HistoryViewer has and the
     * time of what it shows; Runs/CurrentRun; clipping of the channels; and ends a single run.
     * Carries out Update, Load and Save of Vertical/ReferenceCurve, with record files
     * (Streams/RecordFile.h); what fails is reported. Not for the thread that acquires: it takes
     * the tree's lock. One thread at a time, at the rate of a display.
     */
    virtual void Deliver() = 0;

    /** The record to be shown, by a reader of this stream: the newest, or while the history viewer
        is on the one it has selected. None when there is none. Never blocks. */
    virtual CKWRecord GetShown(IKWStreamReader& reader) const = 0;

    /** The reference curve: a record of one trace, R1, with a time base of its own. None when the
        tree has none. Callable from any thread. */
    virtual CKWRecord GetReference() const = 0;
    /**
     * Takes a trace as the reference curve, as from a file, and delivers its attributes; the curve
     * outlives stream and history. Takes the tree's lock.
     * @return eKW_ACC_BAD_INDEX for a place without a trace, eKW_ACC_WRONG_KIND for one without
     * levels, eKW_ACC_OPERATION_FAILED without memory
     */
    virtual KW_ACCEPTANCE SetReference(const CKWRecord& record, UINT32 trace) = 0;
};

/** Null without a root, or when the system has no such memory. `bytes` are those of KW_MakeStream.
 */
KW_EXPORT std::shared_ptr<IKWAcquisition> KW_MakeAcquisition(std::shared_ptr<IKWFunctionZEL> root,
                                                             UINT64 bytes = eKW_STREAM_BYTES);
