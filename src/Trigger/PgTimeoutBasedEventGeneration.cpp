// SPDX-License-Identifier: MIT
#include "Trigger/PgTimeoutBasedEventGeneration.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsTrigger.h"
#include "Names/Horizontal.h"
#include "Names/TimeoutBasedEventGeneration.h"
#include "Names/ZEL.h"
#include "Rules/NumberRules.h"

#include <algorithm>

using namespace NNames;

t_Couplings CPgTimeoutBasedEventGeneration::Rules() const
{
    using T = CPgTimeoutBasedEventGeneration;
    static constexpr auto rows = Table<Names>(
        OnAny() >> Derive<&T::UpdateTimeout>,
        Changed(ZEL::Horizontal / Horizontal::AcquisitionTime) >> Derive<&T::UpdateTimeout>);
    return rows;
}

void CPgTimeoutBasedEventGeneration::UpdateTimeout()
{
    constexpr double kAutomatic = 0.1;
    const double acquisition = At(ZEL::Horizontal / Horizontal::AcquisitionTime)->Get();
    const bool isUser = m_pTimeoutDefinition->Get() !=
                        eKW_TRIGGER_TIMEOUTBASEDEVENTGENERATION_TIMEOUT_DEFINITION_AUTO;
    KW_CHECKED(
        m_pTimeout->DbSet(std::max(isUser ? m_pUserTimeout->Get() : kAutomatic, acquisition)));
}
