// SPDX-License-Identifier: MIT
#include "Buses/PgSerialBus.h"

#include "Buses/BusRules.h"
#include "Buses/PgBusResults.h"
#include "Buses/PgTrackInTable.h"
#include "Buses/PgUARTBusResults.h"
#include "Buses/PgUARTBusSettings.h"
#include "Buses/PgaUARTBusDataWord.h"
#include "KWEnumerationsSerialBus.h"

KW_ACCEPTANCE CPgSerialBus::OnFunction(const CDbFunction* function)
{
    if (function == m_pResetSettings)
    {
        CDbPropertyGroup* const settings = OfProtocol(m_pProtocol->GetAsInt(), "BusSettings");
        NRules::WriteUserDefaults(*settings);
        NRules::UpdateSubtree(*settings);
    }
    return CPgSerialBusBase::OnFunction(function);
}

KW_ACCEPTANCE CPgSerialBus::OnPropertySet(const CDbPropBase* property)
{
    if (property == m_pProtocol)
    {
        m_pTrackInTable->UpdateGroup();
    }
    return CPgSerialBusBase::OnPropertySet(property);
}

CDbPgArrayBase* CPgSerialBus::PresentFrames() const
{
    const bool isUart = m_pProtocol->Get() == eKW_ZEL_SERIALBUS_PROTOCOL_UART;
    if (isUart && m_pUARTBusSettings->GetPrFrameMode()->Get() == eKW_FRAME_MODE_NONE)
    {
        return m_pUARTBusResults->GetPgUARTBusDataWord();
    }
    const CDbPropertyGroup* const results = OfProtocol(m_pProtocol->GetAsInt(), "BusResults");
    const QString frames = m_pProtocol->GetText() + QLatin1String("BusFrame");
    return dynamic_cast<CDbPgArrayBase*>(results->FindGroup(frames));
}

void CPgSerialBus::OnFramesChanged(const CDbPropertyGroup& results) const
{
    if (&results == OfProtocol(m_pProtocol->GetAsInt(), "BusResults"))
    {
        m_pTrackInTable->UpdateGroup();
    }
}

void CPgSerialBus::ClearResults()
{
    for (INT32 protocol = 0; protocol < m_pProtocol->GetEnumSize(); ++protocol)
    {
        NRules::ClearBusResults(*OfProtocol(protocol, "BusResults"));
    }
    NRules::InvalidateResults(*m_pBusResults);
    m_pTrackInTable->UpdateGroup();
}

/** Groups of a protocol are named after it. */
CDbPropertyGroup* CPgSerialBus::OfProtocol(INT32 protocol, const char* what) const
{
    return FindGroup(QString(m_pProtocol->GetSerialName(protocol) + QLatin1String(what)));
}
