// SPDX-License-Identifier: MIT
#pragma once

#include "Instrument/PgRemoteControlBase.h"

/** Remote control: its port is that of a network, and it gives the keys back. */
class CPgRemoteControl : public CPgRemoteControlBase
{
public:
    t_Couplings Rules() const override;

private:
    void ReturnToLocal();
    void UpdateAvailable();
};
