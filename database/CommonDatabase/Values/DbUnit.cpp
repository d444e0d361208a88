// SPDX-License-Identifier: MIT
#include "DbUnit.h"

#include "KWEnumerationsUnits.h"

CDbUnit::CDbUnit() : m_unit(eKW_UNIT_NOT_DEFINED) {}

QString CDbUnit::GetName() const
{
    if (m_unit == eKW_UNIT_NOT_DEFINED || m_unit == eKW_UNIT_NONE)
    {
        return QStringLiteral("");
    }
    return GetStaticEnumNameInfo<KW_UNIT>().GetName(m_unit);
}
