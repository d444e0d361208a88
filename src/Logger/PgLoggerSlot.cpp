// SPDX-License-Identifier: MIT
#include "Logger/PgLoggerSlot.h"

#include "KWEnumerationsOnOff.h"
#include "Logger/PgLogger.h"
#include "Logger/PgLoggerAttributes.h"
#include "Logger/PgLoggerTime.h"
#include "Logger/PgaLoggerTime.h"
#include "Rules/NumberRules.h"
#include "Rules/ReadingRules.h"

KW_ACCEPTANCE CPgLoggerSlot::OnFunction(const CDbFunction* function)
{
    if (function == m_pStore)
    {
        return Store();
    }
    if (function == m_pLoad)
    {
        return CheckLoad();
    }
    if (function == m_pDelete)
    {
        Delete();
    }
    return CPgLoggerSlotBase::OnFunction(function);
}

void CPgLoggerSlot::OnTreeCreated()
{
    CPgLoggerSlotBase::OnTreeCreated();
    Delete();
}

KW_ACCEPTANCE CPgLoggerSlot::Store()
{
    const CPgLogger* const logger = NRules::Above<CPgLogger>(*this);
    if (logger == nullptr || logger->GetPgLoggerAttributes()->GetPrNumberOfSamples()->Get() == 0)
    {
        return eKW_ACC_NOTHING_TO_ACT_ON;
    }
    const CPgLoggerAttributes& recording = *logger->GetPgLoggerAttributes();
    KW_CHECKED(m_pUsed->DbSet(eKW_ONOFF_ON));
    KW_CHECKED(
        m_pStartTime->DbSet(logger->GetPgLoggerTime()->ItemDirect(0)->GetPrTimeStamp()->Get()));
    KW_CHECKED(m_pRecordedTime->DbSet(recording.GetPrRecordedTime()->Get()));
    return KW_CHECKED(m_pSampleRate->DbSet(recording.GetPrSampleRate()->Get()));
}

KW_ACCEPTANCE CPgLoggerSlot::CheckLoad() const
{
    const CPgLogger* const logger = NRules::Above<CPgLogger>(*this);
    if (logger != nullptr && logger->IsRecording())
    {
        return eKW_ACC_NOT_AVAILABLE;
    }
    return m_pUsed->Get() == eKW_ONOFF_ON ? eKW_ACC_OK : eKW_ACC_NOTHING_TO_ACT_ON;
}

void CPgLoggerSlot::Delete()
{
    NRules::Invalidate({m_pStartTime, m_pRecordedTime, m_pSampleRate});
    KW_CHECKED(m_pUsed->DbSet(eKW_ONOFF_OFF));
    KW_CHECKED(m_pSize->DbSet(0));
}
