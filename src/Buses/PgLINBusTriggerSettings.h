// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/BusRules.h"
#include "Buses/PgLINBusTriggerSettingsBase.h"

/** LIN trigger: identifiers have 6 bits and are looked for when the user's are, data are as long as
    those of the frames. */
class CPgLINBusTriggerSettings : public NRules::CBusTrigger<CPgLINBusTriggerSettingsBase>
{
public:
    NRules::t_PatternSize DataSize() const override;
    NRules::t_PatternSize IdentifierSize() const override { return NRules::ExactPattern(6); }
    bool HasIdentifier() const override;
};
