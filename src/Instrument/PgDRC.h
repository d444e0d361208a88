// SPDX-License-Identifier: MIT
#pragma once

#include "Instrument/PgDRCBase.h"

/** Supervision of clocks and voltages. */
class CPgDRC : public CPgDRCBase
{
public:
    KW_ACCEPTANCE OnFunction(const CDbFunction* function) override;
};
