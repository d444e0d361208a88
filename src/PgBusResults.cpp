// SPDX-License-Identifier: MIT
#include "PgBusResults.h"

#include "PgSerialBus.h"
#include "RuleHelpers.h"

KW_ACCEPTANCE CPgBusResults::OnFunction(const CDbFunction* function)
{
    CPgSerialBus* const bus = NRules::Above<CPgSerialBus>(*this);
    if (function == m_pClear && bus != nullptr)
    {
        bus->ClearResults();
    }
    return CPgBusResultsBase::OnFunction(function);
}
