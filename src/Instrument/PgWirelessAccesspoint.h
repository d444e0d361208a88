// SPDX-License-Identifier: MIT
#pragma once

#include "Instrument/PgWirelessAccesspointBase.h"

/** Network of the instrument: a passphrase that no network takes is not kept, and answered with
    eKW_ACC_WARNING. */
class CPgWirelessAccesspoint : public CPgWirelessAccesspointBase
{
public:
    t_Couplings Rules() const override;

private:
    void DropShortPassphrase();
};
