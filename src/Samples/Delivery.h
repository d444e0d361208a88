// SPDX-License-Identifier: MIT
#pragma once

#include "Streams/Stream.h"

#include <array>
#include <atomic>

class CDbPgRoot;

namespace NSamples
{
/** What the thread that acquires tells, a number at a time. Only it writes them. */
struct t_Progress
{
    std::atomic<UINT64> completed{0};  ///< acquisitions of all runs
    std::atomic<UINT64> blocks{0};     ///< likewise
    std::atomic<UINT32> points{0};     ///< of the running acquisition that are advanced
    std::atomic<UINT32> linePoints{0}; ///< likewise of the digital lines
    std::atomic<INT64> triggerTime{0}; ///< of the last acquisition, ns since 1970; 0: none
    std::atomic<UINT32> flags{0};      ///< of its inputs, two bits each from C1 on
    std::atomic<UINT64> clears{0};     ///< runs of HistoryViewer/Clear that are carried out
};

/**
 * The results of the tree that follow from the progress. A run of the scope begins the counts anew,
 * and so does ResetCounters. Everything here is under the tree's lock, but for what is atomic.
 */
class CDelivery
{
public:
    CDelivery(CDbPgRoot& root, const t_Progress& progress);

    /** Whether the run is another one than when it was asked last, in whatever thread. */
    void NoticeRun();
    /** Number of the run; acquisitions that were armed in another one do not count for it. */
    UINT64 GetRun() const { return m_run.load(std::memory_order_relaxed); }
    /** Acquisitions of the run that AcquisitionsLeft does not know of yet. */
    UINT64 GetUncounted() const;

    /** All results. `lost` and the history are the stream's. */
    void Deliver(UINT64 lost, IKWStreamReader& reader);
    /** Whether the root's change counter has moved from `seen` by deliveries alone, none of which
        moved a setting; `seen` then follows. Never blocks. */
    bool IsOwnMove(long long now, long long seen) const;

    /** Runs of HistoryViewer/Clear that were asked for. Never blocks. */
    UINT64 GetClears() const;

private:
    void DeliverCounts();
    void DeliverSamples();
    void DeliverHistory(IKWStreamReader& reader);
    void DeliverRun();
    void DeliverClipping();
    void CountDown();

    CDbPgRoot& m_root;
    const t_Progress& m_progress;
    std::atomic<UINT64> m_run{0};
    UINT64 m_runBegin = 0; ///< completed before the run
    UINT64 m_counted = 0;  ///< completed that AcquisitionsLeft knows of
    INT64 m_startedAt = 0; ///< ns since 1970
    bool m_wasAcquiring = false;
    struct t_Counts
    {
        UINT64 completed = 0;
        UINT64 blocks = 0;
        UINT64 lost = 0;
    };
    t_Counts m_now;      ///< one moment, so that a run ends with all that it acquired
    t_Counts m_base;     ///< where SampleCounter begins
    t_Counts m_told;     ///< that were delivered last
    UINT64 m_resets = 0; ///< runs of ResetCounters that are carried out
    /** Counter of the root before the first and after the last of deliveries in a row, none of
       which moved a setting. */
    std::atomic<long long> m_before{0};
    std::atomic<long long> m_after{-1};
};
} // namespace NSamples
