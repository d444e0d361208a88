// SPDX-License-Identifier: MIT
#include "Instrument/PgDiagramWindow.h"

#include "CheckedAccess.h"

void CPgDiagramWindow::SetPlace(const t_Place& place)
{
    KW_CHECKED(m_pLeft->DbSet(place.left));
    KW_CHECKED(m_pTop->DbSet(place.top));
    KW_CHECKED(m_pWidth->DbSet(place.width));
    KW_CHECKED(m_pHeight->DbSet(place.height));
}
