// SPDX-License-Identifier: MIT
#include "Masks/MaskTree.h"

#include "Analysis/MaskExchange.h"
#include "CommonDatabase/Nodes/DbPgRoot.h"
#include "IKWFunctionZEL.h"
#include "LockManager.h"
#include "Masks/MaskSource.h"
#include "Mathematics/MathematicsTree.h"
#include "Names/Control.h"
#include "Names/Mask.h"
#include "Names/MaskChannelSetup.h"
#include "Names/SMScope.h"
#include "Names/ZEL.h"
#include "Samples/MaskCounts.h"
#include "Samples/Places.h"
#include "Samples/Results.h"

#include <chrono>
#include <mutex>
#include <utility>

IKWMaskRun::~IKWMaskRun() = default;

namespace
{
using namespace NNames;
using namespace NSamples;
using t_Clock = std::chrono::steady_clock;

/** What an acquisition shows, to lay masks around. */
class CShownTraces final : public IMaskSource
{
public:
    CShownTraces(std::shared_ptr<IKWFunctionZEL> root, std::shared_ptr<IKWAcquisition> acquisition)
        : m_root(std::move(root)), m_acquisition(std::move(acquisition)),
          m_reader(m_acquisition->GetStream()->MakeReader())
    {
    }

    CKWRecord GetShown(KW_ZEL_CHANNEL channel, UINT32& trace) override
    {
        const std::lock_guard guard(m_mutex);
        CKWRecord record;
        if (channel == eKW_ZEL_CHANNEL_R1)
        {
            record = m_acquisition->GetReference();
        }
        else if (m_reader != nullptr)
        {
            record = m_acquisition->GetShown(*m_reader);
        }
        if (channel == eKW_ZEL_CHANNEL_M1)
        {
            const CKWRecord shown = std::exchange(record, {});
            KW_MakeMathematicsCurve(m_root, 1)->Compute(shown, record,
                                                        m_acquisition->GetReference());
        }
        trace = PlaceOf(record, channel);
        return trace < record.GetTraceCount() ? record : CKWRecord();
    }

private:
    std::mutex m_mutex; ///< of the reader
    const std::shared_ptr<IKWFunctionZEL> m_root;
    const std::shared_ptr<IKWAcquisition> m_acquisition;
    const std::unique_ptr<IKWStreamReader> m_reader;
};

class CMaskRun final : public IKWMaskRun
{
public:
    /** `source` may be null. */
    CMaskRun(std::shared_ptr<IDbGroup> node, CDbPgRoot& root, std::shared_ptr<IMaskSource> source);

    KW_MASK_RESULT Test(const CKWRecord& draft) override;
    KW_MaskEvent Deliver() override;
    std::shared_ptr<const KW_MaskSet> GetMasks() override;

private:
    bool Follow(INT64 armed);
    void Count(const CKWRecord& draft, bool isFailed);
    KW_ZEL_LIMIT LineOf(const CKWRecord& draft, std::size_t channel) const;

    double Elapse(const t_MaskValues& values);
    void DeliverCounts(const t_MaskCounts& counts);
    void DeliverEnd(const t_MaskCounts& counts, const t_MaskValues& values);
    KW_MaskEvent EventOf(const t_MaskCounts& counts, const t_MaskValues& values);

    const std::shared_ptr<IDbGroup> m_node; ///< keeps the tree
    CDbPgRoot& m_root;
    const std::shared_ptr<IMaskSource> m_source;
    CSharedMaskCounts m_shared;

    // Of the thread that tests.
    long long m_seen = -1; ///< change counter that the values are of
    t_MaskValues m_values;
    std::array<KW_PlacedMask, kMaskChannels> m_masks;
    t_MaskCounts m_counts;

    // Of the thread that delivers.
    UINT64 m_deliveredBegin = 0;
    bool m_wasRunning = false;
    t_Clock::time_point m_lookedAt = t_Clock::now();
    double m_elapsed = 0.0; ///< s
    t_MaskCounts m_told;

    // Of the thread that draws.
    t_MaskValues m_drawn;
    std::shared_ptr<const KW_MaskSet> m_set;
};

CMaskRun::CMaskRun(std::shared_ptr<IDbGroup> node, CDbPgRoot& root,
                   std::shared_ptr<IMaskSource> source)
    : m_node(std::move(node)), m_root(root), m_source(std::move(source))
{
    if (m_source != nullptr)
    {
        NMaskExchange::Connect(root, m_source);
    }
    const auto test = root.Find(ZEL::Mask);
    m_values = ReadMaskValues(root);
    m_counts.begin = m_deliveredBegin = m_values.begin;
    m_counts.tested = test.At(Mask::TestedAcquisitions)->Get();
    m_counts.failed = test.At(Mask::FailedAcquisitions)->Get();
    for (INT32 i = 0; i < kMaskChannels; ++i)
    {
        const auto setup = root.Find(ZEL::Mask / Mask::MaskChannelSetup / i);
        const auto place = static_cast<std::size_t>(i);
        m_counts.failedOf[place] = setup.At(MaskChannelSetup::FailedAcquisitions)->Get();
        m_counts.lines[place] = static_cast<UINT64>(setup.At(MaskChannelSetup::Violation)->Get());
    }
    m_elapsed = test.At(Mask::ElapsedTime)->Get();
    m_masks = ReadPlacedMasks(root, m_values);
    m_told = m_counts;
    m_shared.Write(m_counts);
}

/** False for a record that may have been armed by settings of another picture or another mask:
   these are new, and it was not armed since. */
bool CMaskRun::Follow(INT64 armed)
{
    long long now = m_seen;
    if (!m_root.HasChanged(now))
    {
        return true;
    }
    m_seen = now;
    if (ReadMaskValues(m_root) == m_values)
    {
        return true; // deliveries, and settings that do not matter here
    }
    const CLockGuard lock(eACCESS_READ);
    m_root.HasChanged(m_seen);
    const t_MaskValues values = ReadMaskValues(m_root);
    const bool isSame = values.HasSamePlaces(m_values);
    m_masks = isSame ? m_masks : ReadPlacedMasks(m_root, values);
    if (values.begin != m_values.begin)
    {
        m_counts = {};
        m_counts.begin = values.begin;
    }
    if (values.run != m_values.run)
    {
        m_counts.stopped = 0;
    }
    m_values = values;
    return isSame || armed >= m_seen;
}

KW_ZEL_LIMIT CMaskRun::LineOf(const CKWRecord& draft, std::size_t channel) const
{
    const KW_PlacedMask& placed = m_masks[channel];
    auto line = eKW_ZEL_LIMIT_INSIDE;
    if (placed.isTested)
    {
        const auto source = static_cast<KW_ZEL_CHANNEL>(eKW_ZEL_CHANNEL_C1 + channel);
        const UINT32 place = PlaceOf(draft, source); // refused where there is none
        KW_TestMask(draft, place, placed.mask, placed.mask.frame, 0, line);
    }
    return line;
}

KW_MASK_RESULT CMaskRun::Test(const CKWRecord& draft)
{
    const bool isOfThese = Follow(draft.GetInfo().settingsCounter);
    const bool isOver = m_counts.isEnded != 0 || m_counts.stopped != 0;
    if (!m_values.isRunning || isOver || !isOfThese || !draft)
    {
        m_shared.Write(m_counts);
        return eKW_MASK_NOT_TESTED;
    }
    bool isFailed = false;
    for (std::size_t i = 0; i < m_masks.size(); ++i)
    {
        const KW_ZEL_LIMIT line = LineOf(draft, i);
        m_counts.lines[i] = static_cast<UINT64>(line);
        m_counts.failedOf[i] += line != eKW_ZEL_LIMIT_INSIDE ? 1 : 0;
        isFailed = isFailed || line != eKW_ZEL_LIMIT_INSIDE;
    }
    Count(draft, isFailed);
    return isFailed ? eKW_MASK_FAILED : eKW_MASK_PASSED;
}

void CMaskRun::Count(const CKWRecord& draft, bool isFailed)
{
    ++m_counts.tested;
    if (isFailed)
    {
        ++m_counts.failed;
        m_counts.record = draft.GetInfo().number;
        m_counts.stopped =
            m_values.action == eKW_ZEL_MASK_VIOLATION_ACTIONS_STOP ? m_values.run + 1 : 0;
    }
    const bool isLast = m_values.maximum > 0 && m_counts.tested >= m_values.maximum;
    const bool isEnough = m_values.stopAfter > 0 && m_counts.failed >= m_values.stopAfter;
    m_counts.isEnded = isLast || isEnough ? 1 : 0;
    m_shared.Write(m_counts);
}

/** Pauses are left out as exactly as deliveries come. */
double CMaskRun::Elapse(const t_MaskValues& values)
{
    const t_Clock::time_point now = t_Clock::now();
    const double since = std::chrono::duration<double>(now - m_lookedAt).count();
    m_lookedAt = now;
    if (values.begin != m_deliveredBegin)
    {
        m_deliveredBegin = values.begin;
        m_elapsed = 0.0;
        m_told = {};
    }
    else if (m_wasRunning && values.isRunning)
    {
        m_elapsed += since;
    }
    m_wasRunning = values.isRunning;
    return m_elapsed;
}

void CMaskRun::DeliverCounts(const t_MaskCounts& counts)
{
    const auto test = m_root.Find(ZEL::Mask);
    Tell(*test.At(Mask::TestedAcquisitions), counts.tested);
    Tell(*test.At(Mask::PassedAcquisitions), counts.tested - counts.failed);
    Tell(*test.At(Mask::FailedAcquisitions), counts.failed);
    if (counts.tested > 0)
    {
        Tell(*test.At(Mask::FailureRate),
             100.0 * static_cast<double>(counts.failed) / static_cast<double>(counts.tested));
    }
    for (INT32 i = 0; i < kMaskChannels; ++i)
    {
        const auto setup = m_root.Find(ZEL::Mask / Mask::MaskChannelSetup / i);
        const auto place = static_cast<std::size_t>(i);
        Tell(*setup.At(MaskChannelSetup::FailedAcquisitions), counts.failedOf[place]);
        Tell(*setup.At(MaskChannelSetup::Violation), static_cast<INT32>(counts.lines[place]));
    }
}

void CMaskRun::DeliverEnd(const t_MaskCounts& counts, const t_MaskValues& values)
{
    const auto test = m_root.Find(ZEL::Mask);
    const double longest = test.At(Mask::MaximumTime)->Get();
    const bool isTimeUp = longest > 0 && m_elapsed >= longest;
    if (values.isRunning && (counts.isEnded != 0 || isTimeUp))
    {
        Tell(*test.At(Mask::State), eKW_ZEL_MASK_TESTSTATE_PASSED); // a rule judges by the counts
    }
    if (counts.stopped == values.run + 1)
    {
        Tell(*m_root.At(ZEL::Control / Control::SMScope / SMScope::RunStop),
             eKW_ZEL_RUNSTOP_STATE_STOP);
    }
}

KW_MaskEvent CMaskRun::EventOf(const t_MaskCounts& counts, const t_MaskValues& values)
{
    KW_MaskEvent event;
    event.violations = counts.failed - m_told.failed;
    if (event.violations > 0)
    {
        event.action = values.action;
        event.record = counts.record;
    }
    m_told = counts;
    return event;
}

KW_MaskEvent CMaskRun::Deliver()
{
    const CLockGuard lock;
    const t_MaskValues values = ReadMaskValues(m_root);
    const t_MaskCounts counts = m_shared.Read();
    const CDbRootScope scope(&m_root, eWRITEKIND::Internal);
    const double elapsed = Elapse(values);
    Tell(*m_root.At(ZEL::Mask / Mask::ElapsedTime), elapsed);
    if (counts.begin != values.begin)
    {
        return {}; // of a test before this one
    }
    const bool isNew = counts.tested != m_told.tested;
    if (isNew)
    {
        DeliverCounts(counts);
    }
    DeliverEnd(counts, values);
    return isNew ? EventOf(counts, values) : KW_MaskEvent{};
}

std::shared_ptr<const KW_MaskSet> CMaskRun::GetMasks()
{
    if (m_set != nullptr && ReadMaskValues(m_root).HasSamePlaces(m_drawn))
    {
        return m_set;
    }
    const CLockGuard lock(eACCESS_READ);
    m_drawn = ReadMaskValues(m_root);
    auto set = std::make_shared<KW_MaskSet>();
    set->number = m_set != nullptr ? m_set->number + 1 : 1;
    set->channels = ReadPlacedMasks(m_root, m_drawn);
    m_set = std::move(set);
    return m_set;
}
} // namespace

std::shared_ptr<IKWMaskRun> KW_MakeMaskRun(std::shared_ptr<IKWFunctionZEL> root,
                                           std::shared_ptr<IKWAcquisition> acquisition)
{
    std::shared_ptr<IDbGroup> node = root != nullptr ? root->GetDbObject() : nullptr;
    auto* const top = dynamic_cast<CDbPgRoot*>(node.get());
    if (top == nullptr)
    {
        return nullptr;
    }
    std::shared_ptr<IMaskSource> source;
    if (acquisition != nullptr)
    {
        source = std::make_shared<CShownTraces>(std::move(root), std::move(acquisition));
    }
    const CLockGuard lock;
    return std::make_shared<CMaskRun>(std::move(node), *top, std::move(source));
}
