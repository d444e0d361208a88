// SPDX-License-Identifier: MIT
#include "Instrument/PgDRC.h"

#include "CheckedAccess.h"

KW_ACCEPTANCE CPgDRC::OnFunction(const CDbFunction* function)
{
    if (function == m_pClearViolations)
    {
        KW_CHECKED(m_pViolations->DbSet(0));
        KW_CHECKED(m_pLastViolation->DbSet(QStringLiteral("")));
    }
    return CPgDRCBase::OnFunction(function);
}
