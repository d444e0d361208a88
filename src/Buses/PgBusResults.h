// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/PgBusResultsBase.h"

/** Summary of the decoded frames; clears them with itself. */
class CPgBusResults : public CPgBusResultsBase
{
public:
    KW_ACCEPTANCE OnFunction(const CDbFunction* function) override;
};
