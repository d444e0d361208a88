// SPDX-License-Identifier: MIT
#include "Buses/PgSPIBusTriggerSettings.h"

#include "Buses/PgSPIBusSettings.h"
#include "Buses/PgSerialBus.h"
#include "Root/PgZEL.h"

void CPgSPIBusTriggerSettings::OnTreeCreated()
{
    CBusTrigger::OnTreeCreated();
    if (CPgZEL* const root = CPgZEL::Of(*this))
    {
        root->GetDependencies().Add(
            *this, {root->GetPgSerialBus()->GetPgSPIBusSettings()->GetPrWordLength()},
            [this] { UpdatePatterns(); }, QStringLiteral("SPIBusTriggerSettings/Pattern"));
    }
}

NRules::t_PatternSize CPgSPIBusTriggerSettings::DataSize() const
{
    const CPgZEL* const root = CPgZEL::Of(*this);
    return NRules::PatternOfUnits(
        root == nullptr
            ? 1
            : static_cast<INT32>(
                  root->GetPgSerialBus()->GetPgSPIBusSettings()->GetPrWordLength()->Get()));
}
