// SPDX-License-Identifier: MIT
#pragma once

#include "Analysis/PgMaskSettingsBase.h"

/** Making of a mask, around one of the traces that have levels. */
class CPgMaskSettings : public CPgMaskSettingsBase
{
public:
    t_Couplings Rules() const override;

private:
    void OfferSources();
};
