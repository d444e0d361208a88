// SPDX-License-Identifier: MIT
#pragma once

#include "Meter/PgCounterChannelBase.h"
#include "Rules/ChannelRules.h"

/** One counter. The user's level ends the automatic one; the unit of the readings is that of the
    quantity, and they lose their validity when quantity or input change; a fresh tree has none. */
class CPgCounterChannel : public CPgCounterChannelBase
{
public:
    using CPgCounterChannelBase::CPgCounterChannelBase;

    t_Couplings Rules() const override;

    /** Keeps the level inside the range of the input. */
    void FollowInput(const NRules::t_Screen& input);

private:
    /** Also where the level is the one that was found. */
    void OfferInputs();
    void EndAutoLevel();
    void DropReadings();
    /** Unit of the reading, and its own readout and reference. */
    void FollowQuantity();
};
