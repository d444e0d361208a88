// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/PgSerialBusBase.h"

/** Serial bus: resets the settings of the present protocol, and clears what was decoded. */
class CPgSerialBus : public CPgSerialBusBase
{
public:
    t_Couplings Rules() const override;

private:
    void ResetSettings();
    /** Removes the decoded frames of all protocols and their summary. */
    void ClearResults();
};
