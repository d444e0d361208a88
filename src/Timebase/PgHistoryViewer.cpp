// SPDX-License-Identifier: MIT
#include "Timebase/PgHistoryViewer.h"

#include "CommonDatabase/Nodes/DbPgRoot.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperHorizontal.h"
#include "Root/PgControl.h"
#include "Root/PgSMScope.h"
#include "Root/PgZEL.h"
#include "Rules/RuleHelpers.h"
#include "Timebase/PgHorizontal.h"

namespace
{
/** Number of the oldest of so many acquisitions. */
INT32 OldestOf(UINT32 traces)
{
    return traces > 0 ? 1 - static_cast<INT32>(traces) : 0;
}
} // namespace

KW_ACCEPTANCE CPgHistoryViewer::OnPropertySet(const CDbPropBase* property)
{
    if (property == m_pEnabled)
    {
        OnEnabled();
    }
    if (property == m_pPlaying)
    {
        OnPlaying();
    }
    if (property == m_pSelectedTrace)
    {
        OnTraceChanged();
    }
    NRules::KeepOrdered(*m_pStartTrace, *m_pStopTrace, property);
    return CPgHistoryViewerBase::OnPropertySet(property);
}

KW_ACCEPTANCE CPgHistoryViewer::OnFunction(const CDbFunction* function)
{
    if (function == m_pPlay)
    {
        const bool pauses = m_pPlaying->Get() == eKW_ONOFF_ON;
        KW_CHECKED(m_pPlaying->DbSet(pauses ? eKW_ONOFF_OFF : eKW_ONOFF_ON));
        OnPlaying();
        return eKW_ACC_OK;
    }
    if (function == m_pClear)
    {
        Clear();
        return eKW_ACC_OK;
    }
    const INT32 shown = m_pSelectedTrace->Get();
    const std::pair<const CDbFunction*, INT32> targets[] = {
        {m_pFirst, m_pSelectedTrace->GetMin()},
        {m_pPrevious, shown - 1},
        {m_pNext, shown + 1},
        {m_pLast, 0},
    };
    for (const auto& [action, trace] : targets)
    {
        if (function == action)
        {
            return Show(trace);
        }
    }
    return CPgHistoryViewerBase::OnFunction(function);
}

void CPgHistoryViewer::OnPropertyDbSet(const CDbPropBase* property)
{
    if (property == m_pAvailableTraces)
    {
        LimitSelection();
    }
    CPgHistoryViewerBase::OnPropertyDbSet(property);
}

void CPgHistoryViewer::UpdateGroup()
{
    const CPgZEL* const root = CPgZEL::Of(*this);
    if (root == nullptr)
    {
        return;
    }
    const UINT32 depth = CZELDatabaseHelperHorizontal::GetNumberOfHistoryTraces(
        root->GetPgHorizontal()->GetPrHistoryDepth()->Get());
    NRules::SetLimits(*m_pAvailableTraces, UINT32{0}, depth);
    NRules::SetLimits(*m_pStartTrace, OldestOf(depth), 0);
    NRules::SetLimits(*m_pStopTrace, OldestOf(depth), 0);
    NRules::KeepOrdered(*m_pStartTrace, *m_pStopTrace);
    LimitSelection();
}

void CPgHistoryViewer::LimitSelection()
{
    NRules::SetLimits(*m_pSelectedTrace, OldestOf(m_pAvailableTraces->Get()), 0);
}

void CPgHistoryViewer::OnTreeCreated()
{
    CPgHistoryViewerBase::OnTreeCreated();
    if (CPgZEL* const root = CPgZEL::Of(*this))
    {
        root->GetDependencies().Add(
            *this, {root->GetPgHorizontal()->GetPrHistoryDepth()}, [this] { UpdateGroup(); },
            QStringLiteral("HistoryViewer/SelectedTrace"));
        root->GetDependencies().Add(
            *this, {root->GetPgControl()->GetPgSMScope()->GetPrRunStop()}, [this] { OnRunStop(); },
            QStringLiteral("HistoryViewer/Enabled"));
    }
}

/** A scope that runs overwrites what the viewer shows. */
void CPgHistoryViewer::OnRunStop()
{
    const CPgSMScope* const scope = CPgZEL::Of(*this)->GetPgControl()->GetPgSMScope();
    if (m_pEnabled->Get() == eKW_ONOFF_ON &&
        scope->GetPrRunStop()->Get() != eKW_ZEL_RUNSTOP_STATE_STOP)
    {
        KW_CHECKED(m_pEnabled->DbSet(eKW_ONOFF_OFF));
        OnEnabled();
    }
}

void CPgHistoryViewer::OnEnabled()
{
    const CPgZEL* const root = CPgZEL::Of(*this);
    if (m_pEnabled->Get() == eKW_ONOFF_ON)
    {
        if (root != nullptr)
        {
            // The memory must stand still while it is looked at.
            KW_CHECKED(root->GetPgControl()->GetPgSMScope()->GetPrRunStop()->DbSet(
                eKW_ZEL_RUNSTOP_STATE_STOP));
        }
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
