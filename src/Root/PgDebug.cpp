// SPDX-License-Identifier: MIT
#include "Root/PgDebug.h"

#include "CheckedAccess.h"

KW_ACCEPTANCE CPgDebug::OnPropertySet(const CDbPropBase* property)
{
    if (property == m_pRegisterAddress)
    {
        KW_CHECKED(m_pRegisterReadback->SetValidity(eKW_VALIDITY_INVALID));
    }
    return CPgDebugBase::OnPropertySet(property);
}
