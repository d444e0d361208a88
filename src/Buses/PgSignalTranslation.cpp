// SPDX-License-Identifier: MIT
#include "Buses/PgSignalTranslation.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "CommonDatabase/Nodes/DbWays.h"
#include "KWEnumerationsSerialBus.h"
#include "Names/SerialBusLabelItem.h"
#include "Names/SignalTranslation.h"
#include "Rules/NumberRules.h"

#include <cmath>

using namespace NNames;

namespace
{
struct t_Bits
{
    INT32 min;
    INT32 max;
};

t_Bits BitsOf(KW_SIGNAL_TRANSLATION_VALUE_TYPE type)
{
    switch (type)
    {
    case eKW_SIGNAL_TRANSLATION_VALUE_TYPE_FLOAT:
        return {32, 32};
    case eKW_SIGNAL_TRANSLATION_VALUE_TYPE_DOUBLE:
        return {64, 64};
    default:
        return {1, 64};
    }
}
} // namespace

t_Couplings CPgSignalTranslation::Rules() const
{
    using S = CPgSignalTranslation;
    static constexpr auto rows =
        Table<Names>(OnAny() >> Derive<&S::OrderLimits, &S::UpdateSteps, &S::FitPayload>);
    return rows;
}

void CPgSignalTranslation::OrderLimits(const CDbPropBase* written)
{
    NRules::KeepOrdered(*m_pMinimum, *m_pMaximum, written);
}

/** Physical values move by one count of the raw value. */
void CPgSignalTranslation::UpdateSteps()
{
    const double count = std::fabs(m_pFactor->Get());
    for (CDbPropNumDouble* const value : {m_pOffset, m_pMinimum, m_pMaximum})
    {
        KW_CHECKED(count > 0.0 ? value->SetStep(count) : value->SetStepDefault());
    }
}

void CPgSignalTranslation::FitPayload()
{
    const INT32 payload = PayloadBits();
    const t_Bits bits = BitsOf(m_pValueType->Get());
    const INT32 lastStart = std::max(0, payload - bits.min);
    NRules::SetLimits<UINT32>(*m_pStartBit, 0, static_cast<UINT32>(lastStart));
    const INT32 room = payload - static_cast<INT32>(m_pStartBit->Get());
    const INT32 longest = KWMath::Bound(bits.min, room, bits.max);
    NRules::SetLimits(*m_pBitLength, static_cast<UINT32>(bits.min), static_cast<UINT32>(longest));
}

INT32 CPgSignalTranslation::PayloadBits() const
{
    constexpr INT32 kByte = 8;
    const CDbPropertyGroup& frame = *GetParent()->GetParent();
    const auto* const bytes = static_cast<const CDbPropNum<UINT32>*>(
        NWays::Resolve(frame, SerialBusLabelItem::PayloadLength.path));
    return kByte * static_cast<INT32>(bytes->Get());
}
