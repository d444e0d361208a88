// SPDX-License-Identifier: MIT
#pragma once

#include "Instrument/PgSetupDateTimeBase.h"

/** Clock: set by hand, or by a time server. */
class CPgSetupDateTime : public CPgSetupDateTimeBase
{
public:
    t_Couplings Rules() const override;

private:
    void UpdateAvailable();
};
