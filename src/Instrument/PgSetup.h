// SPDX-License-Identifier: MIT
#pragma once

#include "Instrument/PgSetupBase.h"

struct t_FixedAddress;

/** The instrument itself: fixed addresses of the wired network are available where it assigns none,
    and answered with eKW_ACC_WARNING while they do not agree. */
class CPgSetup : public CPgSetupBase
{
public:
    t_Couplings Rules() const override;

private:
    t_FixedAddress Wired() const;
    void UpdateAvailable();
    KW_ACCEPTANCE CheckAddress();
};
