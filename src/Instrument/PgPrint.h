// SPDX-License-Identifier: MIT
#pragma once

#include "Instrument/PgPrintBase.h"

/** Screenshots: name and format of the file agree; only JPG has a quality. */
class CPgPrint : public CPgPrintBase
{
public:
    KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override;
    void UpdateGroup() override;
};
