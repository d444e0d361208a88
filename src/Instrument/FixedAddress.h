// SPDX-License-Identifier: MIT
#pragma once

#include "CommonDatabase/Properties/DbPropEnum.h"
#include "CommonDatabase/Properties/DbPropText.h"

enum KW_ONOFF : INT32;

/** What a network interface uses where its network assigns no address: the same settings for the
    wired and the wireless one. */
struct t_FixedAddress
{
    const CDbPropEnum<KW_ONOFF>& automatic;
    CDbPropString& address;
    CDbPropString& mask;
    CDbPropString& gateway;
    CDbPropString& nameServer;

    /** The fixed settings can be written while the network does not assign them. */
    void UpdateAvailable() const;
    /** eKW_ACC_WARNING while the address is none of a host in its network, or the gateway is in
        another one: the settings come one after the other, and only all of them must agree. */
    KW_ACCEPTANCE Check() const;
};
