// SPDX-License-Identifier: MIT
#include "Buses/PgSignalTranslationEnumValues.h"

#include "Buses/LabelRules.h"
#include "CommonDatabase/Couplings/DbRules.h"
#include "Names/SignalTranslationEnumValues.h"

using namespace NNames;

t_Couplings CPgSignalTranslationEnumValues::Rules() const
{
    static constexpr auto rows =
        Table<Names>(OnAny() >> Do<&CPgSignalTranslationEnumValues::TellList>);
    return rows;
}

std::pair<UINT32, QByteArray> CPgSignalTranslationEnumValues::Entry() const
{
    return {m_pRawValue->Get(), m_pLabel->Get().toUtf8()};
}

void CPgSignalTranslationEnumValues::TellList()
{
    NRules::LabelListAbove(*this).CountChange();
}
