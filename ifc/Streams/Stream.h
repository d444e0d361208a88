// SPDX-License-Identifier: MIT
#pragma once

#include "Streams/Record.h"

#include <memory>

/**
 * A stream of records inside one process: one writer, any number of readers, and nobody waits for
 * anybody. Memory is bounded: one block, taken and touched when the stream is made; publishing and
 * fetching take none. Stream, writer and readers share it, and records keep what they need of it
 * when all of these are gone.
 */

/** Room of one trace in each record. */
struct KW_TraceLayout
{
    KW_SAMPLE_FORMAT format = eKW_SAMPLES_INT16; ///< how its points stand in memory
    UINT32 points = 0;                           ///< most points; 0: the place has no trace
};

/** Bounds of a stream. */
enum KW_STREAM_BOUND : UINT32
{
    eKW_STREAM_TRACES = eKW_RECORD_TRACES, ///< traces of a record
    eKW_STREAM_RECORDS = 5000,             ///< records of the history
    eKW_STREAM_BYTES = eKW_RECORD_BYTES,   ///< memory of a stream
};

/**
 * Fetches records. For one thread at a time; nothing but Wait waits. A reader that has just been
 * made has the newest record before it.
 */
class KW_EXPORT IKWStreamReader
{
public:
    virtual ~IKWStreamReader();

    /** Whether there is a record that this reader did not fetch, or the last one has grown. */
    virtual bool HasNew() = 0;
    /** The newest record, again if it must be; those before it that were not fetched count as
        missed. None before the first one. */
    virtual CKWRecord GetLatest() = 0;
    /** The record that was fetched last again, if it has grown and is in the history; then the
        oldest one that was not fetched; none when there is nothing new. So who fetches one after
        the other gets the end of each. */
    virtual CKWRecord GetNext() = 0;
    /** A record of the history: 0 the newest, −1 the one before it, and so on; none where the
        history ends. Changes nothing of what is new. */
    virtual CKWRecord GetHistory(INT32 trace) = 0;
    /** Records of the history. Those that somebody held when their room was asked for are no
        longer among them. */
    virtual UINT32 GetAvailable() const = 0;
    /** Acquisitions since this reader was made that it did not get and will not: dropped without
        room, overwritten before it came, or passed over by GetLatest. */
    virtual UINT64 GetMissed() const = 0;

    /** Waits until there is something new, at most `limit` ms; without end when it is negative.
        @return HasNew() */
    virtual bool Wait(INT32 limit) = 0;
    /** For loops that wait for several things: asks to be woken once, and answers the descriptor
        to poll for reading. Call it again after each time that it was readable; do not read it.
        @return the reader's descriptor, always the same; −1: there is something new already */
    virtual int Arm() = 0;
};

/**
 * Fills records; for the thread that acquires. Nothing here waits; memory is taken by nothing.
 *
 * A record: Reserve each trace, write points and Advance, Publish, Wake. One that finds no room is
 * dropped: Reserve answers nothing, for all its traces, and Publish is refused.
 */
class KW_EXPORT IKWStreamWriter
{
public:
    virtual ~IKWStreamWriter();

    /**
     * Says how long records are, and how many the history keeps. The free parts of the memory are
     * cut anew; records that are held stay as they are, and their room is cut when they are let
     * go. Of the history only the newest record stays, as long as there is room for two others.
     * A record that is being filled is dropped. What stands already changes nothing.
     *
     * @param traces a place for each trace
     * @param depth  records of the history, 1 to eKW_STREAM_RECORDS
     * @param bytes  memory that records may take; all that the stream has, when it is less
     * @return eKW_ACC_WARNING when the memory has no room for so many records (those that are held
     *         included); eKW_ACC_BAD_INDEX for no or too many traces, eKW_ACC_UNKNOWN_VALUE for a
     *         format, eKW_ACC_BELOW_MINIMUM for a depth of 0 and eKW_ACC_ABOVE_MAXIMUM for too many
     *         records or when two of them take more than the memory; then nothing changes.
     */
    virtual KW_ACCEPTANCE Configure(std::span<const KW_TraceLayout> traces, UINT32 depth,
                                    UINT64 bytes) = 0;

    /** Room for the points of a trace that are not advanced yet, at 64 bytes in the beginning.
        Begins a record, and gives it its number, when none has begun.
        @return empty when the record is dropped, or for a place without a trace */
    virtual std::span<std::byte> Reserve(UINT32 trace) = 0;

    /** The next points of a trace are written, for good. Best in pieces of some thousand, while
        they are in the cache.
        @return eKW_ACC_NOTHING_TO_ACT_ON without a record, eKW_ACC_BAD_INDEX, eKW_ACC_ABOVE_MAXIMUM
                for more points than there is room; then nothing changes. */
    virtual KW_ACCEPTANCE Advance(UINT32 trace, UINT32 points) = 0;

    /**
     * Shows the record to readers. With `keep` it goes on: Advance and Publish again, until one
     * without `keep` ends it. From the second time on only the points and new flags count.
     *
     * @param info   its number is given by the stream
     * @param traces of the places, as configured; those left out have no trace. `count` is that of
     *               the whole record: while it grows, each trace shows the share of it that all
     *               have got to
     * @return eKW_ACC_WARNING when fewer points than `count` are shown and the record ends;
     *         eKW_ACC_NOTHING_TO_ACT_ON without a record, eKW_ACC_BAD_INDEX for too many traces,
     *         eKW_ACC_WRONG_KIND for another format than is configured, eKW_ACC_ABOVE_MAXIMUM for
     *         more points, eKW_ACC_NOT_A_NUMBER where interval, start, scale or offset are none;
     *         then the record is still being filled.
     */
    virtual KW_ACCEPTANCE Publish(const KW_RecordInfo& info, std::span<const KW_TraceInfo> traces,
                                  bool keep = false) = 0;

    /**
     * The record that is being filled, as Publish would show it now: for the writer's own thread,
     * which tests it before others see it. No reader has it, and it counts as fetched by nobody.
     * Let it go before the next record; who keeps it holds its room. Arguments are those of
     * Publish.
     * @return none without a record, and for what Publish would refuse
     */
    virtual CKWRecord GetDraft(const KW_RecordInfo& info, std::span<const KW_TraceInfo> traces) = 0;

    /** Gives up the record that is being filled; it counts as dropped. One that was published
        already ends instead. */
    virtual void Discard() = 0;

    /** Ends the history, for all readers; none of its records counts as lost. One that grows
        stays. */
    virtual void Clear() = 0;

    /** Wakes the readers that wait; costs them nothing who do not. After Publish, at leisure. */
    virtual void Wake() = 0;

    /** Records that were dropped, and that left the history before anybody fetched them. */
    ///@{
    virtual UINT64 GetDropped() const = 0;
    virtual UINT64 GetLost() const = 0;
    ///@}
};

/** Makes writers and readers. Callable from any thread. */
class KW_EXPORT IKWStream
{
public:
    virtual ~IKWStream();

    /** Null while there is a writer. A new one begins with Configure, or goes on as its
        predecessor was configured. */
    virtual std::unique_ptr<IKWStreamWriter> MakeWriter() = 0;
    /** Null when the system has no descriptor left. */
    virtual std::unique_ptr<IKWStreamReader> MakeReader() = 0;
};

/** A stream with so much memory for records, at most eKW_STREAM_BYTES. Touches all of it: some
    tens of milliseconds for the most. Null when the system does not have it. */
KW_EXPORT std::shared_ptr<IKWStream> KW_MakeStream(UINT64 bytes = eKW_STREAM_BYTES);
