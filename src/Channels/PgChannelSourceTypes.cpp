// SPDX-License-Identifier: MIT
#include "Channels/PgChannelSourceTypes.h"

#include "CheckedAccess.h"
#include "KWEnumerationsOnOff.h"

void CPgChannelSourceTypes::SetUsable(bool usable)
{
    for (CDbPropEnum<KW_ONOFF>* const use :
         {m_pTriggerSource, m_pMeasurementSource, m_pCursorSource, m_pMathematicsSource,
          m_pReferenceSource, m_pMaskSource, m_pSpectrumSource, m_pSerialBusSource,
          m_pCounterSource, m_pHarmonicSource, m_pXYSource})
    {
        KW_CHECKED(use->DbSet(usable ? eKW_ONOFF_ON : eKW_ONOFF_OFF));
    }
}
