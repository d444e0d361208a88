// SPDX-License-Identifier: MIT
#include "Buses/PgTrackInTable.h"

#include "Buses/BusRules.h"
#include "CommonDatabase/Containers/DbPgArray.h"
#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsOnOff.h"
#include "KWEnumerationsSerialBus.h"
#include "Names/Horizontal.h"
#include "Names/SerialBus.h"
#include "Names/TrackInTable.h"
#include "Names/UARTBusResults.h"
#include "Names/UARTBusSettings.h"
#include "Names/ZEL.h"

using namespace NNames;

namespace
{
const CDbPropNumDouble* TimeOf(const CDbPgArrayBase& frames, INT32 index, const char* name)
{
    return dynamic_cast<const CDbPropNumDouble*>(
        frames.ItemAt(index)->FindProperty(QString(QLatin1String(name))));
}
} // namespace

t_Couplings CPgTrackInTable::Rules() const
{
    using T = CPgTrackInTable;
    static constexpr auto rows = Table<Names>(
        On(Names::SelectedIndex) >> Do<&T::MarkIndex>,
        On(Names::SelectedFrame) >> Do<&T::MarkFrame>, OnAny() >> Do<&T::ShowMarked>,
        On(Names::First) >> Do<&T::MarkFirst>, On(Names::Previous) >> Do<&T::MarkPrevious>,
        On(Names::Next) >> Do<&T::MarkNext>, On(Names::Last) >> Do<&T::MarkLast>,
        On(Names::SelectAtTrigger) >> Do<&T::MarkAtTrigger>,
        Changed(ZEL::SerialBus / SerialBus::Protocol,
                ZEL::SerialBus / SerialBus::UARTBusSettings / UARTBusSettings::FrameMode) >>
            Derive<&T::FollowFrames>);
    return rows;
}

CDbPgArrayBase* CPgTrackInTable::Frames() const
{
    constexpr auto settings = ZEL::SerialBus / SerialBus::UARTBusSettings;
    constexpr auto results = ZEL::SerialBus / SerialBus::UARTBusResults;
    const auto& protocol = *At(ZEL::SerialBus / SerialBus::Protocol);
    const bool isUart = protocol.Get() == eKW_ZEL_SERIALBUS_PROTOCOL_UART;
    if (isUart && At(settings / UARTBusSettings::FrameMode)->Get() == eKW_FRAME_MODE_NONE)
    {
        return dynamic_cast<CDbPgArrayBase*>(At(results / UARTBusResults::UARTBusDataWord));
    }
    const QString name = protocol.GetText();
    const CDbPropertyGroup& frames = *NRules::OfProtocol(*GetParent(), name, "BusResults");
    return dynamic_cast<CDbPgArrayBase*>(NRules::OfProtocol(frames, name, "BusFrame"));
}

void CPgTrackInTable::FollowFrames()
{
    Mark(MarkedIndex());
}

void CPgTrackInTable::MarkIndex()
{
    Mark(m_pSelectedIndex->Get());
}

void CPgTrackInTable::MarkFrame()
{
    const bool isListed = !m_pSelectedFrame->IsActive() || MarkedIndex() >= 0;
    Mark(isListed ? MarkedIndex() : m_pSelectedIndex->Get());
}

KW_ACCEPTANCE CPgTrackInTable::MarkFirst()
{
    return MarkFrom(0, 1);
}

KW_ACCEPTANCE CPgTrackInTable::MarkPrevious()
{
    return MarkFrom(m_pSelectedIndex->Get() - 1, -1);
}

KW_ACCEPTANCE CPgTrackInTable::MarkNext()
{
    return MarkFrom(m_pSelectedIndex->Get() + 1, 1);
}

KW_ACCEPTANCE CPgTrackInTable::MarkLast()
{
    return MarkFrom(Count() - 1, -1);
}

INT32 CPgTrackInTable::Count() const
{
    return Frames()->GetCount();
}

INT32 CPgTrackInTable::MarkedIndex() const
{
    const bool isListed =
        m_pSelectedFrame->IsActive() && m_pSelectedFrame->GetContainer() == Frames();
    return isListed ? m_pSelectedFrame->GetContainerIndex() : -1;
}

void CPgTrackInTable::Mark(INT32 index)
{
    const CDbPgArrayBase* const frames = Frames();
    const bool isFrame = index >= 0 && index < Count();
    NRules::SetLimits<INT32>(*m_pSelectedIndex, -1, Count() - 1);
    KW_CHECKED(m_pSelectedIndex->DbSet(isFrame ? index : -1));
    KW_CHECKED(
        m_pSelectedFrame->DbSet(isFrame ? frames->ItemAt(index)->GetPath() : QStringLiteral("")));
    const CDbPropNumDouble* const time = isFrame ? TimeOf(*frames, index, "StartTime") : nullptr;
    KW_CHECKED(time != nullptr ? m_pFrameTime->DbSet(time->Get())
                               : m_pFrameTime->SetValidity(eKW_VALIDITY_INVALID));
}

KW_ACCEPTANCE CPgTrackInTable::MarkFrom(INT32 index, INT32 step)
{
    for (; index >= 0 && index < Count(); index += step)
    {
        if (StopsAt(index))
        {
            Mark(index);
            return ShowMarked();
        }
    }
    return eKW_ACC_WARNING;
}

KW_ACCEPTANCE CPgTrackInTable::MarkAtTrigger()
{
    for (INT32 index = 0; index < Count(); ++index)
    {
        const CDbPropNumDouble* const stop = TimeOf(*Frames(), index, "StopTime");
        if (stop != nullptr && stop->Get() >= 0.0)
        {
            Mark(index);
            return ShowMarked();
        }
    }
    return eKW_ACC_WARNING;
}

bool CPgTrackInTable::StopsAt(INT32 index) const
{
    const auto* const state = dynamic_cast<const CDbPropEnumIntAccess*>(
        Frames()->ItemAt(index)->FindProperty(QStringLiteral("State")));
    // Every protocol counts its states from "OK".
    return m_pErrorsOnly->Get() == eKW_ONOFF_OFF || (state != nullptr && state->GetAsInt() != 0);
}

KW_ACCEPTANCE CPgTrackInTable::ShowMarked()
{
    const bool isMarked =
        m_pSelectedIndex->Get() >= 0 && m_pFrameTime->GetValidity() == eKW_VALIDITY_VALID;
    if (!isMarked || m_pEnabled->Get() == eKW_ONOFF_OFF)
    {
        return eKW_ACC_OK;
    }
    const double left = At(ZEL::Horizontal / Horizontal::Left)->Get();
    const double right = At(ZEL::Horizontal / Horizontal::Right)->Get();
    const bool isCentred = m_pCenterInDiagram->Get() == eKW_ONOFF_ON;
    const double time = m_pFrameTime->Get();
    const double goal = isCentred ? (left + right) * 0.5 : KWMath::Bound(left, time, right);
    if (goal == time)
    {
        return eKW_ACC_OK;
    }
    CDbPropNumDouble* const position = At(ZEL::Horizontal / Horizontal::Position);
    const double wanted = position->Get() + (time - goal);
    const double legal = KWMath::Bound(position->GetMin(), wanted, position->GetMax());
    const KW_ACCEPTANCE code = KW_CHECKED(position->Set(legal));
    return std::max<KW_ACCEPTANCE>(code, legal == wanted ? eKW_ACC_OK : eKW_ACC_WARNING);
}
