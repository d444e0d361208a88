// SPDX-License-Identifier: MIT
#pragma once

#include "Trigger/PgTriggerBase.h"

/**
 * The trigger. Its source is one of the inputs that are on and that its type can use: what looks at
 * two levels, or at the sync pulses of a video signal, needs an analog one. A bus trigger looks at
 * the bus that is decoded, with the protocol of the decoder: while there is none, it can not be
 * selected, and comes back with the bus.
 */
class CPgTrigger : public CPgTriggerBase
{
public:
    t_Couplings Rules() const override;

private:
    void OfferTypes();
    void OfferInputs();
    /** One protocol for both: the trigger's is the decoder's, and a client may write either. */
    ///@{
    void LeadBus();
    void FollowBus();
    ///@}
    void ResetSettings();
};
