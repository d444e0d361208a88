// SPDX-License-Identifier: MIT
#include "Samples/ReferenceStore.h"

#include "CommonDatabase/Nodes/DbPgRoot.h"
#include "CommonDatabase/Properties/DbPropText.h"
#include "ErrorReport.h"
#include "KWEnumerationsAcquisition.h"
#include "KWEnumerationsVertical.h"
#include "KWMath.h"
#include "Names/Channel.h"
#include "Names/ChannelType.h"
#include "Names/Horizontal.h"
#include "Names/ReferenceCurve.h"
#include "Names/ReferenceCurveAttributes.h"
#include "Names/Vertical.h"
#include "Names/ZEL.h"
#include "Rules/ChannelRules.h"
#include "Samples/Results.h"
#include "Streams/Acquisition.h"

#include <QDateTime>
#include <cmath>

using namespace NNames;

namespace NSamples
{
namespace
{
constexpr auto kCurve = ZEL::Vertical / Vertical::ReferenceCurve;
constexpr auto kAttributes = kCurve / ReferenceCurve::ReferenceCurveAttributes;

/** Where a channel has its trace in a record; the count of traces when it has none. */
UINT32 PlaceOf(const CKWRecord& record, KW_ZEL_CHANNEL channel)
{
    UINT32 place = 0;
    while (place < record.GetTraceCount() &&
           (record.GetTrace(place).channel != channel || record.GetTrace(place).count == 0))
    {
        ++place;
    }
    return place;
}

/** V or what the unit is per division; negative scales are of inverted channels. */
double DivisionOf(const KW_TraceInfo& trace)
{
    return trace.format == eKW_SAMPLES_FLOAT
               ? 1.0
               : KWMath::DecimalProduct(std::fabs(trace.scale), KW_COUNTS_PER_DIVISION);
}

/** Width of the picture in divisions, without the points of both ends that are for filters. */
double TimeScaleOf(const KW_TraceInfo& trace)
{
    const UINT32 hidden = 2 * trace.settlingPoints;
    const UINT32 shown = trace.count > hidden ? trace.count - hidden : trace.count;
    return KWMath::DecimalProduct(trace.interval, shown / NRules::kHorizontalDivisions);
}

/** Where the data of a channel come from, and what kind of trace it is. */
KW_ZEL_CHANNEL_DATA_GENERATION GenerationOf(const CDbPgRoot& root, KW_ZEL_CHANNEL source)
{
    switch (source)
    {
    case eKW_ZEL_CHANNEL_C1:
    case eKW_ZEL_CHANNEL_C2:
    case eKW_ZEL_CHANNEL_C3:
    case eKW_ZEL_CHANNEL_C4:
        return root
            .At(ZEL::Vertical / Vertical::Channel / (source - eKW_ZEL_CHANNEL_C1) /
                Channel::ChannelType / ChannelType::DataGeneration)
            ->Get();
    case eKW_ZEL_CHANNEL_M1:
        return eKW_ZEL_CHANNEL_DATA_GENERATION_CALCULATED;
    default:
        return eKW_ZEL_CHANNEL_DATA_GENERATION_RECALLED;
    }
}
} // namespace

CReferenceStore::CReferenceStore(CDbPgRoot& root, std::shared_ptr<IKWFunctionZEL> handle)
    : m_root(root), m_handle(std::move(handle)),
      m_updates(root.At(kCurve / ReferenceCurve::Update)->GetRunCount())
{
}

bool CReferenceStore::IsAsked() const
{
    return m_root.At(kCurve / ReferenceCurve::Update)->GetRunCount() != m_updates;
}

CKWRecord CReferenceStore::Get() const
{
    const auto taken = m_root.Find(kAttributes);
    const auto& length = *taken.At(ReferenceCurveAttributes::RecordLength);
    if (length.GetValidity() != eKW_VALIDITY_VALID || length.Get() == 0)
    {
        return {};
    }
    const std::lock_guard lock(m_mutex);
    const bool isIt = m_curve && m_curve.GetTrace(0).count == length.Get();
    return isIt ? m_curve : CKWRecord{};
}

/** The mathematics channel, or none. */
CKWRecord CReferenceStore::Computed(const CKWRecord& shown)
{
    CKWRecord curve;
    KW_MakeMathematicsCurve(m_handle, 1)->Compute(shown, curve, Get());
    return curve;
}

void CReferenceStore::Update(const CKWRecord& shown)
{
    m_updates = m_root.At(kCurve / ReferenceCurve::Update)->GetRunCount();
    const KW_ZEL_CHANNEL source = m_root.At(kCurve / ReferenceCurve::Source)->Get();
    const CKWRecord record = source == eKW_ZEL_CHANNEL_M1 ? Computed(shown) : shown;
    if (const KW_ACCEPTANCE code = Set(record, PlaceOf(record, source)); !KW_IsAccepted(code))
    {
        KW_REPORT_ERROR(QStringLiteral("Reference curve: the source has no trace to store (%1)")
                            .arg(KW_GetAcceptanceText(code)),
                        __FILE__);
    }
}

KW_ACCEPTANCE CReferenceStore::Set(const CKWRecord& record, UINT32 trace)
{
    KW_TraceInfo info = record.GetTrace(trace);
    if (info.count == 0)
    {
        return eKW_ACC_BAD_INDEX;
    }
    if (!KW_IsCurve(info.format))
    {
        return eKW_ACC_WRONG_KIND;
    }
    const KW_ZEL_CHANNEL source = info.channel;
    info.channel = eKW_ZEL_CHANNEL_R1;
    const std::span<const std::byte> samples = record.GetSamples(trace);
    KW_ACCEPTANCE code = eKW_ACC_OK;
    CKWRecord curve = KW_MakeRecord(record.GetInfo(), {&info, 1}, {&samples, 1}, &code);
    if (KW_IsAccepted(code))
    {
        const CLockGuard tree;
        {
            const std::lock_guard lock(m_mutex);
            m_curve = curve;
        }
        const CDbRootScope scope(&m_root, eWRITEKIND::Internal);
        DeliverAttributes(curve, source);
    }
    return code;
}

void CReferenceStore::DeliverAttributes(const CKWRecord& curve, KW_ZEL_CHANNEL source)
{
    using A = ReferenceCurveAttributes;
    const KW_TraceInfo trace = curve.GetTrace(0);
    const double division = DivisionOf(trace);
    const auto taken = m_root.Find(kAttributes);
    Tell(*taken.At(A::Source), source);
    Tell(*taken.At(A::SourceType), NRules::TraceTypeOf(source));
    Tell(*taken.At(A::DataGeneration), GenerationOf(m_root, source));
    Tell(*taken.At(A::AcquisitionMode),
         m_root.At(ZEL::Horizontal / Horizontal::AcquisitionMode)->Get());
    Tell(*taken.At(A::Unit), trace.unit);
    TellBounded(*taken.At(A::Resolution), trace.interval);
    TellBounded(*taken.At(A::TriggerOffset), trace.start);
    TellBounded(*taken.At(A::OriginalScale), division);
    TellBounded(*taken.At(A::OriginalPosition), std::round(-trace.offset / division * 1e9) / 1e9);
    TellBounded(*taken.At(A::OriginalTimeScale), TimeScaleOf(trace));
    const QDateTime time =
        QDateTime::fromMSecsSinceEpoch(curve.GetInfo().triggerTime / 1000000, Qt::UTC);
    Tell(*taken.At(A::TimeStamp), time.toString(Qt::ISODateWithMs));
    Tell(*taken.At(A::RecordLength), trace.count);
}
} // namespace NSamples
