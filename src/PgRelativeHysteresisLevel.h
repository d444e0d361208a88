// SPDX-License-Identifier: MIT
#pragma once

#include "PgRelativeHysteresisLevelBase.h"

/** Hysteresis with which edges of a trace are found: the user's, or one that covers the noise.
    Noise grows with the square root of the bandwidth. */
class CPgRelativeHysteresisLevel : public CPgRelativeHysteresisLevelBase
{
public:
    KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override;
    void UpdateGroup() override;

private:
    /** Of the channel that it belongs to; the full one where it belongs to none. */
    double Bandwidth() const;
};
