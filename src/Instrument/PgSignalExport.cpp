// SPDX-License-Identifier: MIT
#include "Instrument/PgSignalExport.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "Instrument/FileFormatRules.h"
#include "KWEnumerationsDisplay.h"
#include "Rules/NumberRules.h"

using namespace NNames;

t_Couplings CPgSignalExport::Rules() const
{
    static constexpr auto rows = Table<Names>(
        OnAny() >> Derive<&CPgSignalExport::FollowFileFormat, &CPgSignalExport::UpdateAvailable>,
        On(Names::Save, Names::Cancel) >> Do<&CPgSignalExport::ResetProgress>);
    return rows;
}

void CPgSignalExport::FollowFileFormat(const CDbPropBase* written)
{
    NRules::FollowFileFormat(*m_pFileFormat, *m_pFile, written);
}

void CPgSignalExport::UpdateAvailable()
{
    const KW_EXPORT_FILE_FORMAT format = m_pFileFormat->Get();
    NRules::SetAvailable({m_pDelimiter, m_pIncludeTime}, format == eKW_EXPORT_FILE_FORMAT_CSV);
    NRules::SetAvailable({m_pDataFormat}, format == eKW_EXPORT_FILE_FORMAT_BINARY);
}

void CPgSignalExport::ResetProgress()
{
    KW_CHECKED(m_pProgress->DbSet(0.0));
}
