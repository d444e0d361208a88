// SPDX-License-Identifier: MIT
#include "Trigger/PgTrigger.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "IKWFunctionZELHelpers/ApplicationDefinitions.h"
#include "KWEnumerationsChannels.h"
#include "KWEnumerationsOnOff.h"
#include "KWEnumerationsSerialBus.h"
#include "KWEnumerationsTrigger.h"
#include "Names/SerialBus.h"
#include "Names/Trigger.h"
#include "Names/ZEL.h"
#include "Rules/ChannelRules.h"

using namespace NNames;

t_Couplings CPgTrigger::Rules() const
{
    using T = CPgTrigger;
    constexpr auto bus = ZEL::SerialBus / SerialBus::Protocol;
    static constexpr auto rows = Table<Names>(
        On(Names::ResetSettings) >> Do<&T::ResetSettings>,
        Changed(ZEL::SerialBus / SerialBus::Enabled) >> Derive<&T::OfferTypes>,
        On(Names::Type) >> Do<&T::OfferInputs>, NRules::kSwitched >> Derive<&T::OfferInputs>,
        On(Names::Protocol) >> Do<&T::LeadBus>, Changed(bus) >> Derive<&T::FollowBus>,
        Twins(ZEL::Trigger / Trigger::Protocol, bus));
    return rows;
}

void CPgTrigger::ResetSettings()
{
    NRules::WriteUserDefaults(*this);
    NRules::UpdateSubtree(*this);
}

void CPgTrigger::OfferTypes()
{
    const bool hasBus = At(ZEL::SerialBus / SerialBus::Enabled)->Get() == eKW_ONOFF_ON;
    KW_CHECKED(m_pType->EnableValue(eKW_ZEL_TRIGGER_TYPE_PROTOCOL, hasBus));
    KW_CHECKED(m_pType->FollowWish(eKW_ZEL_TRIGGER_TYPE_EDGE));
}

void CPgTrigger::OfferInputs()
{
    const KW_ZEL_TRIGGER_TYPE type = m_pType->Get();
    const bool isAnalog =
        NApplicationDefinitions::IsAnalogTrigger(type) || type == eKW_ZEL_TRIGGER_TYPE_VIDEO;
    NRules::OfferSources(*m_pSource, isAnalog ? NRules::eSOURCES_ANALOG : NRules::eSOURCES_INPUTS);
    KW_CHECKED(m_pSource->FollowWish(eKW_ZEL_CHANNEL_NONE));
}

void CPgTrigger::LeadBus()
{
    KW_CHECKED(At(ZEL::SerialBus / SerialBus::Protocol)->DbSetAsInt(m_pProtocol->GetAsInt()));
}

void CPgTrigger::FollowBus()
{
    static_assert(INT32{eKW_ZEL_TRIGGER_TYPE_PROTOCOL_SPI} == eKW_ZEL_SERIALBUS_PROTOCOL_SPI &&
                  INT32{eKW_ZEL_TRIGGER_TYPE_PROTOCOL_SENT} == eKW_ZEL_SERIALBUS_PROTOCOL_SENT);
    KW_CHECKED(m_pProtocol->DbSetAsInt(At(ZEL::SerialBus / SerialBus::Protocol)->GetAsInt()));
}
