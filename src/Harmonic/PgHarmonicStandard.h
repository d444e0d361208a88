// SPDX-License-Identifier: MIT
#pragma once

#include "Harmonic/PgHarmonicStandardBase.h"

/** The limits in use are those of the standard, or the user's; none without a standard. */
class CPgHarmonicStandard : public CPgHarmonicStandardBase
{
public:
    KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override;
    void UpdateGroup() override;
};
