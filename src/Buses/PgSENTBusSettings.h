// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/LabelRules.h"
#include "Buses/PgSENTBusSettingsBase.h"

/** SENT decoder: what pause pulse and shown channels have no use for is not available, and constant
    frames have room for their nibbles. Labels belong to serial messages, by an identifier of 4 or 8
    bits, or to the frames of the fast channel, which have none. */
class CPgSENTBusSettings : public CPgSENTBusSettingsBase, public NRules::ILabelledBus
{
public:
    t_Couplings Rules() const override;
    KW_ZEL_SERIALBUS_PROTOCOL Protocol() const override;
    INT32 PayloadBits(UINT32 identifierLength) const override;

private:
    void UpdateAvailabilities();
    void LimitFrameLength();
    void FitLabels();
};
