// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/BusRules.h"
#include "Buses/PgSENTBusTriggerSettingsBase.h"

/** SENT trigger: frames have up to eight nibbles, serial messages up to 16 bits of data and the
    identifier that the type says. */
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
