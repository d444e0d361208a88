// SPDX-License-Identifier: MIT
#include "Buses/PgSignalTranslation.h"

#include "Buses/LabelRules.h"
#include "Buses/PgmSignalTranslationEnumValues.h"
#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsSerialBus.h"
#include "LabelList/LabelConditions.h"
#include "LabelList/LabelList.h"
#include "LabelList/SignalBits.h"
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
    static constexpr auto rows = Table<Names>(
        OnAny() >> Derive<&S::OrderLimits, &S::UpdateSteps, &S::FitPayload>,
        OnAny() >> Do<&S::TellList>, Items(Names::SignalTranslationEnumValues) >> Do<&S::TellList>);
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

/** Start bits are limited to the units in which one of the least length can begin. Of a big-endian
    signal not all of the last such unit can be: it then begins at its first bit. */
void CPgSignalTranslation::FitPayload()
{
    const bool isBig = m_pEndianness->Get() == eKW_ENDIANNESS_BIG_ENDIAN;
    const UINT32 unit = NRules::LabelListAbove(*this).Bus().Unit();
    const INT32 payload =
        dynamic_cast<const NRules::ILabel&>(*GetParent()->GetParent()).PayloadBits();
    const t_Bits bits = BitsOf(m_pValueType->Get());
    const auto lastPlace = static_cast<UINT32>(std::max(0, payload - bits.min));
    const auto placed = [isBig, unit](UINT32 bit)
    { return isBig ? NSignalBits::Mirrored(bit, unit) : bit; };
    NRules::SetLimits<UINT32>(*m_pStartBit, 0,
                              isBig ? lastPlace / unit * unit + unit - 1 : lastPlace);
    if (placed(m_pStartBit->Get()) > lastPlace)
    {
        KW_CHECKED(m_pStartBit->DbSet(placed(lastPlace)));
    }
    const INT32 room = payload - static_cast<INT32>(placed(m_pStartBit->Get()));
    const INT32 longest = KWMath::Bound(bits.min, room, bits.max);
    NRules::SetLimits(*m_pBitLength, static_cast<UINT32>(bits.min), static_cast<UINT32>(longest));
}

void CPgSignalTranslation::TellList()
{
    NRules::LabelListAbove(*this).CountChange();
}

CLabelListSignal CPgSignalTranslation::Signal() const
{
    return SignalAt(m_pStartBit->Get(), m_pBitLength->Get());
}

std::optional<CLabelListSignal> CPgSignalTranslation::SignalWithin(UINT32 payloadBits) const
{
    const t_Bits allowed = BitsOf(m_pValueType->Get());
    const UINT32 unit = NRules::LabelListAbove(*this).Bus().Unit();
    for (const auto& [start, length] :
         {std::pair(m_pStartBit->GetUserValue(), m_pBitLength->GetUserValue()),
          std::pair(m_pStartBit->Get(), m_pBitLength->Get())})
    {
        const auto bits = static_cast<INT32>(length);
        if (bits >= allowed.min && bits <= allowed.max &&
            NSignalBits::BitsUpTo({start, length, m_pEndianness->Get(), unit}) <= payloadBits)
        {
            return SignalAt(start, length);
        }
    }
    return std::nullopt;
}

CLabelListSignal CPgSignalTranslation::SignalAt(UINT32 startBit, UINT32 bitLength) const
{
    const QString name = m_pName->Get();
    CLabelListSignal signal((name.isEmpty() ? NodeName() : name).toStdString(), startBit, bitLength,
                            m_pEndianness->Get(), m_pValueType->Get(), m_pFactor->Get(),
                            m_pOffset->Get(), m_pMinimum->Get(), m_pMaximum->Get(),
                            m_pUnit->Get().toStdString());
    m_pSignalTranslationEnumValues->VisitItems(
        [&signal](CDbPropertyGroup& item) {
            signal.addSignalEnumValue(
                static_cast<const CPgSignalTranslationEnumValues&>(item).Entry());
        });
    return signal;
}

KW_LabelSignalDetails CPgSignalTranslation::Details() const
{
    KW_LabelSignalDetails details;
    NLabelConditions::Read(m_pActiveWhen->Get(), details); // the property takes no other text
    return details;
}
