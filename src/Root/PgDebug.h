// SPDX-License-Identifier: MIT
#pragma once

#include "Root/PgDebugBase.h"

/** Service switches: what was read belongs to the address it was read from. */
class CPgDebug : public CPgDebugBase
{
public:
    t_Couplings Rules() const override;

private:
    void ForgetReadback();
};
