// SPDX-License-Identifier: MIT
#pragma once

#include "Instrument/PgPrintBase.h"

/** Screenshots: name and format of the file agree; only JPG has a quality. */
class CPgPrint : public CPgPrintBase
{
public:
    t_Couplings Rules() const override;

private:
    void FollowFileFormat(const CDbPropBase* written);
    void UpdateAvailable();
};
