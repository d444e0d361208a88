// SPDX-License-Identifier: MIT
#include "Buses/PgLINBusSettings.h"

#include "Buses/BusRules.h"
#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsSerialBus.h"
#include "Names/LINBusSettings.h"

using namespace NNames;

t_Couplings CPgLINBusSettings::Rules() const
{
    static constexpr auto rows = Table<Names>(OnAny() >> Derive<&CPgLINBusSettings::FollowBitRate>,
                                              Twins(Names::StandardBitRate, Names::BitRate));
    return rows;
}

KW_ACCEPTANCE CPgLINBusSettings::FollowBitRate(const CDbPropBase* written)
{
    return NRules::FollowStandard(*m_pStandardBitRate, *m_pBitRate, written);
}

KW_ZEL_SERIALBUS_PROTOCOL CPgLINBusSettings::Protocol() const
{
    return eKW_ZEL_SERIALBUS_PROTOCOL_LIN;
}

INT32 CPgLINBusSettings::PayloadBits(UINT32 /*identifierLength*/) const
{
    return NRules::LongestPayload(*this);
}
