// SPDX-License-Identifier: MIT
#pragma once

#include "Instrument/PgSignalExportBase.h"

/** Waveform export: name and format of the file agree; what the format has no use for is not
    available. */
class CPgSignalExport : public CPgSignalExportBase
{
public:
    t_Couplings Rules() const override;

private:
    void FollowFileFormat(const CDbPropBase* written);
    void UpdateAvailable();
    void ResetProgress();
};
