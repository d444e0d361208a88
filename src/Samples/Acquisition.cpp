// SPDX-License-Identifier: MIT
#include "Streams/Acquisition.h"

#include "CommonDatabase/Nodes/DbPgRoot.h"
#include "CommonDatabase/Properties/DbPropEnum.h"
#include "CommonDatabase/Properties/DbPropNum.h"
#include "IKWFunctionZEL.h"
#include "KWEnumerationsOnOff.h"
#include "LockManager.h"
#include "Names/HistoryViewer.h"
#include "Names/ZEL.h"
#include "Samples/AcquisitionSettings.h"
#include "Samples/Delivery.h"
#include "Samples/ReferenceStore.h"

#include <algorithm>

IKWAcquisition::~IKWAcquisition() = default;
IKWRecordTest::~IKWRecordTest() = default;

namespace
{
using namespace NNames;
using namespace NSamples;

class CAcquisition final : public IKWAcquisition
{
public:
    CAcquisition(std::shared_ptr<IKWFunctionZEL> handle, CDbPgRoot& root,
                 std::shared_ptr<IKWStream> stream, UINT64 bytes)
        : m_root(root), m_stream(std::move(stream)), m_writer(m_stream->MakeWriter()),
          m_reader(m_stream->MakeReader()), m_bytes(bytes), m_delivery(root, m_progress),
          m_reference(root, std::move(handle))
    {
        m_progress.clears = m_delivery.GetClears();
    }
    bool IsGood() const { return m_reader != nullptr; }

    KW_ACCEPTANCE Arm() override;
    const KW_ArmedAcquisition& GetArmed() const override { return m_settings.armed; }
    std::span<std::byte> Reserve(UINT32 place) override;
    KW_ACCEPTANCE Advance(UINT32 place, UINT32 points) override;
    UINT32 GetAdvanced(UINT32 place) const override
    {
        return m_isBegun && place < eKW_PLACE_COUNT ? m_advanced[place] : 0;
    }
    KW_ACCEPTANCE Publish(const KW_AcquiredInfo& info) override;
    void SetTest(IKWRecordTest* test) override { m_test = test; }

    std::shared_ptr<IKWStream> GetStream() const override { return m_stream; }
    void Deliver() override;
    CKWRecord GetShown(IKWStreamReader& reader) const override;
    CKWRecord GetReference() const override { return m_reference.Get(); }
    KW_ACCEPTANCE SetReference(const CKWRecord& record, UINT32 trace) override
    {
        return m_reference.Set(record, trace);
    }

private:
    void ClearIfAsked();
    void Follow();
    void Configure();
    void Begin();
    bool IsWhole() const;
    bool MayGoOn() const { return m_code <= eKW_ACC_WARNING; }
    KW_ACCEPTANCE Show(const KW_AcquiredInfo& info, bool keep);
    void Count(const KW_AcquiredInfo& info);

    CDbPgRoot& m_root;
    const std::shared_ptr<IKWStream> m_stream;
    const std::unique_ptr<IKWStreamWriter> m_writer;
    const std::unique_ptr<IKWStreamReader> m_reader; ///< of Deliver
    const UINT64 m_bytes;
    t_Progress m_progress;
    CDelivery m_delivery;
    CReferenceStore m_reference; ///< keeps the tree

    // Of the thread that acquires.
    long long m_seen = -1; ///< change counter that the settings are of
    t_AcquisitionSettings m_settings;
    KW_ACCEPTANCE m_code = eKW_ACC_NOTHING_TO_ACT_ON; ///< of Arm
    UINT64 m_run = 0;                                 ///< that was armed
    bool m_isBegun = false;                           ///< a record is being filled
    bool m_isGrowing = false;                         ///< and seen
    std::array<UINT32, eKW_PLACE_COUNT> m_advanced{}; ///< its points
    IKWRecordTest* m_test = nullptr;
};

/** Cheap while nothing is asked for: one number is compared. */
void CAcquisition::ClearIfAsked()
{
    const UINT64 clears = m_delivery.GetClears();
    if (clears != m_progress.clears.load(std::memory_order_relaxed))
    {
        m_writer->Clear();
        m_progress.clears.store(clears, std::memory_order_release);
    }
}

KW_ACCEPTANCE CAcquisition::Arm()
{
    ClearIfAsked();
    long long now = m_seen;
    if (m_root.HasChanged(now) && !m_delivery.IsOwnMove(now, m_seen))
    {
        Follow();
    }
    else
    {
        m_seen = now;
    }
    if (m_isBegun && !m_isGrowing)
    {
        m_writer->Discard();
        m_isBegun = false;
    }
    if (!m_isBegun)
    {
        Begin();
    }
    return m_code;
}

/** Settings that belong together, and what of the run they do not know yet. */
void CAcquisition::Follow()
{
    t_AcquisitionSettings settings;
    UINT64 uncounted = 0;
    {
        const CLockGuard lock(eACCESS_READ);
        m_root.HasChanged(m_seen);
        m_delivery.NoticeRun();
        m_run = m_delivery.GetRun();
        settings = ReadSettings(m_root);
        uncounted = m_delivery.GetUncounted();
    }
    KW_ArmedAcquisition& armed = settings.armed;
    armed.settingsCounter = m_seen;
    if (settings.isSingle)
    {
        armed.left -= static_cast<UINT32>(std::min<UINT64>(uncounted, armed.left));
        armed.isRunning = armed.isRunning && armed.left > 0;
    }
    if (!armed.isRunning || !HaveSameTraces(armed, m_settings.armed))
    {
        // What grows can not say that its points mean something else from here on.
        m_writer->Discard();
        m_isBegun = m_isGrowing = false;
    }
    m_settings = settings;
    m_code = eKW_ACC_NOTHING_TO_ACT_ON;
    if (armed.isRunning)
    {
        Configure();
    }
}

void CAcquisition::Configure()
{
    std::array<KW_TraceLayout, eKW_PLACE_COUNT> layout;
    std::transform(m_settings.armed.traces.begin(), m_settings.armed.traces.end(), layout.begin(),
                   [](const KW_TraceInfo& trace) {
                       return KW_TraceLayout{trace.format, trace.count};
                   });
    m_code = m_writer->Configure(layout, m_settings.armed.historyDepth, m_bytes);
    m_settings.armed.isRunning = MayGoOn();
}

void CAcquisition::Begin()
{
    m_advanced = {};
    m_progress.points.store(0, std::memory_order_relaxed);
    m_progress.linePoints.store(0, std::memory_order_relaxed);
}

std::span<std::byte> CAcquisition::Reserve(UINT32 place)
{
    if (!MayGoOn())
    {
        return {};
    }
    if (!m_isBegun)
    {
        Begin();
        m_isBegun = true;
    }
    return m_writer->Reserve(place);
}

KW_ACCEPTANCE CAcquisition::Advance(UINT32 place, UINT32 points)
{
    const KW_ACCEPTANCE code = m_writer->Advance(place, points);
    if (KW_IsAccepted(code))
    {
        m_advanced[place] += points;
        std::atomic<UINT32>& told =
            place == eKW_PLACE_LINES ? m_progress.linePoints : m_progress.points;
        told.store(m_advanced[place], std::memory_order_relaxed);
    }
    return code;
}

bool CAcquisition::IsWhole() const
{
    return std::equal(m_advanced.begin(), m_advanced.end(), m_settings.armed.traces.begin(),
                      [](UINT32 points, const KW_TraceInfo& trace)
                      { return points >= trace.count; });
}

KW_ACCEPTANCE CAcquisition::Publish(const KW_AcquiredInfo& info)
{
    if (!m_isBegun)
    {
        return eKW_ACC_NOTHING_TO_ACT_ON;
    }
    const bool isBlock = m_settings.armed.blockSize > 0;
    const bool keep = isBlock && !IsWhole();
    const KW_ACCEPTANCE code = Show(info, keep);
    if (KW_IsAccepted(code))
    {
        m_progress.blocks.fetch_add(isBlock ? 1 : 0, std::memory_order_relaxed);
        m_isGrowing = keep;
        m_isBegun = keep;
        if (!keep)
        {
            Count(info);
        }
        m_writer->Wake();
    }
    else if (code == eKW_ACC_NOTHING_TO_ACT_ON)
    {
        m_isBegun = false; // it found no room
    }
    return code;
}

KW_ACCEPTANCE CAcquisition::Show(const KW_AcquiredInfo& info, bool keep)
{
    KW_RecordInfo record;
    record.triggerTime = info.triggerTime;
    record.settingsCounter = m_settings.armed.settingsCounter;
    std::array<KW_TraceInfo, eKW_PLACE_COUNT> traces = m_settings.armed.traces;
    for (std::size_t i = 0; i < traces.size(); ++i)
    {
        traces[i].start += info.shift;
        traces[i].flags = info.flags[i];
    }
    if (m_test != nullptr && !keep)
    {
        if (const CKWRecord draft = m_writer->GetDraft(record, traces))
        {
            record.maskResult = m_test->Test(draft);
        }
        if ((m_settings.kept >> record.maskResult & 1U) == 0 && !m_isGrowing)
        {
            m_writer->Discard();
            return eKW_ACC_OK;
        }
    }
    return m_writer->Publish(record, traces, keep);
}

/** Of a run that has ended meanwhile it is none of the present one's. */
void CAcquisition::Count(const KW_AcquiredInfo& info)
{
    UINT32 flags = 0;
    for (UINT32 i = eKW_PLACE_C1; i <= eKW_PLACE_C4; ++i)
    {
        flags |= (info.flags[i] & 3U) << 2 * i;
    }
    m_progress.flags.store(flags, std::memory_order_relaxed);
    m_progress.triggerTime.store(info.triggerTime, std::memory_order_relaxed);
    if (m_run != m_delivery.GetRun())
    {
        return;
    }
    m_progress.completed.fetch_add(1, std::memory_order_relaxed);
    KW_ArmedAcquisition& armed = m_settings.armed;
    if (m_settings.isSingle && --armed.left == 0)
    {
        armed.isRunning = false;
        m_code = eKW_ACC_NOTHING_TO_ACT_ON;
    }
}

void CAcquisition::Deliver()
{
    if (m_reference.IsAsked())
    {
        m_reference.CarryOut(GetShown(*m_reader));
    }
    const CLockGuard lock;
    m_delivery.Deliver(m_writer->GetLost(), *m_reader);
}

CKWRecord CAcquisition::GetShown(IKWStreamReader& reader) const
{
    if (m_delivery.GetClears() != m_progress.clears.load(std::memory_order_acquire))
    {
        return {};
    }
    const auto viewer = m_root.Find(ZEL::HistoryViewer);
    return viewer.At(HistoryViewer::Enabled)->Get() == eKW_ONOFF_ON
               ? reader.GetHistory(viewer.At(HistoryViewer::SelectedTrace)->Get())
               : reader.GetLatest();
}
} // namespace

std::shared_ptr<IKWAcquisition> KW_MakeAcquisition(std::shared_ptr<IKWFunctionZEL> root,
                                                   UINT64 bytes)
{
    if (root == nullptr)
    {
        return nullptr;
    }
    auto* const top = dynamic_cast<CDbPgRoot*>(root->GetDbObject().get());
    std::shared_ptr<IKWStream> stream = top != nullptr ? KW_MakeStream(bytes) : nullptr;
    if (stream == nullptr)
    {
        return nullptr;
    }
    const CLockGuard lock;
    auto acquisition =
        std::make_shared<CAcquisition>(std::move(root), *top, std::move(stream), bytes);
    return acquisition->IsGood() ? acquisition : nullptr;
}
