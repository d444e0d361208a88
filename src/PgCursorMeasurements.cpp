// SPDX-License-Identifier: MIT
#include "PgCursorMeasurements.h"

#include "MeasurementRules.h"

void CPgCursorMeasurements::OnTreeCreated()
{
    CPgCursorMeasurementsBase::OnTreeCreated();
    NMeasurementRules::AddTraceDependency(
        *this, [this] { NRules::UpdateSubtree(*this); }, QStringLiteral("CursorMeasurements/Unit"));
}
