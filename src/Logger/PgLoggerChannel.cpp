// SPDX-License-Identifier: MIT
#include "Logger/PgLoggerChannel.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "Logger/PgLoggerChannelScreenLayout.h"
#include "Logger/PgLoggerCursorResultsDelta.h"
#include "Logger/PgaLoggerCursorResults.h"
#include "Names/LoggerChannel.h"
#include "Rules/NumberRules.h"
#include "Rules/ReadingRules.h"

using namespace NNames;

t_Couplings CPgLoggerChannel::Rules() const
{
    static constexpr auto rows =
        Table<Names>(On(Names::FindScale) >> Do<&CPgLoggerChannel::FindScale>);
    return rows;
}

KW_ACCEPTANCE CPgLoggerChannel::FindScale()
{
    const bool isKnown = m_pMinimum->GetValidity() == eKW_VALIDITY_VALID &&
                         m_pMaximum->GetValidity() == eKW_VALIDITY_VALID &&
                         m_pMinimum->Get() < m_pMaximum->Get();
    return isKnown ? m_pLoggerChannelScreenLayout->Show(m_pMinimum->Get(), m_pMaximum->Get())
                   : static_cast<KW_ACCEPTANCE>(eKW_ACC_NOTHING_TO_ACT_ON);
}

void CPgLoggerChannel::Clear()
{
    NRules::Invalidate(
        {m_pActual, m_pMinimum, m_pMinimumTime, m_pMaximum, m_pMaximumTime, m_pMean, m_pLimit});
    for (INT32 i = 0; i < m_pLoggerCursorResults->GetCount(); ++i)
    {
        NRules::InvalidateResults(*m_pLoggerCursorResults->ItemDirect(i));
    }
    NRules::InvalidateResults(*m_pLoggerCursorResultsDelta);
}
