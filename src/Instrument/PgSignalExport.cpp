// SPDX-License-Identifier: MIT
#include "Instrument/PgSignalExport.h"

#include "Instrument/FileFormatRules.h"
#include "KWEnumerationsDisplay.h"
#include "Rules/NumberRules.h"

KW_ACCEPTANCE CPgSignalExport::OnPropertySet(const CDbPropBase* property)
{
    NRules::FollowFileFormat(*m_pFileFormat, *m_pFile, property);
    UpdateGroup();
    return CPgSignalExportBase::OnPropertySet(property);
}

void CPgSignalExport::UpdateGroup()
{
    NRules::FollowFileFormat(*m_pFileFormat, *m_pFile, nullptr);
    const KW_EXPORT_FILE_FORMAT format = m_pFileFormat->Get();
    NRules::SetAvailable({m_pDelimiter, m_pIncludeTime}, format == eKW_EXPORT_FILE_FORMAT_CSV);
    NRules::SetAvailable({m_pDataFormat}, format == eKW_EXPORT_FILE_FORMAT_BINARY);
}

KW_ACCEPTANCE CPgSignalExport::OnFunction(const CDbFunction* function)
{
    if (function == m_pSave || function == m_pCancel)
    {
        KW_CHECKED(m_pProgress->DbSet(0.0));
    }
    return CPgSignalExportBase::OnFunction(function);
}
