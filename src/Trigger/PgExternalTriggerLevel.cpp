// SPDX-License-Identifier: MIT
#include "Trigger/PgExternalTriggerLevel.h"

#include "CommonDatabase/Nodes/DbPgRoot.h"
#include "Root/PgZEL.h"
#include "Trigger/PgExternalTriggerSettings.h"
#include "Trigger/PgTrigger.h"

void CPgExternalTriggerLevel::UpdateGroup()
{
    constexpr double kInputRange = 5.0;
    if (const CPgZEL* const root = CPgZEL::Of(*this))
    {
        const double range =
            kInputRange *
            root->GetPgTrigger()->GetPgExternalTriggerSettings()->GetPrAttenuation()->Get();
        NRules::SetLimits(*m_pLevel, -range, range);
        FollowSelection();
    }
}

void CPgExternalTriggerLevel::OnTreeCreated()
{
    CSelectedLevel::OnTreeCreated();
    if (CPgZEL* const root = CPgZEL::Of(*this))
    {
        root->GetDependencies().Add(
            *this, {root->GetPgTrigger()->GetPgExternalTriggerSettings()->GetPrAttenuation()},
            [this] { UpdateGroup(); }, QStringLiteral("ExternalTriggerLevel/Level"));
    }
}
