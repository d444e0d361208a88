// SPDX-License-Identifier: MIT
#include "Logger/PgLoggerZoom.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsLogger.h"
#include "KWEnumerationsOnOff.h"
#include "Logger/LoggerScale.h"
#include "Logger/PgLoggerCursor.h"
#include "Names/LoggerZoom.h"
#include "Rules/ReadingRules.h"

#include <cmath>

using namespace NNames;

t_Couplings CPgLoggerZoom::Rules() const
{
    static constexpr auto rows =
        Table<Names>(On(Names::Scale, Names::Position) >> Do<&CPgLoggerZoom::EndCoupling>);
    return rows;
}

void CPgLoggerZoom::EndCoupling()
{
    KW_CHECKED(m_pCoupleToCursors->DbSet(eKW_ONOFF_OFF));
}

void CPgLoggerZoom::Follow(KW_ZEL_LOGGER_HORIZONTAL_SCALE ofDiagram, const CPgLoggerCursor& cursor)
{
    if (m_pCoupleToCursors->Get() == eKW_ONOFF_ON)
    {
        const double left = std::min(cursor.GetPrX1()->Get(), cursor.GetPrX2()->Get());
        const double width = std::fabs(cursor.GetPrDeltaX()->Get());
        KW_CHECKED(m_pPosition->DbSet(left));
        const INT32 coarsest = std::max(0, ofDiagram - 1);
        KW_CHECKED(m_pScale->DbSetAsInt(std::min<INT32>(NLoggerScale::FinestFor(width), coarsest)));
    }
    OfferScales(ofDiagram);
}

/** The finest scale is offered beside a diagram that has no finer one. */
void CPgLoggerZoom::OfferScales(KW_ZEL_LOGGER_HORIZONTAL_SCALE ofDiagram)
{
    const INT32 coarsest = std::max(0, ofDiagram - 1);
    if (m_pScale->GetAsInt() > coarsest)
    {
        KW_CHECKED(m_pScale->DbSetAsInt(coarsest));
    }
    NRules::OfferValues(*m_pScale, [coarsest](KW_ZEL_LOGGER_HORIZONTAL_SCALE scale)
                        { return scale <= coarsest; });
}
