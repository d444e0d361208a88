// SPDX-License-Identifier: MIT
#include "Buses/PgSerialBusLabelItem.h"

#include "Buses/PgmSignalTranslation.h"
#include "CommonDatabase/Couplings/DbRules.h"
#include "Names/SerialBusLabelItem.h"
#include "Rules/NumberRules.h"

using namespace NNames;

t_Couplings CPgSerialBusLabelItem::Rules() const
{
    using L = CPgSerialBusLabelItem;
    static constexpr auto rows = Table<Names>(On(Names::PayloadLength) >> Do<&L::FitSignals>,
                                              OnAny() >> Derive<&L::LimitIdentifier>);
    return rows;
}

void CPgSerialBusLabelItem::FitSignals()
{
    NRules::UpdateSubtree(*m_pSignalTranslation);
}

void CPgSerialBusLabelItem::LimitIdentifier()
{
    const UINT32 highest = (UINT32{1} << m_pIdentifierLength->Get()) - 1;
    NRules::SetLimits<UINT32>(*m_pIdentifier, 0, highest);
}
