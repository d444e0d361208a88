// SPDX-License-Identifier: MIT
#include "Buses/PgSENTBusSettings.h"

#include "Buses/PgLabelListSettings.h"
#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsSerialBus.h"
#include "LabelList/SignalBits.h"
#include "Names/SENTBusSettings.h"
#include "Rules/NumberRules.h"

using namespace NNames;

t_Couplings CPgSENTBusSettings::Rules() const
{
    using S = CPgSENTBusSettings;
    static constexpr auto rows =
        Table<Names>(OnAny() >> Derive<&S::UpdateAvailabilities, &S::LimitFrameLength>,
                     On(Names::DataNibbles, Names::SerialMessageFormat) >> Do<&S::FitLabels>);
    return rows;
}

void CPgSENTBusSettings::UpdateAvailabilities()
{
    NRules::SetAvailable({m_pFrameLength},
                         m_pPausePulse->Get() == eKW_SENT_PAUSE_PULSE_CONSTANT_FRAME);
    NRules::SetAvailable({m_pDisplayFast}, m_pDisplay->Get() != eKW_SENT_DISPLAY_SLOW);
}

/** In clock ticks, by SAE J2716. A frame has a status and a CRC nibble beside its data. Its usual
    length for six nibbles, 282, leaves no whole pause behind the longest of all nibbles, which the
    CRC never lets come together: so the frame needs to hold its nibbles, no more. */
void CPgSENTBusSettings::LimitFrameLength()
{
    constexpr UINT32 kCalibration = 56;
    constexpr UINT32 kShortestNibble = 12;
    constexpr UINT32 kLongestNibble = 27;
    constexpr UINT32 kLongestPause = 768;
    const UINT32 nibbles = m_pDataNibbles->Get() + 2;
    NRules::SetLimits<UINT32>(*m_pFrameLength, kCalibration + kLongestNibble * nibbles,
                              kCalibration + kShortestNibble * nibbles + kLongestPause);
}

KW_ZEL_SERIALBUS_PROTOCOL CPgSENTBusSettings::Protocol() const
{
    return eKW_ZEL_SERIALBUS_PROTOCOL_SENT;
}

INT32 CPgSENTBusSettings::PayloadBits(UINT32 identifierLength) const
{
    constexpr INT32 kShortMessage = 8;
    constexpr INT32 kMessageOfByteIdentifier = 12;
    constexpr INT32 kMessage = 16;
    if (identifierLength == 0)
    {
        return static_cast<INT32>(NSignalBits::kNibble * m_pDataNibbles->Get());
    }
    const bool isShort = m_pSerialMessageFormat->Get() == eKW_SENT_SERIAL_MESSAGE_FORMAT_SHORT;
    return identifierLength > NSignalBits::kNibble ? kMessageOfByteIdentifier
           : isShort                               ? kShortMessage
                                                   : kMessage;
}

void CPgSENTBusSettings::FitLabels()
{
    m_pLabelListSettings->FitToBus();
}
