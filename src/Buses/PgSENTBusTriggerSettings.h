// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/BusRules.h"
#include "Buses/PgSENTBusTriggerSettingsBase.h"

/** SENT trigger: patterns of frames have the nibbles of the bus at most, those of serial messages
   the bits of their format and the identifier that the type says. */
class CPgSENTBusTriggerSettings : public NRules::CBusTrigger<CPgSENTBusTriggerSettingsBase>
{
public:
    t_Couplings Rules() const override;
    NRules::t_PatternSize DataSize() const override;
    NRules::t_PatternSize IdentifierSize() const override;
    bool HasIdentifier() const override;

private:
    static constexpr INT32 kNibble = 4;

    void FitStatus();
    void ClearStatus();
};
