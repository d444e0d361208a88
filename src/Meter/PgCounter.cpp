// SPDX-License-Identifier: MIT
#include "Meter/PgCounter.h"

#include "Channels/PgChannel.h"
#include "Channels/PgVertical.h"
#include "Channels/PgaChannel.h"
#include "CommonDatabase/Nodes/DbPgRoot.h"
#include "KWEnumerationsLogger.h"
#include "Meter/PgStatistics.h"
#include "Meter/PgaCounterChannel.h"
#include "Meter/PgaMeterSourceChannel.h"
#include "Root/PgZEL.h"

KW_ACCEPTANCE CPgCounter::OnFunction(const CDbFunction* function)
{
    for (INT32 i = 0; function == m_pResetStatistics && i < m_pCounterChannel->GetCount(); ++i)
    {
        m_pCounterChannel->ItemDirect(i)->GetPgStatistics()->Reset();
    }
    return CPgCounterBase::OnFunction(function);
}

void CPgCounter::UpdateGroup()
{
    const CPgZEL* const root = CPgZEL::Of(*this);
    for (INT32 i = 0; root != nullptr && i < m_pCounterChannel->GetCount(); ++i)
    {
        CPgCounterChannel* const counter = m_pCounterChannel->ItemDirect(i);
        const KW_ZEL_COUNTER_CHANNEL source = counter->GetPrSource()->Get();
        const CPgChannel* const input = root->GetPgVertical()->GetPgChannel()->ItemDirect(source);
        const double highest = m_pMeterSourceChannel->ItemDirect(source)->GetPrRange()->Get() *
                               input->GetPrProbeFactor()->Get();
        counter->FollowInput({-highest, highest, highest * 2.0 / NRules::kVerticalDivisions,
                              input->GetPrProbeUnit()->Get()});
    }
}

void CPgCounter::OnTreeCreated()
{
    CPgCounterBase::OnTreeCreated();
    CPgZEL* const root = CPgZEL::Of(*this);
    for (INT32 i = 0; root != nullptr && i < m_pMeterSourceChannel->GetCount(); ++i)
    {
        const CPgChannel* const channel = root->GetPgVertical()->GetPgChannel()->ItemDirect(i);
        root->GetDependencies().Add(
            *this, {channel->GetPrProbeFactor(), channel->GetPrProbeUnit()},
            [this] { UpdateGroup(); }, QStringLiteral("Counter/Level"));
    }
}
