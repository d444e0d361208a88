// SPDX-License-Identifier: MIT
#pragma once

#include "Instrument/PgSimulationChannelBase.h"

/** A simulated signal: what its shape has no use for is not available. */
class CPgSimulationChannel : public CPgSimulationChannelBase
{
public:
    using CPgSimulationChannelBase::CPgSimulationChannelBase;

    KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override;
    void UpdateGroup() override;
};
