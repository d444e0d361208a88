// SPDX-License-Identifier: MIT
#include "Root/PgPerformance.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "Root/PgPerformanceOfMeasurements.h"
#include "Root/PgaPerformanceOfMeasurement.h"
#include "Rules/NumberRules.h"

using namespace NNames;

t_Couplings CPgPerformance::Rules() const
{
    static constexpr auto rows =
        Table<Names>(On(Names::ResetFigures) >> Do<&CPgPerformance::ResetFigures>);
    return rows;
}

void CPgPerformance::ResetFigures()
{
    NRules::InvalidateResults(*this);
    NRules::InvalidateResults(*m_pPerformanceOfMeasurements);
    const CPgaPerformanceOfMeasurement* const measurements =
        m_pPerformanceOfMeasurements->GetPgPerformanceOfMeasurement();
    for (INT32 i = 0; i < measurements->GetCount(); ++i)
    {
        const CPgPerformanceOfMeasurement* const figures = measurements->ItemDirect(i);
        for (CDbPropNumDouble* const time :
             {figures->GetPrTime(), figures->GetPrMeanTime(), figures->GetPrMaximumTime()})
        {
            KW_CHECKED(time->SetValidity(eKW_VALIDITY_INVALID));
        }
        KW_CHECKED(figures->GetPrRuns()->DbSet(0));
    }
}
