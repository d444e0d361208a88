// SPDX-License-Identifier: MIT
#include "Buses/PgI2CBusTriggerSettings.h"

#include "KWEnumerationsSerialBus.h"

NRules::t_PatternSize CPgI2CBusTriggerSettings::IdentifierSize() const
{
    return NRules::ExactPattern(m_pAddressType->Get() == eKW_I2C_ADDRESS_TYPE_7_BIT ? 7 : 10);
}
