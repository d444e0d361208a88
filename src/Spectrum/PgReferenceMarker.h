// SPDX-License-Identifier: MIT
#pragma once

#include "Spectrum/PgReferenceMarkerBase.h"

/** The marker that the others refer to; its steps follow the screen. */
class CPgReferenceMarker : public CPgReferenceMarkerBase
{
public:
    KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override;
    void OnPropertyDbSet(const CDbPropBase* property) override;
    void UpdateGroup() override;
};
