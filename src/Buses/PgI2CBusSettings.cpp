// SPDX-License-Identifier: MIT
#include "Buses/PgI2CBusSettings.h"

#include "Buses/BusRules.h"
#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsChannels.h"
#include "KWEnumerationsSerialBus.h"
#include "Names/I2CBusSettings.h"
#include "Rules/ChannelRules.h"

using namespace NNames;

t_Couplings CPgI2CBusSettings::Rules() const
{
    using I = CPgI2CBusSettings;
    static constexpr auto rows =
        Table<Names>(OnAny() >> Derive<&I::AssignLines>, On(Names::SwapLines) >> Do<&I::SwapLines>,
                     NRules::kSwitched >> Derive<&I::AssignLines>);
    return rows;
}

void CPgI2CBusSettings::AssignLines(const CDbPropBase* written)
{
    NRules::AssignLines({{m_pClockSource, true}, {m_pDataSource, true}}, written);
}

void CPgI2CBusSettings::SwapLines()
{
    const KW_ZEL_CHANNEL clock = m_pClockSource->Get();
    KW_CHECKED(m_pClockSource->DbSet(m_pDataSource->Get()));
    KW_CHECKED(m_pDataSource->DbSet(clock));
}

KW_ZEL_SERIALBUS_PROTOCOL CPgI2CBusSettings::Protocol() const
{
    return eKW_ZEL_SERIALBUS_PROTOCOL_I2C;
}

INT32 CPgI2CBusSettings::PayloadBits(UINT32 /*identifierLength*/) const
{
    return NRules::LongestPayload(*this);
}
