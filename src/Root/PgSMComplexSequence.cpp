// SPDX-License-Identifier: MIT
#include "Root/PgSMComplexSequence.h"

#include "CheckedAccess.h"
#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsAcquisition.h"
#include "Names/Control.h"
#include "Names/SMMode.h"
#include "Names/ZEL.h"

using namespace NNames;

t_Couplings CPgSMComplexSequence::Rules() const
{
    static constexpr auto rows =
        Table<Names>(On(Names::Abort, ZEL::Control / Control::SMMode / SMMode::Stop) >>
                         Do<&CPgSMComplexSequence::AbortRunning>,
                     On(Names::Autoset, Names::Abort) >> Do<&CPgSMComplexSequence::BeginAnew>);
    return rows;
}

void CPgSMComplexSequence::AbortRunning()
{
    const KW_ZEL_OPSTATE state = m_pOperationState->Get();
    if (state == eKW_ZEL_OPSTATE_PENDING || state == eKW_ZEL_OPSTATE_ACTIVE)
    {
        KW_CHECKED(m_pOperationState->DbSet(eKW_ZEL_OPSTATE_ABORTED));
        BeginAnew();
    }
}

void CPgSMComplexSequence::BeginAnew()
{
    KW_CHECKED(m_pProgress->DbSet(0.0));
    KW_CHECKED(m_pStep->DbSet(QStringLiteral("")));
}
