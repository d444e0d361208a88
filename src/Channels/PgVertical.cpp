// SPDX-License-Identifier: MIT
#include "Channels/PgVertical.h"

#include "Channels/PgAnalogChannelMapping.h"
#include "Channels/PgAnalogSignalStream.h"
#include "Channels/PgAnalogSignalStreamPart.h"
#include "Channels/PgAnalogSignalStreams.h"
#include "Channels/PgChannel.h"
#include "Channels/PgaAnalogChannelMapping.h"
#include "Channels/PgaAnalogSignalStream.h"
#include "Channels/PgaAnalogSignalStreamPart.h"
#include "Channels/PgaChannel.h"
#include "Channels/VerticalHardware.h"
#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsAcquisition.h"
#include "KWEnumerationsChannels.h"
#include "KWEnumerationsOnOff.h"
#include "Names/Channel.h"
#include "Names/Horizontal.h"
#include "Names/Vertical.h"
#include "Names/ZEL.h"
#include "Rules/ChannelRules.h"
#include "Rules/NumberRules.h"

using namespace NNames;

t_Couplings CPgVertical::Rules() const
{
    using V = CPgVertical;
    static constexpr auto rows = Table<Names>(
        On(Names::ResetDeskew) >> Do<&V::ResetDeskew>,
        Changed(ZEL::Horizontal / Horizontal::ZELMode, ZEL::Horizontal / Horizontal::SampleRate,
                Names::Channel / each / Channel::Enabled) >>
            Derive<&V::UpdateStreams>,
        Changed(Names::Channel / each / Channel::Enabled) >> Derive<&V::NameDroppedChannels>);
    return rows;
}

void CPgVertical::ResetDeskew()
{
    for (INT32 i = 0; i < m_pChannel->GetCount(); ++i)
    {
        KW_CHECKED(m_pChannel->ItemDirect(i)->GetPrDeskew()->DbSet(0.0));
    }
}

void CPgVertical::UpdateStreams()
{
    const INT32 parts =
        NRules::ConvertersPerChannel(At(ZEL::Horizontal / Horizontal::ZELMode)->Get());
    UINT32 active = 0;
    for (INT32 i = 0; i < m_pChannel->GetCount(); ++i)
    {
        const INT32 group = i / parts;
        const INT32 channel = ChannelOfGroup(group * parts, parts);
        UpdateMapping(i, channel == i ? group : -1, parts);
        const bool isGroup = i * parts < m_pChannel->GetCount();
        const INT32 carried = isGroup ? ChannelOfGroup(i * parts, parts) : -1;
        UpdateStream(i, carried, parts);
        active += carried >= 0 ? 1 : 0;
    }
    const CPgAnalogSignalStreams& streams = *m_pAnalogSignalStreams;
    const UINT32 samples = NVerticalHardware::kSamplesPerPart * static_cast<UINT32>(parts);
    KW_CHECKED(streams.GetPrNumberOfActiveStreams()->DbSet(active));
    KW_CHECKED(streams.GetPrPartsPerStream()->DbSet(static_cast<UINT32>(parts)));
    KW_CHECKED(streams.GetPrSamplesPerClockCycle()->DbSet(samples));
    KW_CHECKED(streams.GetPrClockFrequency()->DbSet(
        At(ZEL::Horizontal / Horizontal::SampleRate)->Get() / samples));
}

void CPgVertical::NameDroppedChannels()
{
    const auto& modes = *At(ZEL::Horizontal / Horizontal::ZELMode);
    QStringList lists;
    for (INT32 mode = 0; mode < modes.GetEnumSize(); ++mode)
    {
        QStringList names;
        for (const INT32 channel : NRules::ChannelsDroppedBy(*this, static_cast<KW_ZEL_MODE>(mode)))
        {
            names.append(m_pSelectedChannel->GetSerialName(channel));
        }
        if (!names.isEmpty())
        {
            lists.append(modes.GetSerialName(mode) + QStringLiteral(": ") +
                         names.join(QStringLiteral(" ")));
        }
    }
    KW_CHECKED(
        m_pAnalogSignalStreams->GetPrDroppedChannels()->DbSet(lists.join(QStringLiteral(", "))));
}

INT32 CPgVertical::ChannelOfGroup(INT32 first, INT32 size) const
{
    for (INT32 i = first; i < first + size; ++i)
    {
        if (m_pChannel->ItemDirect(i)->GetPrEnabled()->Get() == eKW_ONOFF_ON)
        {
            return i;
        }
    }
    return -1;
}

void CPgVertical::UpdateStream(INT32 index, INT32 channel, INT32 parts)
{
    const CPgAnalogSignalStream& stream =
        *m_pAnalogSignalStreams->GetPgAnalogSignalStream()->ItemDirect(index);
    const bool isActive = channel >= 0;
    const double rate = At(ZEL::Horizontal / Horizontal::SampleRate)->Get();
    KW_CHECKED(stream.GetPrActive()->DbSet(isActive ? eKW_ONOFF_ON : eKW_ONOFF_OFF));
    KW_CHECKED(stream.GetPrChannel()->DbSetAsInt(isActive ? channel : index));
    KW_CHECKED(stream.GetPrSampleRate()->DbSet(isActive ? rate : 0.0));
    const CPgaAnalogSignalStreamPart& all = *stream.GetPgAnalogSignalStreamPart();
    for (INT32 part = 0; part < all.GetCount(); ++part)
    {
        const bool isUsed = isActive && part < parts;
        KW_CHECKED(all.ItemDirect(part)->GetPrDataStream()->DbSetAsInt(
            isUsed ? part : eKW_ZEL_DATASTREAM_UNUSED));
    }
}

void CPgVertical::UpdateMapping(INT32 channel, INT32 stream, INT32 parts)
{
    const CPgAnalogChannelMapping& mapping = *m_pAnalogChannelMapping->ItemDirect(channel);
    const bool isCarried = stream >= 0;
    KW_CHECKED(mapping.GetPrAssociatedSignalStream()->DbSetAsInt(
        isCarried ? stream : eKW_ZEL_ASSOCIATED_SIGNAL_STREAM_NONE));
    KW_CHECKED(
        mapping.GetPrInterleavedConverters()->DbSet(isCarried ? static_cast<UINT32>(parts) : 1));
}
