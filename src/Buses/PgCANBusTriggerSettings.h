// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/BusRules.h"
#include "Buses/PgCANBusTriggerSettingsBase.h"

/** CAN trigger: the identifier type gives the identifier its bits, bits of CAN FD frames are
    available with CAN FD only, and identifiers are those of data and remote frames. */
class CPgCANBusTriggerSettings : public NRules::CBusTrigger<CPgCANBusTriggerSettingsBase>
{
public:
    t_Couplings Rules() const override;
    NRules::t_PatternSize DataSize() const override { return NRules::PatternOfUnits(8); }
    NRules::t_PatternSize IdentifierSize() const override;
    bool HasIdentifier() const override;

private:
    void UpdateAvailabilities();
    void OfferFrameTypes();
};
