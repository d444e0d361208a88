// SPDX-License-Identifier: MIT
#include "Logger/PgLoggerCursor.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsOnOff.h"
#include "Logger/LoggerScale.h"
#include "Names/Logger.h"
#include "Names/LoggerCursor.h"
#include "Names/ZEL.h"
#include "Rules/NumberRules.h"

using namespace NNames;

t_Couplings CPgLoggerCursor::Rules() const
{
    using C = CPgLoggerCursor;
    static constexpr auto rows =
        Table<Names>(On(Names::X1, Names::X2) >> Do<&C::MoveCoupled>,
                     On(Names::SetToScreen) >> Do<&C::SetToScreen>,
                     On(Names::X1, Names::X2, Names::SetToScreen) >> Derive<&C::ShowDifference>);
    return rows;
}

KW_ACCEPTANCE CPgLoggerCursor::MoveCoupled(const CDbPropBase* written)
{
    if (m_pCoupled->Get() == eKW_ONOFF_OFF)
    {
        return eKW_ACC_OK;
    }
    // The difference shown is still that from before the move.
    const double difference = m_pDeltaX->Get();
    return written == m_pX1 ? NRules::MoveTogether(*m_pX1, *m_pX2, difference)
                            : NRules::MoveTogether(*m_pX2, *m_pX1, -difference);
}

KW_ACCEPTANCE CPgLoggerCursor::SetToScreen()
{
    const double left = At(ZEL::Logger / Logger::HorizontalPosition)->Get();
    const double width = NLoggerScale::WidthOf(At(ZEL::Logger / Logger::HorizontalScale)->Get());
    const KW_ACCEPTANCE first = NRules::MoveTo(*m_pX1, left + NRules::kLeftCursorPlace * width);
    const KW_ACCEPTANCE second = NRules::MoveTo(*m_pX2, left + NRules::kRightCursorPlace * width);
    return std::max(first, second);
}

void CPgLoggerCursor::ShowDifference()
{
    KW_CHECKED(m_pDeltaX->DbSet(NRules::Distance(m_pX1->Get(), m_pX2->Get())));
}
