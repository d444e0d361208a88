// SPDX-License-Identifier: MIT
#include "Timebase/PgHistoryViewer.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperHorizontal.h"
#include "KWEnumerationsAcquisition.h"
#include "KWEnumerationsOnOff.h"
#include "Names/Control.h"
#include "Names/HistoryViewer.h"
#include "Names/Horizontal.h"
#include "Names/SMScope.h"
#include "Names/ZEL.h"
#include "Rules/NumberRules.h"

using namespace NNames;

namespace
{
/** Number of the oldest of so many acquisitions. */
INT32 OldestOf(UINT32 traces)
{
    return traces > 0 ? 1 - static_cast<INT32>(traces) : 0;
}
} // namespace

t_Couplings CPgHistoryViewer::Rules() const
{
    using V = CPgHistoryViewer;
    static constexpr auto rows = Table<Names>(
        On(Names::Enabled) >> Do<&V::OnEnabled>, On(Names::Playing) >> Do<&V::OnPlaying>,
        On(Names::SelectedTrace) >> Do<&V::OnTraceChanged>,
        On(Names::StartTrace, Names::StopTrace) >> Do<&V::OrderRange>,
        On(Names::Play) >> Do<&V::PlayOrPause, &V::OnPlaying>, On(Names::Clear) >> Do<&V::Clear>,
        On(Names::First) >> Do<&V::ShowFirst>, On(Names::Previous) >> Do<&V::ShowPrevious>,
        On(Names::Next) >> Do<&V::ShowNext>, On(Names::Last) >> Do<&V::ShowLast>,
        Delivered(Names::AvailableTraces) >> Do<&V::LimitSelection>,
        Changed(ZEL::Horizontal / Horizontal::HistoryDepth) >>
            Derive<&V::LimitToHistory, &V::LimitSelection>,
        Changed(ZEL::Control / Control::SMScope / SMScope::RunStop) >> Derive<&V::OnRunStop>);
    return rows;
}

void CPgHistoryViewer::OrderRange(const CDbPropBase* written)
{
    NRules::KeepOrdered(*m_pStartTrace, *m_pStopTrace, written);
}

void CPgHistoryViewer::PlayOrPause()
{
    const bool pauses = m_pPlaying->Get() == eKW_ONOFF_ON;
    KW_CHECKED(m_pPlaying->DbSet(pauses ? eKW_ONOFF_OFF : eKW_ONOFF_ON));
}

KW_ACCEPTANCE CPgHistoryViewer::ShowFirst()
{
    return Show(m_pSelectedTrace->GetMin());
}

KW_ACCEPTANCE CPgHistoryViewer::ShowPrevious()
{
    return Show(m_pSelectedTrace->Get() - 1);
}

KW_ACCEPTANCE CPgHistoryViewer::ShowNext()
{
    return Show(m_pSelectedTrace->Get() + 1);
}

KW_ACCEPTANCE CPgHistoryViewer::ShowLast()
{
    return Show(0);
}

void CPgHistoryViewer::LimitToHistory()
{
    const UINT32 depth = CZELDatabaseHelperHorizontal::GetNumberOfHistoryTraces(
        At(ZEL::Horizontal / Horizontal::HistoryDepth)->Get());
    NRules::SetLimits(*m_pAvailableTraces, UINT32{0}, depth);
    NRules::SetLimits(*m_pStartTrace, OldestOf(depth), 0);
    NRules::SetLimits(*m_pStopTrace, OldestOf(depth), 0);
    OrderRange(nullptr);
}

void CPgHistoryViewer::LimitSelection()
{
    NRules::SetLimits(*m_pSelectedTrace, OldestOf(m_pAvailableTraces->Get()), 0);
}

CDbPropEnum<KW_ZEL_RUNSTOP_STATE>& CPgHistoryViewer::RunStop() const
{
    return *At(ZEL::Control / Control::SMScope / SMScope::RunStop);
}

/** A scope that runs overwrites what the viewer shows. */
void CPgHistoryViewer::OnRunStop()
{
    if (m_pEnabled->Get() == eKW_ONOFF_ON && RunStop().Get() != eKW_ZEL_RUNSTOP_STATE_STOP)
    {
        KW_CHECKED(m_pEnabled->DbSet(eKW_ONOFF_OFF));
        OnEnabled();
    }
}

void CPgHistoryViewer::OnEnabled()
{
    if (m_pEnabled->Get() == eKW_ONOFF_ON)
    {
        // The memory must stand still while it is looked at.
        KW_CHECKED(RunStop().DbSet(eKW_ZEL_RUNSTOP_STATE_STOP));
        return;
    }
    KW_CHECKED(m_pPlaying->DbSet(eKW_ONOFF_OFF));
    KW_CHECKED(m_pSelectedTrace->DbSet(0));
    OnTraceChanged();
}

void CPgHistoryViewer::OnPlaying()
{
    if (m_pPlaying->Get() == eKW_ONOFF_OFF)
    {
        return;
    }
    KW_CHECKED(m_pEnabled->DbSet(eKW_ONOFF_ON));
    OnEnabled();
    const INT32 shown = m_pSelectedTrace->Get();
    // A film that has ended, or never begun, begins at its first acquisition.
    if (shown < m_pStartTrace->Get() || shown >= m_pStopTrace->Get())
    {
        NRules::MoveTo(*m_pSelectedTrace, m_pStartTrace->Get());
        OnTraceChanged();
    }
}

KW_ACCEPTANCE CPgHistoryViewer::Show(INT32 trace)
{
    KW_CHECKED(m_pPlaying->DbSet(eKW_ONOFF_OFF));
    KW_CHECKED(m_pEnabled->DbSet(eKW_ONOFF_ON));
    OnEnabled();
    const KW_ACCEPTANCE code = NRules::MoveTo(*m_pSelectedTrace, trace);
    OnTraceChanged();
    return code;
}

void CPgHistoryViewer::OnTraceChanged()
{
    // The acquisition says when an earlier one was taken; the newest is the reference.
    KW_CHECKED(m_pTraceTime->DbSet(0.0));
    if (m_pSelectedTrace->Get() != 0)
    {
        KW_CHECKED(m_pTraceTime->SetValidity(eKW_VALIDITY_INVALID));
    }
}

void CPgHistoryViewer::Clear()
{
    KW_CHECKED(m_pPlaying->DbSet(eKW_ONOFF_OFF));
    KW_CHECKED(m_pAvailableTraces->DbSet(0));
    LimitSelection();
    // Not only held back: the traces that come are others.
    KW_CHECKED(m_pSelectedTrace->DbSet(0));
    OnTraceChanged();
}
