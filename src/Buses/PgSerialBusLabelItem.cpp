// SPDX-License-Identifier: MIT
#include "Buses/PgSerialBusLabelItem.h"

#include "Buses/PgmSignalTranslation.h"
#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsOnOff.h"
#include "LabelList/LabelList.h"
#include "LabelList/SignalBits.h"
#include "Names/SerialBusLabelItem.h"
#include "Rules/NumberRules.h"

#include <set>

using namespace NNames;

namespace
{
constexpr INT32 kByte = 8;

/** Signals that select others, which the tree says of the selected ones alone. */
void MarkMultiplexors(KW_LabelEntry& entry)
{
    std::set<std::string> multiplexors;
    for (const auto& [key, details] : entry.details.signalDetails)
    {
        multiplexors.insert(details.multiplexor);
    }
    for (const auto& [key, signal] : entry.message.getSignals())
    {
        if (multiplexors.count(signal.getName()) > 0)
        {
            entry.details.signalDetails[key].isMultiplexor = true;
        }
    }
}
} // namespace

t_Couplings CPgSerialBusLabelItem::Rules() const
{
    using L = CPgSerialBusLabelItem;
    static constexpr auto rows = Table<Names>(
        Fresh<&L::TakeLengthsOfBus>,
        OnAny() >> Derive<&L::LimitIdentifier, &L::LimitPayload, &L::FitSignals>,
        On(Names::Identifier, Names::IdentifierLength, Names::Enabled) >> Do<&L::KeepApart>,
        OnAny() >> Do<&L::TellList>, Items(Names::SignalTranslation) >> Do<&L::TellList>);
    return rows;
}

const NRules::ILabelledBus& CPgSerialBusLabelItem::Bus() const
{
    return NRules::LabelListAbove(*this).Bus();
}

NRules::t_FrameKey CPgSerialBusLabelItem::Key() const
{
    return {m_pIdentifierLength->Get(), m_pIdentifier->Get()};
}

bool CPgSerialBusLabelItem::IsOn() const
{
    return m_pEnabled->Get() == eKW_ONOFF_ON;
}

bool CPgSerialBusLabelItem::IsWanted() const
{
    return m_pEnabled->GetUserValueAsInt() == eKW_ONOFF_ON;
}

void CPgSerialBusLabelItem::LetMatch(bool isFree)
{
    KW_CHECKED(m_pEnabled->EnableValue(eKW_ONOFF_ON, isFree));
    KW_CHECKED(m_pEnabled->FollowWish(eKW_ONOFF_OFF));
}

void CPgSerialBusLabelItem::TakeLengthsOfBus()
{
    NRules::DeclareLengths(*m_pIdentifierLength, Bus());
}

void CPgSerialBusLabelItem::LimitIdentifier()
{
    const UINT32 highest = (UINT32{1} << m_pIdentifierLength->Get()) - 1;
    NRules::SetLimits<UINT32>(*m_pIdentifier, 0, highest);
}

void CPgSerialBusLabelItem::LimitPayload()
{
    const INT32 bits = Bus().PayloadBits(m_pIdentifierLength->Get());
    NRules::SetLimits<UINT32>(*m_pPayloadLength, 0,
                              static_cast<UINT32>((bits + kByte - 1) / kByte));
}

void CPgSerialBusLabelItem::FitSignals()
{
    NRules::UpdateSubtree(*m_pSignalTranslation);
}

INT32 CPgSerialBusLabelItem::PayloadBits() const
{
    return std::min(kByte * static_cast<INT32>(m_pPayloadLength->Get()),
                    Bus().PayloadBits(m_pIdentifierLength->Get()));
}

/** eKW_ACC_WARNING where another label is in the way of this one. */
KW_ACCEPTANCE CPgSerialBusLabelItem::KeepApart()
{
    NRules::LabelListAbove(*this).KeepApart(this);
    return IsWanted() && !IsOn() ? eKW_ACC_WARNING : eKW_ACC_OK;
}

void CPgSerialBusLabelItem::TellList()
{
    NRules::LabelListAbove(*this).CountChange();
}

bool CPgSerialBusLabelItem::IsFd(UINT32 payloadLength)
{
    constexpr UINT32 kLongestClassical = 8;
    return payloadLength > kLongestClassical;
}

KW_LabelEntry CPgSerialBusLabelItem::MessageOf(UINT32 payloadLength) const
{
    KW_LabelEntry entry;
    entry.message.setParameters(m_pName->Get().toStdString(),
                                std::to_string(m_pIdentifierLength->Get()), m_pIdentifier->Get(),
                                payloadLength);
    entry.details.isFd = Bus().Protocol() == eKW_ZEL_SERIALBUS_PROTOCOL_CAN && IsFd(payloadLength);
    entry.details.comment = m_pComment->Get().toStdString();
    return entry;
}

KW_LabelEntry CPgSerialBusLabelItem::Message() const
{
    KW_LabelEntry entry = MessageOf(m_pPayloadLength->Get());
    m_pSignalTranslation->VisitItems(
        [&entry](CDbPropertyGroup& item)
        {
            const auto& signal = static_cast<const CPgSignalTranslation&>(item);
            KW_AddSignal(entry, signal.Signal(), signal.Details());
        });
    MarkMultiplexors(entry);
    return entry;
}

KW_LabelEntry CPgSerialBusLabelItem::GivenMessage() const
{
    const UINT32 length = std::min(m_pPayloadLength->GetUserValue(),
                                   NLabelBuses::Of(Bus().Protocol()).longestPayload);
    KW_LabelEntry entry = MessageOf(length);
    m_pSignalTranslation->VisitItems(
        [&entry, length](CDbPropertyGroup& item)
        {
            const auto& signal = static_cast<const CPgSignalTranslation&>(item);
            if (const auto given = signal.SignalWithin(NSignalBits::kByte * length))
            {
                KW_AddSignal(entry, *given, signal.Details());
            }
        });
    MarkMultiplexors(entry);
    return entry;
}
