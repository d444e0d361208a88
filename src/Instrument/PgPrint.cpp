// SPDX-License-Identifier: MIT
#include "Instrument/PgPrint.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "Instrument/FileFormatRules.h"
#include "KWEnumerationsDisplay.h"
#include "Rules/NumberRules.h"

using namespace NNames;

t_Couplings CPgPrint::Rules() const
{
    static constexpr auto rows =
        Table<Names>(OnAny() >> Derive<&CPgPrint::FollowFileFormat, &CPgPrint::UpdateAvailable>);
    return rows;
}

void CPgPrint::FollowFileFormat(const CDbPropBase* written)
{
    NRules::FollowFileFormat(*m_pFormat, *m_pFile, written);
}

void CPgPrint::UpdateAvailable()
{
    NRules::SetAvailable({m_pQuality}, m_pFormat->Get() == eKW_PRINT_FORMAT_JPG);
}
