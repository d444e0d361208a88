// SPDX-License-Identifier: MIT
#include "Logger/PgLoggerSlot.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsOnOff.h"
#include "Names/Logger.h"
#include "Names/LoggerAttributes.h"
#include "Names/LoggerSlot.h"
#include "Names/LoggerTime.h"
#include "Names/ZEL.h"
#include "Rules/NumberRules.h"
#include "Rules/ReadingRules.h"

using namespace NNames;

t_Couplings CPgLoggerSlot::Rules() const
{
    using S = CPgLoggerSlot;
    static constexpr auto rows =
        Table<Names>(On(Names::Store) >> Do<&S::Store>, On(Names::Load) >> Do<&S::CheckLoad>,
                     On(Names::Delete) >> Do<&S::Delete>, Fresh<&S::Delete>);
    return rows;
}

KW_ACCEPTANCE CPgLoggerSlot::Store()
{
    constexpr auto recording = ZEL::Logger / Logger::LoggerAttributes;
    if (At(recording / LoggerAttributes::NumberOfSamples)->Get() == 0)
    {
        return eKW_ACC_NOTHING_TO_ACT_ON;
    }
    KW_CHECKED(m_pUsed->DbSet(eKW_ONOFF_ON));
    NRules::CopyResult(*m_pStartTime,
                       *At(ZEL::Logger / Logger::LoggerTime / 0 / LoggerTime::TimeStamp));
    NRules::CopyResult(*m_pRecordedTime, *At(recording / LoggerAttributes::RecordedTime));
    NRules::CopyResult(*m_pSampleRate, *At(recording / LoggerAttributes::SampleRate));
    return eKW_ACC_OK;
}

KW_ACCEPTANCE CPgLoggerSlot::CheckLoad() const
{
    if (At(ZEL::Logger / Logger::Recording)->Get() == eKW_ONOFF_ON)
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
