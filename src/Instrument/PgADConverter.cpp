// SPDX-License-Identifier: MIT
#include "Instrument/PgADConverter.h"

#include "CheckedAccess.h"
#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsHardware.h"
#include "Names/Horizontal.h"
#include "Names/ZEL.h"

using namespace NNames;

t_Couplings CPgADConverter::Rules() const
{
    static constexpr auto rows = Table<Names>(
        On(Names::ADCModeMode, Names::ADCModeManual) >> Derive<&CPgADConverter::UpdateMode>,
        Changed(ZEL::Horizontal / Horizontal::ZELMode) >> Derive<&CPgADConverter::UpdateMode>);
    return rows;
}

void CPgADConverter::UpdateMode()
{
    const bool isManual = m_pADCModeMode->Get() == eKW_ZEL_AUTOMAN_MANUAL;
    KW_CHECKED(m_pADCModeResult->DbSet(isManual ? m_pADCModeManual->Get() : RequiredMode()));
}

KW_ZEL_ADC_MODE CPgADConverter::RequiredMode() const
{
    // Both enumerations count the channels that share the converters, from all to one.
    return static_cast<KW_ZEL_ADC_MODE>(At(ZEL::Horizontal / Horizontal::ZELMode)->Get());
}
