// SPDX-License-Identifier: MIT
#pragma once

#include "Logger/PgLoggerSlotBase.h"

/**
 * One memory slot. Store takes over what is known of the recording in memory, whose size the
 * acquisition delivers; Delete empties the slot. Store without a recording and Load from an empty
 * slot answer eKW_ACC_NOTHING_TO_ACT_ON, Load while a recording runs eKW_ACC_NOT_AVAILABLE.
 */
class CPgLoggerSlot : public CPgLoggerSlotBase
{
public:
    using CPgLoggerSlotBase::CPgLoggerSlotBase;

    t_Couplings Rules() const override;

private:
    /** The start is that of the first time stamp; what is not known of the recording is invalid. */
    KW_ACCEPTANCE Store();
    /** Loading is the acquisition's, which polls the count of accepted orders. */
    KW_ACCEPTANCE CheckLoad() const;
    void Delete();
};
