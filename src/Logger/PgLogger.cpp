// SPDX-License-Identifier: MIT
#include "Logger/PgLogger.h"

#include "KWEnumerationsOnOff.h"
#include "Logger/LoggerScale.h"
#include "Logger/PgLoggerAttributes.h"
#include "Logger/PgLoggerChannelSource.h"
#include "Logger/PgLoggerCursor.h"
#include "Logger/PgLoggerCursorResultsDelta.h"
#include "Logger/PgLoggerZoom.h"
#include "Logger/PgaLoggerChannel.h"
#include "Logger/PgaLoggerCursorResults.h"
#include "Logger/PgaLoggerTime.h"
#include "Rules/NumberRules.h"
#include "Rules/ReadingRules.h"

KW_ACCEPTANCE CPgLogger::OnPropertySet(const CDbPropBase* property)
{
    if (property == m_pHorizontalScale)
    {
        UpdateZoom();
    }
    return CPgLoggerBase::OnPropertySet(property);
}

void CPgLogger::OnPropertyDbSet(const CDbPropBase* property)
{
    // The acquisition may end a recording by itself.
    if (property == m_pRecording)
    {
        LockSettings();
    }
}

KW_ACCEPTANCE CPgLogger::OnFunction(const CDbFunction* function)
{
    if (function == m_pStart || function == m_pClear)
    {
        Clear();
    }
    if (function == m_pStart || function == m_pStop)
    {
        KW_CHECKED(m_pRecording->DbSet(function == m_pStart ? eKW_ONOFF_ON : eKW_ONOFF_OFF));
    }
    if (function == m_pShowAll)
    {
        return ShowAll();
    }
    return CPgLoggerBase::OnFunction(function);
}

void CPgLogger::UpdateGroup()
{
    LockSettings();
    UpdateZoom();
}

void CPgLogger::OnTreeCreated()
{
    CPgLoggerBase::OnTreeCreated();
    Clear();
}

bool CPgLogger::IsRecording() const
{
    return m_pRecording->Get() == eKW_ONOFF_ON;
}

void CPgLogger::UpdateZoom()
{
    m_pLoggerZoom->Follow(m_pHorizontalScale->Get(), *m_pLoggerCursor);
}

void CPgLogger::LockSettings()
{
    const KW_AVAILABILITY availability =
        IsRecording() ? eAVAILABILITY_READ_ONLY : eAVAILABILITY_AVAILABLE;
    for (CDbPropBase* const property :
         std::initializer_list<CDbPropBase*>{m_pSampleRate, m_pDuration, m_pStartDelay})
    {
        property->SetAvailability(availability);
    }
    const CPgaLoggerChannel& channels = *m_pLoggerAttributes->GetPgLoggerChannel();
    for (INT32 i = 0; i < channels.GetCount(); ++i)
    {
        const CPgLoggerChannel* const channel = channels.ItemDirect(i);
        channel->GetPrEnabled()->SetAvailability(availability);
        for (const auto& property : channel->GetPgLoggerChannelSource()->Properties())
        {
            property->SetAvailability(availability);
        }
    }
}

void CPgLogger::Clear()
{
    CPgLoggerAttributes& attributes = *m_pLoggerAttributes;
    NRules::Invalidate({attributes.GetPrRecordedTime(), attributes.GetPrRemainingTime()});
    KW_CHECKED(attributes.GetPrNumberOfSamples()->DbSet(0));
    KW_CHECKED(attributes.GetPrMissedSamples()->DbSet(0));
    KW_CHECKED(m_pMemoryUsed->DbSet(0.0));
    for (INT32 i = 0; i < m_pLoggerTime->GetCount(); ++i)
    {
        NRules::InvalidateResults(*m_pLoggerTime->ItemDirect(i));
    }
    const CPgaLoggerChannel& channels = *attributes.GetPgLoggerChannel();
    for (INT32 i = 0; i < channels.GetCount(); ++i)
    {
        channels.ItemDirect(i)->Clear();
    }
}

KW_ACCEPTANCE CPgLogger::ShowAll()
{
    const CDbPropNumDouble& time = *m_pLoggerAttributes->GetPrRecordedTime();
    if (time.GetValidity() != eKW_VALIDITY_VALID)
    {
        return eKW_ACC_NOTHING_TO_ACT_ON;
    }
    KW_CHECKED(m_pHorizontalScale->DbSet(NLoggerScale::FinestFor(time.Get())));
    KW_CHECKED(m_pHorizontalPosition->DbSet(0.0));
    UpdateZoom();
    return eKW_ACC_OK;
}
