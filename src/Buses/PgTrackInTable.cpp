// SPDX-License-Identifier: MIT
#include "Buses/PgTrackInTable.h"

#include "Buses/PgSerialBus.h"
#include "Buses/PgUARTBusSettings.h"
#include "CommonDatabase/Containers/DbPgArray.h"
#include "KWEnumerationsOnOff.h"
#include "Root/PgZEL.h"
#include "Rules/NumberRules.h"
#include "Timebase/PgHorizontal.h"

namespace
{
const CDbPropNumDouble* TimeOf(const CDbPgArrayBase& frames, INT32 index, const char* name)
{
    return dynamic_cast<const CDbPropNumDouble*>(
        frames.ItemAt(index)->FindProperty(QString(QLatin1String(name))));
}
} // namespace

KW_ACCEPTANCE CPgTrackInTable::OnPropertySet(const CDbPropBase* property)
{
    if (property == m_pSelectedIndex)
    {
        Mark(m_pSelectedIndex->Get());
    }
    else if (property == m_pSelectedFrame)
    {
        const bool isListed = !m_pSelectedFrame->IsActive() || MarkedIndex() >= 0;
        Mark(isListed ? MarkedIndex() : m_pSelectedIndex->Get());
    }
    return std::max(ShowMarked(), CPgTrackInTableBase::OnPropertySet(property));
}

KW_ACCEPTANCE CPgTrackInTable::OnFunction(const CDbFunction* function)
{
    if (function == m_pFirst)
    {
        return MarkFrom(0, 1);
    }
    if (function == m_pLast)
    {
        return MarkFrom(Count() - 1, -1);
    }
    if (function == m_pNext)
    {
        return MarkFrom(m_pSelectedIndex->Get() + 1, 1);
    }
    if (function == m_pPrevious)
    {
        return MarkFrom(m_pSelectedIndex->Get() - 1, -1);
    }
    return function == m_pSelectAtTrigger ? MarkAtTrigger()
                                          : CPgTrackInTableBase::OnFunction(function);
}

void CPgTrackInTable::UpdateGroup()
{
    Mark(MarkedIndex());
}

void CPgTrackInTable::OnTreeCreated()
{
    CPgTrackInTableBase::OnTreeCreated();
    if (CPgZEL* const root = CPgZEL::Of(*this))
    {
        root->GetDependencies().Add(
            *this, {root->GetPgSerialBus()->GetPgUARTBusSettings()->GetPrFrameMode()},
            [this] { UpdateGroup(); }, QStringLiteral("TrackInTable/SelectedFrame"));
    }
}

CDbPgArrayBase* CPgTrackInTable::Frames() const
{
    const CPgSerialBus* const bus = NRules::Above<CPgSerialBus>(*this);
    return bus != nullptr ? bus->PresentFrames() : nullptr;
}

INT32 CPgTrackInTable::Count() const
{
    const CDbPgArrayBase* const frames = Frames();
    return frames != nullptr ? frames->GetCount() : 0;
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
    CPgZEL* const root = CPgZEL::Of(*this);
    const bool isMarked =
        m_pSelectedIndex->Get() >= 0 && m_pFrameTime->GetValidity() == eKW_VALIDITY_VALID;
    if (root == nullptr || !isMarked || m_pEnabled->Get() == eKW_ONOFF_OFF)
    {
        return eKW_ACC_OK;
    }
    const CPgHorizontal& screen = *root->GetPgHorizontal();
    const double left = screen.GetPrLeft()->Get();
    const double right = screen.GetPrRight()->Get();
    const bool isCentred = m_pCenterInDiagram->Get() == eKW_ONOFF_ON;
    const double time = m_pFrameTime->Get();
    const double goal = isCentred ? (left + right) * 0.5 : KWMath::Bound(left, time, right);
    if (goal == time)
    {
        return eKW_ACC_OK;
    }
    CDbPropNumDouble* const position = screen.GetPrPosition();
    const double wanted = position->Get() + (time - goal);
    const double legal = KWMath::Bound(position->GetMin(), wanted, position->GetMax());
    const KW_ACCEPTANCE code = KW_CHECKED(position->Set(legal));
    return std::max<KW_ACCEPTANCE>(code, legal == wanted ? eKW_ACC_OK : eKW_ACC_WARNING);
}
