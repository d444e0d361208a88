// SPDX-License-Identifier: MIT
#include "Instrument/PgWirelessAccesspoint.h"

#include "CheckedAccess.h"

KW_ACCEPTANCE CPgWirelessAccesspoint::OnPropertySet(const CDbPropBase* property)
{
    constexpr int kShortest = 8;
    const auto length = m_pPassphrase->Get().size();
    if (property != m_pPassphrase || length == 0 || length >= kShortest)
    {
        return CPgWirelessAccesspointBase::OnPropertySet(property);
    }
    KW_CHECKED(m_pPassphrase->DbSet(QStringLiteral("")));
    return eKW_ACC_WARNING;
}
