// SPDX-License-Identifier: MIT
#include "Analysis/PgCursorMeasurements.h"

#include "Analysis/MeasurementRules.h"

void CPgCursorMeasurements::OnTreeCreated()
{
    CPgCursorMeasurementsBase::OnTreeCreated();
    NMeasurementRules::AddTraceDependency(
        *this, [this] { NRules::UpdateSubtree(*this); }, QStringLiteral("CursorMeasurements/Unit"));
}
