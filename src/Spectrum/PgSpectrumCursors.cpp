// SPDX-License-Identifier: MIT
#include "Spectrum/PgSpectrumCursors.h"

#include "CheckedAccess.h"
#include "Root/PgZEL.h"
#include "Rules/NumberRules.h"
#include "Spectrum/PgSpectrum.h"
#include "Spectrum/PgaSpectrumCursor.h"
#include "Spectrum/SpectrumRange.h"

namespace
{
void MoveTo(CDbPropNumDouble& property, double value)
{
    KW_CHECKED(property.DbSet(BoundReported(property.GetMin(), value, property.GetMax())));
}
} // namespace

KW_ACCEPTANCE CPgSpectrumCursors::OnFunction(const CDbFunction* function)
{
    if (function == m_pSetToScreen)
    {
        SetToScreen();
    }
    return CPgSpectrumCursorsBase::OnFunction(function);
}

void CPgSpectrumCursors::UpdateGroup()
{
    const CPgSpectrumCursor* const first = m_pSpectrumCursor->ItemDirect(0);
    const CPgSpectrumCursor* const second = m_pSpectrumCursor->ItemDirect(1);
    KW_CHECKED(m_pDeltaHorizontal->DbSet(second->GetPrHorizontal()->Get() -
                                         first->GetPrHorizontal()->Get()));
    KW_CHECKED(
        m_pDeltaVertical->DbSet(second->GetPrVertical()->Get() - first->GetPrVertical()->Get()));
    const CPgZEL* const root = CPgZEL::Of(*this);
    for (INT32 i = 0; root != nullptr && i < m_pSpectrumCursor->GetCount(); ++i)
    {
        root->GetPgSpectrum()->UpdateSteps(*m_pSpectrumCursor->ItemDirect(i)->GetPrHorizontal(),
                                           m_pSpectrumCursor->ItemDirect(i)->GetPrVertical());
    }
}

void CPgSpectrumCursors::OnCursorMoved(INT32 index)
{
    if (m_pCoupled->Get() == eKW_ONOFF_ON)
    {
        // The shown differences are still those from before the move.
        const double sign = index == 0 ? 1.0 : -1.0;
        const CPgSpectrumCursor* const moved = m_pSpectrumCursor->ItemDirect(index);
        const CPgSpectrumCursor* const partner = m_pSpectrumCursor->ItemDirect(1 - index);
        MoveTo(*partner->GetPrHorizontal(),
               moved->GetPrHorizontal()->Get() + sign * m_pDeltaHorizontal->Get());
        MoveTo(*partner->GetPrVertical(),
               moved->GetPrVertical()->Get() + sign * m_pDeltaVertical->Get());
    }
    UpdateGroup();
}

void CPgSpectrumCursors::SetToScreen()
{
    if (const CPgZEL* const root = CPgZEL::Of(*this))
    {
        for (const auto& [index, place] :
             {std::pair{0, NRules::kLeftCursorPlace}, {1, NRules::kRightCursorPlace}})
        {
            KW_CHECKED(m_pSpectrumCursor->ItemDirect(index)->GetPrHorizontal()->DbSet(
                root->GetPgSpectrum()->FrequencyAt(place)));
        }
        UpdateGroup();
    }
}
