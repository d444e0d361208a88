// SPDX-License-Identifier: MIT
#include "Logger/PgLoggerCursor.h"

#include "KWEnumerationsOnOff.h"
#include "Logger/LoggerScale.h"
#include "Logger/PgLogger.h"
#include "Rules/NumberRules.h"

KW_ACCEPTANCE CPgLoggerCursor::OnPropertySet(const CDbPropBase* property)
{
    const KW_ACCEPTANCE code = MoveCoupled(property);
    UpdateGroup();
    UpdateZoom();
    return std::max(code, CPgLoggerCursorBase::OnPropertySet(property));
}

KW_ACCEPTANCE CPgLoggerCursor::OnFunction(const CDbFunction* function)
{
    return function == m_pSetToScreen ? SetToScreen() : CPgLoggerCursorBase::OnFunction(function);
}

void CPgLoggerCursor::UpdateGroup()
{
    KW_CHECKED(m_pDeltaX->DbSet(m_pX2->Get() - m_pX1->Get()));
}

KW_ACCEPTANCE CPgLoggerCursor::MoveCoupled(const CDbPropBase* property)
{
    // The difference shown is still that from before the move.
    const double difference = m_pDeltaX->Get();
    if (m_pCoupled->Get() == eKW_ONOFF_OFF || (property != m_pX1 && property != m_pX2))
    {
        return eKW_ACC_OK;
    }
    return property == m_pX1 ? NRules::MovePartner(*m_pX1, *m_pX2, difference)
                             : NRules::MovePartner(*m_pX2, *m_pX1, -difference);
}

KW_ACCEPTANCE CPgLoggerCursor::SetToScreen()
{
    const CPgLogger* const logger = NRules::Above<CPgLogger>(*this);
    if (logger == nullptr)
    {
        return eKW_ACC_NOTHING_TO_ACT_ON;
    }
    const double left = logger->GetPrHorizontalPosition()->Get();
    const double width = NLoggerScale::WidthOf(logger->GetPrHorizontalScale()->Get());
    const KW_ACCEPTANCE first = NRules::MoveTo(*m_pX1, left + NRules::kLeftCursorPlace * width);
    const KW_ACCEPTANCE second = NRules::MoveTo(*m_pX2, left + NRules::kRightCursorPlace * width);
    UpdateGroup();
    UpdateZoom();
    return std::max(first, second);
}

void CPgLoggerCursor::UpdateZoom()
{
    if (CPgLogger* const logger = NRules::Above<CPgLogger>(*this))
    {
        logger->UpdateZoom();
    }
}
