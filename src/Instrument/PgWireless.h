// SPDX-License-Identifier: MIT
#pragma once

#include "Instrument/PgWirelessBase.h"

/** Wireless network: the country says which radio channels there are; another role ends the present
    link. */
class CPgWireless : public CPgWirelessBase
{
public:
    t_Couplings Rules() const override;

private:
    void OfferChannels();
    void EndLink();
};
