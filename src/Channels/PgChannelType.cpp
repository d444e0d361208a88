// SPDX-License-Identifier: MIT
#include "Channels/PgChannelType.h"

#include "CheckedAccess.h"
#include "KWEnumerationsAcquisition.h"

void CPgChannelType::Identify(INT32 index, bool isSimulated)
{
    KW_CHECKED(m_pChannel->DbSetAsInt(index));
    KW_CHECKED(m_pAnalogChannel->DbSetAsInt(index));
    KW_CHECKED(m_pDataGeneration->DbSet(isSimulated ? eKW_ZEL_CHANNEL_DATA_GENERATION_SIMULATED
                                                    : eKW_ZEL_CHANNEL_DATA_GENERATION_ACQUIRED));
}
