// SPDX-License-Identifier: MIT
#include "Logger/PgLogger.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsAcquisition.h"
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
#include "Names/Control.h"
#include "Names/Logger.h"
#include "Names/LoggerCursor.h"
#include "Names/LoggerZoom.h"
#include "Names/SMLogger.h"
#include "Names/ZEL.h"
#include "Rules/NumberRules.h"
#include "Rules/ReadingRules.h"

using namespace NNames;

namespace
{
constexpr auto kMachine = ZEL::Control / Control::SMLogger;
} // namespace

t_Couplings CPgLogger::Rules() const
{
    using L = CPgLogger;
    static constexpr auto rows = Table<Names>(
        On(Names::Start, Names::Clear, kMachine / SMLogger::Start) >> Do<&L::Clear>,
        On(Names::ShowAll) >> Do<&L::ShowAll, &L::UpdateZoom>, Fresh<&L::Clear>,
        Changed(kMachine / SMLogger::RunStop) >> Derive<&L::FollowMachine>,
        Delivered(Names::Recording) >> Derive<&L::LockSettings>,
        On(Names::HorizontalScale, Names::LoggerZoom / LoggerZoom::Scale,
           Names::LoggerZoom / LoggerZoom::CoupleToCursors, Names::LoggerCursor / LoggerCursor::X1,
           Names::LoggerCursor / LoggerCursor::X2,
           Names::LoggerCursor / LoggerCursor::SetToScreen) >>
            Derive<&L::UpdateZoom>);
    return rows;
}

void CPgLogger::FollowMachine()
{
    const bool isWanted = At(kMachine / SMLogger::RunStop)->Get() == eKW_ZEL_RUNSTOP_STATE_RUN;
    if (isWanted == (m_pRecording->Get() == eKW_ONOFF_ON))
    {
        return;
    }
    if (isWanted)
    {
        Clear();
    }
    KW_CHECKED(m_pRecording->DbSet(isWanted ? eKW_ONOFF_ON : eKW_ONOFF_OFF));
}

void CPgLogger::UpdateZoom()
{
    m_pLoggerZoom->Follow(m_pHorizontalScale->Get(), *m_pLoggerCursor);
}

void CPgLogger::LockSettings()
{
    const KW_AVAILABILITY availability =
        m_pRecording->Get() == eKW_ONOFF_ON ? eAVAILABILITY_READ_ONLY : eAVAILABILITY_AVAILABLE;
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
    return eKW_ACC_OK;
}
