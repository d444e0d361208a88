// SPDX-License-Identifier: MIT
#include "Buses/PgSPIBusTriggerSettings.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "Names/SPIBusSettings.h"
#include "Names/SPIBusTriggerSettings.h"
#include "Names/SerialBus.h"
#include "Names/ZEL.h"

using namespace NNames;

t_Couplings CPgSPIBusTriggerSettings::Rules() const
{
    static constexpr auto rows =
        Table<Names>(ClearRow(), Changed(ZEL::SerialBus / SerialBus::SPIBusSettings /
                                         SPIBusSettings::WordLength) >>
                                     Settle<&CPgSPIBusTriggerSettings::FitConditions>);
    return rows;
}

NRules::t_PatternSize CPgSPIBusTriggerSettings::DataSize() const
{
    const UINT32 bits =
        At(ZEL::SerialBus / SerialBus::SPIBusSettings / SPIBusSettings::WordLength)->Get();
    return NRules::PatternOfUnits(static_cast<INT32>(bits));
}
