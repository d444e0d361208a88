// SPDX-License-Identifier: MIT
#include "Instrument/PgADConverter.h"

#include "CheckedAccess.h"
#include "KWEnumerationsAcquisition.h"
#include "KWEnumerationsHardware.h"
#include "Root/PgZEL.h"
#include "Timebase/PgHorizontal.h"

KW_ACCEPTANCE CPgADConverter::OnPropertySet(const CDbPropBase* property)
{
    if (property == m_pADCModeMode || property == m_pADCModeManual)
    {
        UpdateGroup();
    }
    return CPgADConverterBase::OnPropertySet(property);
}

void CPgADConverter::UpdateGroup()
{
    const bool isManual = m_pADCModeMode->Get() == eKW_ZEL_AUTOMAN_MANUAL;
    KW_CHECKED(m_pADCModeResult->DbSet(isManual ? m_pADCModeManual->Get() : RequiredMode()));
}

KW_ZEL_ADC_MODE CPgADConverter::RequiredMode() const
{
    const CPgZEL* const root = CPgZEL::Of(*this);
    const KW_ZEL_MODE mode =
        root != nullptr ? root->GetPgHorizontal()->GetPrZELMode()->Get() : eKW_ZEL_MODE_ZEL_A;
    // Both enumerations count the channels that share the converters, from all to one.
    return static_cast<KW_ZEL_ADC_MODE>(mode);
}

void CPgADConverter::OnTreeCreated()
{
    CPgADConverterBase::OnTreeCreated();
    if (CPgZEL* const root = CPgZEL::Of(*this))
    {
        root->GetDependencies().Add(
            *this, {root->GetPgHorizontal()->GetPrZELMode()}, [this] { UpdateGroup(); },
            QStringLiteral("ADConverter/ADCModeResult"));
    }
}
