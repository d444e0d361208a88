// SPDX-License-Identifier: MIT
#pragma once

#include "Spectrum/PgSpectrumMarkersBase.h"

/** The markers and their reference. The relative values of a marker are valid while the reference
    marker is shown. Searching lines needs a trace: whoever has it carries those actions out. */
class CPgSpectrumMarkers : public CPgSpectrumMarkersBase
{
public:
    t_Couplings Rules() const override;

private:
    void UpdateMarkers();
    /** The one that a member of was written. */
    void UpdateMarker(const CDbPropBase* written);
    KW_ACCEPTANCE RemoveAll();
    /** eKW_ACC_NOTHING_TO_ACT_ON when no marker is selected, or its magnitude is not known. */
    KW_ACCEPTANCE SetReference();
};
