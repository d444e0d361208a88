// SPDX-License-Identifier: MIT
#pragma once

#include "Spectrum/PgSpectrumMarkerBase.h"

class CPgReferenceMarker;

/** One marker; it keeps its values relative to the reference marker. */
class CPgSpectrumMarker : public CPgSpectrumMarkerBase
{
public:
    using CPgSpectrumMarkerBase::CPgSpectrumMarkerBase;

    KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override;
    void OnPropertyDbSet(const CDbPropBase* property) override;
    KW_ACCEPTANCE OnFunction(const CDbFunction* function) override;

    /** Differences to the reference, invalid while that is not shown, and the step of the screen.
     */
    void Follow(const CPgReferenceMarker& reference);

private:
    void UpdateFromOwner();
    void UpdateRelative(const CPgReferenceMarker& reference);
};
