// SPDX-License-Identifier: MIT
#pragma once

#include "Instrument/PgWirelessClientBase.h"

struct t_FixedAddress;

/** Guest of a network: fixed addresses are available where the network assigns none, and answered
    with eKW_ACC_WARNING while they do not agree. */
class CPgWirelessClient : public CPgWirelessClientBase
{
public:
    t_Couplings Rules() const override;

private:
    t_FixedAddress Fixed() const;
    void UpdateAvailable();
    KW_ACCEPTANCE CheckAddress();
};
