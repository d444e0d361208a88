// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/PgSignalTranslationBase.h"

/** Signal in the payload: it has the bits that its value type needs, ends within the payload, and
    its limits are in order. In a payload that is too short for its type it begins at bit 0. */
class CPgSignalTranslation : public CPgSignalTranslationBase
{
public:
    t_Couplings Rules() const override;

private:
    void OrderLimits(const CDbPropBase* written);
    void UpdateSteps();
    void FitPayload();
    /** Bits of the payload that the signal is part of. */
    INT32 PayloadBits() const;
};
