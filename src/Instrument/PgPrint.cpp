// SPDX-License-Identifier: MIT
#include "Instrument/PgPrint.h"

#include "Instrument/FileFormatRules.h"
#include "KWEnumerationsDisplay.h"
#include "Rules/NumberRules.h"

KW_ACCEPTANCE CPgPrint::OnPropertySet(const CDbPropBase* property)
{
    NRules::FollowFileFormat(*m_pFormat, *m_pFile, property);
    UpdateGroup();
    return CPgPrintBase::OnPropertySet(property);
}

void CPgPrint::UpdateGroup()
{
    NRules::FollowFileFormat(*m_pFormat, *m_pFile, nullptr);
    NRules::SetAvailable({m_pQuality}, m_pFormat->Get() == eKW_PRINT_FORMAT_JPG);
}
