// SPDX-License-Identifier: MIT
#pragma once

#include "Instrument/PgSimulationChannelBase.h"

/** A simulated signal: what its shape has no use for is not available. */
class CPgSimulationChannel : public CPgSimulationChannelBase
{
public:
    using CPgSimulationChannelBase::CPgSimulationChannelBase;

    t_Couplings Rules() const override;

private:
    void UpdateAvailable();
};
