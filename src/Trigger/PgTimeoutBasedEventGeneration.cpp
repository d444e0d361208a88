// SPDX-License-Identifier: MIT
#include "Trigger/PgTimeoutBasedEventGeneration.h"

#include "CommonDatabase/Nodes/DbPgRoot.h"
#include "KWEnumerationsTrigger.h"
#include "Root/PgZEL.h"
#include "Rules/NumberRules.h"
#include "Timebase/PgHorizontal.h"

#include <algorithm>

KW_ACCEPTANCE CPgTimeoutBasedEventGeneration::OnPropertySet(const CDbPropBase* property)
{
    UpdateGroup();
    return CPgTimeoutBasedEventGenerationBase::OnPropertySet(property);
}

void CPgTimeoutBasedEventGeneration::UpdateGroup()
{
    constexpr double kAutomatic = 0.1;
    const CPgZEL* const root = CPgZEL::Of(*this);
    const double acquisition =
        root != nullptr ? root->GetPgHorizontal()->GetPrAcquisitionTime()->Get() : 0.0;
    const bool isUser = m_pTimeoutDefinition->Get() !=
                        eKW_TRIGGER_TIMEOUTBASEDEVENTGENERATION_TIMEOUT_DEFINITION_AUTO;
    KW_CHECKED(
        m_pTimeout->DbSet(std::max(isUser ? m_pUserTimeout->Get() : kAutomatic, acquisition)));
}

void CPgTimeoutBasedEventGeneration::OnTreeCreated()
{
    CPgTimeoutBasedEventGenerationBase::OnTreeCreated();
    if (CPgZEL* const root = CPgZEL::Of(*this))
    {
        root->GetDependencies().Add(
            *this, {root->GetPgHorizontal()->GetPrAcquisitionTime()}, [this] { UpdateGroup(); },
            QStringLiteral("TimeoutBasedEventGeneration/Timeout"));
    }
}
