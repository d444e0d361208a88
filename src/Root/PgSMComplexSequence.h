// SPDX-License-Identifier: MIT
#pragma once

#include "Root/PgSMComplexSequenceBase.h"

/** Sequences of operations: a new one begins at nothing done, an aborted one is over. The stop
    of the main mode aborts it, too: it acquires. */
class CPgSMComplexSequence : public CPgSMComplexSequenceBase
{
public:
    t_Couplings Rules() const override;

private:
    void AbortRunning();
    void BeginAnew();
};
