// SPDX-License-Identifier: MIT
#pragma once

#include "Trigger/PgTimeoutBasedEventGenerationBase.h"

/** Time after which the mode auto triggers without an event: the user's, or a tenth of a second.
    A whole acquisition fits in either. */
class CPgTimeoutBasedEventGeneration : public CPgTimeoutBasedEventGenerationBase
{
public:
    t_Couplings Rules() const override;

private:
    void UpdateTimeout();
};
