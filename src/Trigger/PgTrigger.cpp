// SPDX-License-Identifier: MIT
#include "Trigger/PgTrigger.h"

#include "Rules/ChannelRules.h"

KW_ACCEPTANCE CPgTrigger::OnFunction(const CDbFunction* function)
{
    if (function == m_pResetSettings)
    {
        NRules::WriteUserDefaults(*this);
        NRules::UpdateSubtree(*this);
    }
    return CPgTriggerBase::OnFunction(function);
}

void CPgTrigger::UpdateGroup()
{
    NRules::OfferSources(*m_pSource, NRules::eSOURCES_INPUTS);
}

void CPgTrigger::OnTreeCreated()
{
    CPgTriggerBase::OnTreeCreated();
    NRules::AddSourceDependency(
        *this, [this] { UpdateGroup(); }, QStringLiteral("Trigger/Source"));
}
