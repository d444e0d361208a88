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
#include "Rules/FileRules.h"
#include "Samples/Places.h"
#include "Samples/Results.h"
#include "Streams/Acquisition.h"
#include "Streams/RecordFile.h"

#include <QDateTime>
#include <algorithm>
#include <cmath>
#include <utility>

using namespace NNames;

namespace NSamples
{
namespace
{
constexpr auto kCurve = ZEL::Vertical / Vertical::ReferenceCurve;
constexpr auto kAttributes = kCurve / ReferenceCurve::ReferenceCurveAttributes;

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
bool IsCurve(const KW_TraceInfo& trace)
{
    return trace.count > 0 && KW_IsCurve(trace.format);
}

void Tell(const QString& fileName, const KW_RecordReport& report)
{
    if (!report.text.isEmpty())
    {
        KW_REPORT_ERROR(KW_FormatRecordReport(fileName, report), __FILE__);
    }
}
} // namespace

CReferenceStore::CReferenceStore(CDbPgRoot& root, std::shared_ptr<IKWFunctionZEL> handle)
    : m_root(root), m_handle(std::move(handle)), m_done(AskedFor())
{
}

CReferenceStore::t_Runs CReferenceStore::AskedFor() const
{
    return {m_root.At(kCurve / ReferenceCurve::Update)->GetRunCount(),
            m_root.At(kCurve / ReferenceCurve::Load)->GetRunCount(),
            m_root.At(kCurve / ReferenceCurve::Save)->GetRunCount()};
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

void CReferenceStore::CarryOut(const CKWRecord& shown)
{
    const t_Runs before = std::exchange(m_done, AskedFor());
    KW_ACCEPTANCE code = m_done.update != before.update ? Update(shown) : KW_ACCEPTANCE{eKW_ACC_OK};
    if (!KW_IsAccepted(code))
    {
        KW_REPORT_ERROR(QStringLiteral("Reference curve: the source has no trace to store (%1)")
                            .arg(KW_GetAcceptanceText(code)),
                        __FILE__);
    }
    code = m_done.load != before.load ? Load() : KW_ACCEPTANCE{eKW_ACC_OK};
    code = std::max(code, m_done.save != before.save ? Save() : KW_ACCEPTANCE{eKW_ACC_OK});
    if (!KW_IsAccepted(code))
    {
        KW_REPORT_ERROR(QStringLiteral("Reference curve: not loaded or saved (%1)")
                            .arg(KW_GetAcceptanceText(code)),
                        __FILE__);
    }
}

KW_ACCEPTANCE CReferenceStore::Update(const CKWRecord& shown)
{
    const KW_ZEL_CHANNEL source = m_root.At(kCurve / ReferenceCurve::Source)->Get();
    const CKWRecord record = source == eKW_ZEL_CHANNEL_M1 ? Computed(shown) : shown;
    return Set(record, PlaceOf(record, source));
}

/** The first trace of a record file that can be a curve. */
KW_ACCEPTANCE CReferenceStore::Load()
{
    const QString fileName = NRules::PathOf(*m_root.At(kCurve / ReferenceCurve::File));
    CKWRecord record;
    KW_RecordReport report;
    const KW_ACCEPTANCE code = fileName.isEmpty() ? KW_ACCEPTANCE{eKW_ACC_BAD_NAME}
                                                  : KW_ReadRecordFile(fileName, record, report);
    if (!KW_IsAccepted(code))
    {
        Tell(fileName, report);
        return code;
    }
    UINT32 trace = 0;
    while (trace < record.GetTraceCount() && !IsCurve(record.GetTrace(trace)))
    {
        ++trace;
    }
    return Set(record, trace);
}

/** A file of another kind is made of it by zelctl. */
KW_ACCEPTANCE CReferenceStore::Save() const
{
    const QString fileName = NRules::PathOf(*m_root.At(kCurve / ReferenceCurve::File));
    if (fileName.isEmpty() || !fileName.endsWith(QLatin1String(".ref")))
    {
        return eKW_ACC_BAD_NAME;
    }
    NRules::MakeFolderOf(fileName);
    KW_RecordReport report;
    const KW_ACCEPTANCE code = KW_WriteRecordFile(fileName, Get(), report);
    if (!KW_IsAccepted(code))
    {
        Tell(fileName, report);
    }
    return code;
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
