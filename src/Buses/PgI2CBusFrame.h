// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/LabelledFrames.h"
#include "Buses/PgI2CBusFrameBase.h"
#include "Names/I2CBusSettings.h"

namespace NRules
{
inline constexpr auto kI2cLabels = NNames::ZEL::SerialBus / NNames::SerialBus::I2CBusSettings /
                                   NNames::I2CBusSettings::LabelListSettings;
}

/** Decoded I²C frame: it has the label of its address, whatever its direction. */
class CPgI2CBusFrame
    : public NRules::CLabelledFrame<CPgI2CBusFrameBase, NRules::kI2cLabels,
                                    NNames::I2CBusFrame::AddressType, NNames::I2CBusFrame::Address,
                                    NNames::I2CBusFrame::Data>
{
protected:
    std::optional<NRules::t_FrameKey> Key() const override;
};
