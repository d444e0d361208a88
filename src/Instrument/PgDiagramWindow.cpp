// SPDX-License-Identifier: MIT
#include "Instrument/PgDiagramWindow.h"

#include "Instrument/PgDiagrams.h"
#include "Rules/NumberRules.h"

KW_ACCEPTANCE CPgDiagramWindow::OnPropertySet(const CDbPropBase* property)
{
    KW_ACCEPTANCE code = eKW_ACC_OK;
    if (auto* const diagrams = NRules::Above<CPgDiagrams>(*this))
    {
        if (property == m_pVisible && !diagrams->HasVisibleWindow())
        {
            KW_CHECKED(m_pVisible->DbSet(eKW_ONOFF_ON));
            code = eKW_ACC_WARNING;
        }
        diagrams->UpdateGroup();
    }
    return std::max(code, CPgDiagramWindowBase::OnPropertySet(property));
}

void CPgDiagramWindow::SetPlace(const t_Place& place)
{
    KW_CHECKED(m_pLeft->DbSet(place.left));
    KW_CHECKED(m_pTop->DbSet(place.top));
    KW_CHECKED(m_pWidth->DbSet(place.width));
    KW_CHECKED(m_pHeight->DbSet(place.height));
}
