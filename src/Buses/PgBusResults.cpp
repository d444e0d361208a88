// SPDX-License-Identifier: MIT
#include "Buses/PgBusResults.h"

#include "Buses/PgSerialBus.h"
#include "Rules/NumberRules.h"

KW_ACCEPTANCE CPgBusResults::OnFunction(const CDbFunction* function)
{
    CPgSerialBus* const bus = NRules::Above<CPgSerialBus>(*this);
    if (function == m_pClear && bus != nullptr)
    {
        bus->ClearResults();
    }
    return CPgBusResultsBase::OnFunction(function);
}
