// SPDX-License-Identifier: MIT
#pragma once

#include "Instrument/PgSignalExportBase.h"

/** Waveform export: name and format of the file agree; what the format has no use for is not
    available. */
class CPgSignalExport : public CPgSignalExportBase
{
public:
    KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override;
    KW_ACCEPTANCE OnFunction(const CDbFunction* function) override;
    void UpdateGroup() override;
};
