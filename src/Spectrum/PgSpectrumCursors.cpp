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

namespace
{
void MoveTo(CDbPropNumDouble& property, double value)
{
    KW_CHECKED(property.DbSet(BoundReported(property.GetMin(), value, property.GetMax())));
}
} // namespace

t_Couplings CPgSpectrumCursors::Rules() const
{
    using C = CPgSpectrumCursors;
    constexpr auto cursor = Names::SpectrumCursor / each;
    static constexpr auto rows =
        Table<Names>(On(cursor / SpectrumCursor::Horizontal, cursor / SpectrumCursor::Vertical) >>
                         Do<&C::MovePartner>,
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
    KW_CHECKED(m_pDeltaHorizontal->DbSet(second->GetPrHorizontal()->Get() -
                                         first->GetPrHorizontal()->Get()));
    KW_CHECKED(
        m_pDeltaVertical->DbSet(second->GetPrVertical()->Get() - first->GetPrVertical()->Get()));
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

void CPgSpectrumCursors::MovePartner(const CDbPropBase* written)
{
    if (m_pCoupled->Get() == eKW_ONOFF_OFF)
    {
        return;
    }
    // The shown differences are still those from before the move.
    const INT32 index = NRules::IndexInArray(*written->GetParent());
    const double sign = index == 0 ? 1.0 : -1.0;
    const CPgSpectrumCursor* const moved = m_pSpectrumCursor->ItemDirect(index);
    const CPgSpectrumCursor* const partner = m_pSpectrumCursor->ItemDirect(1 - index);
    MoveTo(*partner->GetPrHorizontal(),
           moved->GetPrHorizontal()->Get() + sign * m_pDeltaHorizontal->Get());
    MoveTo(*partner->GetPrVertical(),
           moved->GetPrVertical()->Get() + sign * m_pDeltaVertical->Get());
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
