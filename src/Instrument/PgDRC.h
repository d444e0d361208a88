// SPDX-License-Identifier: MIT
#pragma once

#include "Instrument/PgDRCBase.h"

/** Supervision of clocks and voltages. */
class CPgDRC : public CPgDRCBase
{
public:
    t_Couplings Rules() const override;

private:
    void ClearViolations();
};
