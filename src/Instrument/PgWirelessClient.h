// SPDX-License-Identifier: MIT
#pragma once

#include "Instrument/PgWirelessClientBase.h"

/** Guest of a network: a fixed address is available where the network assigns none. */
class CPgWirelessClient : public CPgWirelessClientBase
{
public:
    t_Couplings Rules() const override;

private:
    void UpdateAvailable();
};
