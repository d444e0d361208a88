// SPDX-License-Identifier: MIT
#pragma once

#include "Spectrum/PgSpectrumMarkerBase.h"

class CPgReferenceMarker;

/** One marker; it keeps its values relative to the reference marker. Moved, its magnitude is
    not known until it is read there. */
class CPgSpectrumMarker : public CPgSpectrumMarkerBase
{
public:
    using CPgSpectrumMarkerBase::CPgSpectrumMarkerBase;

    t_Couplings Rules() const override;

    /** Differences to the reference, invalid while that is not shown, and step and units of the
        screen. */
    void Follow(const CPgReferenceMarker& reference);

private:
    KW_ACCEPTANCE SetCenter();
    void UpdateRelative(const CPgReferenceMarker& reference);
};
