// SPDX-License-Identifier: MIT
#include "Instrument/PgDisplay.h"

#include "CheckedAccess.h"
#include "Instrument/PgmUserInterfaceLanguage.h"

KW_ACCEPTANCE CPgDisplay::OnPropertySet(const CDbPropBase* property)
{
    const bool isForeign = m_pSelectedLanguage->IsActive() &&
                           m_pSelectedLanguage->GetContainer() != m_pUserInterfaceLanguage;
    if (property != m_pSelectedLanguage || !isForeign)
    {
        return CPgDisplayBase::OnPropertySet(property);
    }
    KW_CHECKED(m_pSelectedLanguage->DbSet(QStringLiteral("")));
    return eKW_ACC_WARNING;
}
