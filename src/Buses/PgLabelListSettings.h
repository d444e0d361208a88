// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/PgLabelListSettingsBase.h"

/** Label list: counts its labels. */
class CPgLabelListSettings : public CPgLabelListSettingsBase
{
public:
    t_Couplings Rules() const override;

private:
    void Clear();
    void CountLabels();
};
