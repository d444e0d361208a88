// SPDX-License-Identifier: MIT
#include "Spectrum/PgSpectrumCursors.h"

#include "CheckedAccess.h"
#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsOnOff.h"
#include "Names/SpectrumCursor.h"
#include "Rules/NumberRules.h"
#include "Spectrum/PgaSpectrumCursor.h"
#include "Spectrum/SpectrumRange.h"
#include "Spectrum/SpectrumScreen.h"

using namespace NNames;

t_Couplings CPgSpectrumCursors::Rules() const
{
    using C = CPgSpectrumCursors;
    constexpr auto cursor = Names::SpectrumCursor / each;
    static constexpr auto rows =
        Table<Names>(On(cursor / SpectrumCursor::Horizontal, cursor / SpectrumCursor::Vertical) >>
                         Do<&C::MoveCoupled>,
                     On(cursor / SpectrumCursor::Horizontal, cursor / SpectrumCursor::Vertical,
                        cursor / SpectrumCursor::Reset) >>
                         Derive<&C::UpdateDifferences, &C::UpdateLines>,
                     On(Names::SetToScreen) >> Do<&C::SetToScreen, &C::UpdateGroup>);
    return rows;
}

void CPgSpectrumCursors::UpdateDifferences()
{
    const CPgSpectrumCursor* const first = m_pSpectrumCursor->ItemDirect(0);
    const CPgSpectrumCursor* const second = m_pSpectrumCursor->ItemDirect(1);
    KW_CHECKED(m_pDeltaHorizontal->DbSet(
        NRules::Distance(first->GetPrHorizontal()->Get(), second->GetPrHorizontal()->Get())));
    KW_CHECKED(m_pDeltaVertical->DbSet(
        NRules::Distance(first->GetPrVertical()->Get(), second->GetPrVertical()->Get())));
}

void CPgSpectrumCursors::UpdateLines()
{
    const CSpectrumScreen screen = CSpectrumScreen::Of(*this);
    for (INT32 i = 0; i < m_pSpectrumCursor->GetCount(); ++i)
    {
        screen.UpdateLine(*m_pSpectrumCursor->ItemDirect(i)->GetPrHorizontal(),
                          *m_pSpectrumCursor->ItemDirect(i)->GetPrVertical());
    }
    KW_CHECKED(m_pDeltaVertical->SetUnit(screen.DifferenceUnit()));
}

KW_ACCEPTANCE CPgSpectrumCursors::MoveCoupled(const CDbPropBase* written)
{
    if (m_pCoupled->Get() == eKW_ONOFF_OFF)
    {
        return eKW_ACC_OK;
    }
    // The shown differences are still those from before the move.
    const INT32 index = NRules::IndexInArray(*written->GetParent());
    const double sign = index == 0 ? 1.0 : -1.0;
    const CPgSpectrumCursor* const moved = m_pSpectrumCursor->ItemDirect(index);
    const CPgSpectrumCursor* const partner = m_pSpectrumCursor->ItemDirect(1 - index);
    return written == moved->GetPrHorizontal()
               ? Move(*moved->GetPrHorizontal(), *partner->GetPrHorizontal(),
                      sign * m_pDeltaHorizontal->Get())
               : Move(*moved->GetPrVertical(), *partner->GetPrVertical(),
                      sign * m_pDeltaVertical->Get());
}

KW_ACCEPTANCE CPgSpectrumCursors::Move(CDbPropNumDouble& moved, CDbPropNumDouble& partner,
                                       double difference)
{
    BoundReported(partner.GetMin(), moved.Get() + difference, partner.GetMax());
    return NRules::MoveTogether(moved, partner, difference);
}

void CPgSpectrumCursors::SetToScreen()
{
    const CSpectrumScreen screen = CSpectrumScreen::Of(*this);
    for (const auto& [index, place] :
         {std::pair{0, NRules::kLeftCursorPlace}, {1, NRules::kRightCursorPlace}})
    {
        KW_CHECKED(m_pSpectrumCursor->ItemDirect(index)->GetPrHorizontal()->DbSet(
            screen.FrequencyAt(place)));
    }
}
