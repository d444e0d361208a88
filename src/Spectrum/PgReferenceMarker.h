// SPDX-License-Identifier: MIT
#pragma once

#include "Spectrum/PgReferenceMarkerBase.h"

/** The marker that the others refer to; its steps and its unit follow the screen. */
class CPgReferenceMarker : public CPgReferenceMarkerBase
{
public:
    t_Couplings Rules() const override;

private:
    void UpdateLine();
};
