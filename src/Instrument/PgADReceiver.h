// SPDX-License-Identifier: MIT
#pragma once

#include "Instrument/PgADReceiverBase.h"

/** Receivers of the converters: a training begins untrained and without errors. */
class CPgADReceiver : public CPgADReceiverBase
{
public:
    t_Couplings Rules() const override;

private:
    void BeginTraining();
};
