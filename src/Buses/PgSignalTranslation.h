// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/LabelRules.h"
#include "Buses/PgSignalTranslationBase.h"

class CLabelListSignal;
struct KW_LabelSignalDetails;

/** Signal in the payload: it has the bits that its value type needs, ends within the payload, and
    its limits are in order. In a payload that is too short for its type it begins with the first
    bit. */
class CPgSignalTranslation : public CPgSignalTranslationBase
{
public:
    t_Couplings Rules() const override;

    /** With the texts of its values. A signal without a name is called by its place in the list. */
    CLabelListSignal Signal() const;
    /** The same where it was put, if that is within a payload of so many bits; else where it is
        now. None where that is not, either. */
    std::optional<CLabelListSignal> SignalWithin(UINT32 payloadBits) const;
    /** When it is in a frame. */
    KW_LabelSignalDetails Details() const;

private:
    CLabelListSignal SignalAt(UINT32 startBit, UINT32 bitLength) const;
    void OrderLimits(const CDbPropBase* written);
    void UpdateSteps();
    void FitPayload();
    void TellList();
};
