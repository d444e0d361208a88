// SPDX-License-Identifier: MIT
#include "Logger/PgLoggerZoom.h"

#include "KWEnumerationsLogger.h"
#include "KWEnumerationsOnOff.h"
#include "Logger/LoggerScale.h"
#include "Logger/PgLogger.h"
#include "Logger/PgLoggerCursor.h"
#include "Rules/NumberRules.h"
#include "Rules/ReadingRules.h"

#include <cmath>

KW_ACCEPTANCE CPgLoggerZoom::OnPropertySet(const CDbPropBase* property)
{
    if (property == m_pScale || property == m_pPosition)
    {
        KW_CHECKED(m_pCoupleToCursors->DbSet(eKW_ONOFF_OFF));
    }
    if (CPgLogger* const logger = NRules::Above<CPgLogger>(*this))
    {
        logger->UpdateZoom();
    }
    return CPgLoggerZoomBase::OnPropertySet(property);
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
