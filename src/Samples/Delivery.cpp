// SPDX-License-Identifier: MIT
#include "Samples/Delivery.h"

#include "CommonDatabase/Nodes/DbPgRoot.h"
#include "CommonDatabase/Properties/DbPropEnum.h"
#include "CommonDatabase/Properties/DbPropNum.h"
#include "KWEnumerationsAcquisition.h"
#include "KWEnumerationsOnOff.h"
#include "KWEnumerationsReadings.h"
#include "KWMath.h"
#include "Names/Channel.h"
#include "Names/Control.h"
#include "Names/CurrentRun.h"
#include "Names/HistoryViewer.h"
#include "Names/Horizontal.h"
#include "Names/Runs.h"
#include "Names/SMScope.h"
#include "Names/SampleCounter.h"
#include "Names/Vertical.h"
#include "Names/ZEL.h"
#include "Samples/AcquisitionSettings.h"
#include "Samples/Results.h"

#include <algorithm>
#include <chrono>
#include <cmath>

using namespace NNames;

namespace NSamples
{
namespace
{
constexpr auto kCounter = ZEL::Horizontal / Horizontal::SampleCounter;
constexpr auto kRun = ZEL::Runs / Runs::CurrentRun;
constexpr auto kScope = ZEL::Control / Control::SMScope;

INT64 Now()
{
    using namespace std::chrono;
    return duration_cast<nanoseconds>(system_clock::now().time_since_epoch()).count();
}

double Seconds(INT64 nanoseconds)
{
    return static_cast<double>(nanoseconds) * 1e-9;
}

/** How far a trace of the running acquisition has come. */
struct t_Advance
{
    t_Advance(const std::atomic<UINT32>& advanced, UINT32 settling, UINT32 length)
        : points(advanced.load(std::memory_order_relaxed)),
          shown(points > settling ? std::min(points - settling, length) : 0)
    {
    }
    /** Stored samples behind the points. */
    UINT64 Samples(double interpolation) const
    {
        return KWMath::ToInteger<UINT64>(shown / interpolation);
    }
    /** Whether the trigger, time 0, is not after the last point. */
    bool Reaches(double left, double interval) const
    {
        return points > 0 && left + shown * interval >= 0;
    }

    UINT32 points;
    UINT32 shown;
};
} // namespace

CDelivery::CDelivery(CDbPgRoot& root, const t_Progress& progress)
    : m_root(root), m_progress(progress),
      m_resets(root.At(kCounter / SampleCounter::ResetCounters)->GetRunCount())
{
    NoticeRun();
}

void CDelivery::NoticeRun()
{
    const UINT64 run = m_root.At(ZEL::Runs / Runs::NumberOfRuns)->Get();
    if (run == GetRun())
    {
        return;
    }
    m_run.store(run, std::memory_order_relaxed);
    m_runBegin = m_counted = m_progress.completed.load(std::memory_order_relaxed);
    m_base = {m_runBegin, m_progress.blocks.load(std::memory_order_relaxed), m_told.lost};
    m_told = m_base;
    m_startedAt = Now();
    m_wasAcquiring = IsAcquiring(m_root);
}

UINT64 CDelivery::GetUncounted() const
{
    return m_progress.completed.load(std::memory_order_relaxed) - m_counted;
}

UINT64 CDelivery::GetClears() const
{
    return m_root.At(ZEL::HistoryViewer / HistoryViewer::Clear)->GetRunCount();
}

bool CDelivery::IsOwnMove(long long now, long long seen) const
{
    // Counters only rise: an end before a later beginning never fits.
    return m_after.load(std::memory_order_acquire) == now &&
           m_before.load(std::memory_order_relaxed) <= seen;
}

void CDelivery::Deliver(UINT64 lost, IKWStreamReader& reader)
{
    NoticeRun();
    m_now = {m_progress.completed.load(std::memory_order_relaxed),
             m_progress.blocks.load(std::memory_order_relaxed), lost};
    long long before = 0;
    m_root.HasChanged(before);
    const KW_ZEL_RUNSTOP_STATE asked = m_root.At(kScope / SMScope::RunStop)->Get();
    {
        const CDbRootScope scope(&m_root, eWRITEKIND::Internal);
        DeliverCounts();
        DeliverSamples();
        DeliverHistory(reader);
        DeliverClipping();
        CountDown();
        DeliverRun();
    }
    if (m_root.At(kScope / SMScope::RunStop)->Get() == asked)
    {
        long long after = 0;
        m_root.HasChanged(after);
        if (m_after.load(std::memory_order_relaxed) != before)
        {
            m_before.store(before, std::memory_order_relaxed);
        }
        m_after.store(after, std::memory_order_release);
    }
}

void CDelivery::DeliverCounts()
{
    const auto counter = m_root.Find(kCounter);
    const UINT64 resets = m_root.At(kCounter / SampleCounter::ResetCounters)->GetRunCount();
    if (resets != m_resets)
    {
        // What nobody was told of yet may have come since.
        m_resets = resets;
        m_base = m_told;
    }
    m_told = m_now;
    Tell(*counter.At(SampleCounter::Acquisitions), m_now.completed - m_base.completed);
    Tell(*counter.At(SampleCounter::AcquiredBlocks),
         static_cast<UINT32>(m_now.blocks - m_base.blocks));
    Tell(*counter.At(SampleCounter::LostAcquisitions), m_now.lost - m_base.lost);
    Tell(*counter.At(SampleCounter::ActiveBuffer),
         m_now.completed % 2 == 0 ? eKW_ZEL_DBLBUFFER_BUFFER_A : eKW_ZEL_DBLBUFFER_BUFFER_B);
}

void CDelivery::DeliverSamples()
{
    const auto counter = m_root.Find(kCounter);
    const auto time = m_root.Find(ZEL::Horizontal);
    const t_Advance analog(m_progress.points, time.At(Horizontal::PreSettlingSamples)->Get(),
                           time.At(Horizontal::PPLengthWithoutSettlingSamples)->Get());
    const t_Advance lines(m_progress.linePoints,
                          time.At(Horizontal::PreSettlingSamplesDigital)->Get(),
                          time.At(Horizontal::PPLengthWithoutSettlingSamplesDigital)->Get());
    Tell(*counter.At(SampleCounter::AcquiredSamples),
         analog.Samples(time.At(Horizontal::InterpolationFactor)->Get()));
    Tell(*counter.At(SampleCounter::AcquiredSamplesDigital),
         lines.Samples(time.At(Horizontal::InterpolationFactorDigital)->Get()));
    const double left = time.At(Horizontal::Left)->Get();
    const bool isComplete = analog.Reaches(left, time.At(Horizontal::ResolutionPP)->Get()) ||
                            lines.Reaches(left, time.At(Horizontal::ResolutionPPDigital)->Get());
    Tell(*counter.At(SampleCounter::PreTriggerComplete), isComplete ? eKW_ONOFF_ON : eKW_ONOFF_OFF);
}

/** What was asked to be cleared is gone, also before the thread that acquires has come to it. */
void CDelivery::DeliverHistory(IKWStreamReader& reader)
{
    const auto viewer = m_root.Find(ZEL::HistoryViewer);
    auto& available = *viewer.At(HistoryViewer::AvailableTraces);
    const bool isCleared = m_progress.clears.load(std::memory_order_acquire) != GetClears();
    Tell(available, isCleared ? 0 : std::min(reader.GetAvailable(), available.GetMax()));
    const INT32 selected = viewer.At(HistoryViewer::SelectedTrace)->Get();
    if (selected == 0)
    {
        return;
    }
    const CKWRecord shown = reader.GetHistory(selected);
    const CKWRecord newest = reader.GetHistory(0);
    if (shown && newest)
    {
        const INT64 age = shown.GetInfo().triggerTime - newest.GetInfo().triggerTime;
        Tell(*viewer.At(HistoryViewer::TraceTime), Seconds(std::min<INT64>(age, 0)));
    }
}

void CDelivery::DeliverClipping()
{
    static constexpr KW_ZEL_LIMIT kLimits[] = {eKW_ZEL_LIMIT_INSIDE, eKW_ZEL_LIMIT_OVERFLOW,
                                               eKW_ZEL_LIMIT_UNDERFLOW,
                                               eKW_ZEL_LIMIT_OVER_AND_UNDERFLOW};
    if (m_now.completed == m_runBegin)
    {
        return;
    }
    const UINT32 flags = m_progress.flags.load(std::memory_order_relaxed);
    for (INT32 i = 0; i < 4; ++i)
    {
        const auto channel = m_root.Find(ZEL::Vertical / Vertical::Channel / i);
        if (channel.At(Channel::Enabled)->Get() == eKW_ONOFF_ON)
        {
            Tell(*channel.At(Channel::Clipping), kLimits[flags >> 2 * i & 3U]);
        }
    }
}

/** Of the scope; in other functions the run is theirs. */
void CDelivery::DeliverRun()
{
    const bool isAcquiring = IsAcquiring(m_root);
    if (!isAcquiring && !m_wasAcquiring)
    {
        return;
    }
    m_wasAcquiring = isAcquiring;
    const auto run = m_root.Find(kRun);
    const UINT64 count = m_now.completed - m_runBegin;
    const INT64 now = Now();
    Tell(*run.At(CurrentRun::OperationState),
         isAcquiring ? eKW_ZEL_OPSTATE_ACTIVE : eKW_ZEL_OPSTATE_DONE);
    Tell(*run.At(CurrentRun::StartedAt), m_startedAt / 1000000000);
    Tell(*run.At(CurrentRun::Duration), Seconds(std::max<INT64>(now - m_startedAt, 0)));
    Tell(*run.At(CurrentRun::Acquisitions), count);
    const bool isTriggered =
        m_root.At(ZEL::Horizontal / Horizontal::DSPMode)->Get() != eKW_ZEL_DSP_MODE_ROLL;
    Tell(*run.At(CurrentRun::Triggers), isTriggered ? count : 0);
    if (isTriggered && count > 0)
    {
        const INT64 age = now - m_progress.triggerTime.load(std::memory_order_relaxed);
        Tell(*run.At(CurrentRun::LastTriggerAge), Seconds(std::max<INT64>(age, 0)));
    }
}

/** A rule ends the run when none is left. */
void CDelivery::CountDown()
{
    const auto scope = m_root.Find(kScope);
    const UINT64 uncounted = m_now.completed - m_counted;
    m_counted = m_now.completed;
    if (scope.At(SMScope::RunStop)->Get() == eKW_ZEL_RUNSTOP_STATE_SINGLE)
    {
        auto& left = *scope.At(SMScope::AcquisitionsLeft);
        Tell(left, static_cast<UINT32>(left.Get() - std::min<UINT64>(uncounted, left.Get())));
    }
}
} // namespace NSamples
