// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/LabelledFrames.h"
#include "Buses/PgCANBusFrameBase.h"
#include "Names/CANBusSettings.h"

namespace NRules
{
inline constexpr auto kCanLabels = NNames::ZEL::SerialBus / NNames::SerialBus::CANBusSettings /
                                   NNames::CANBusSettings::LabelListSettings;
}

/** Decoded CAN frame: data and remote frames have the label of their identifier. */
class CPgCANBusFrame
    : public NRules::CLabelledFrame<CPgCANBusFrameBase, NRules::kCanLabels,
                                    NNames::CANBusFrame::Type, NNames::CANBusFrame::IdentifierType,
                                    NNames::CANBusFrame::Identifier, NNames::CANBusFrame::Data>
{
protected:
    std::optional<NRules::t_FrameKey> Key() const override;
};
