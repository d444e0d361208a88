// SPDX-License-Identifier: MIT
#pragma once

#include "Root/PgSMComplexSequenceBase.h"

/** Sequences of operations: a new one begins at nothing done, an aborted one is over. */
class CPgSMComplexSequence : public CPgSMComplexSequenceBase
{
public:
    KW_ACCEPTANCE OnFunction(const CDbFunction* function) override;
};
