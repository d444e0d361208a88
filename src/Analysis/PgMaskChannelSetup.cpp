// SPDX-License-Identifier: MIT
#include "Analysis/PgMaskChannelSetup.h"

#include "CheckedAccess.h"
#include "KWEnumerationsOnOff.h"
#include "KWEnumerationsReadings.h"

void CPgMaskChannelSetup::ClearCounts()
{
    KW_CHECKED(m_pFailedAcquisitions->DbSet(0));
    KW_CHECKED(m_pViolation->DbSet(eKW_ZEL_LIMIT_INSIDE));
}

void CPgMaskChannelSetup::ClearMask()
{
    KW_CHECKED(m_pMaskDefined->DbSet(eKW_ONOFF_OFF));
    KW_CHECKED(m_pMaskPoints->DbSet(0));
    ClearCounts();
}
