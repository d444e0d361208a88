// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/LabelledFrames.h"
#include "Buses/PgLINBusFrameBase.h"
#include "Names/LINBusSettings.h"

namespace NRules
{
inline constexpr auto kLinLabels = NNames::ZEL::SerialBus / NNames::SerialBus::LINBusSettings /
                                   NNames::LINBusSettings::LabelListSettings;
}

/** Decoded LIN frame: it has the label of its identifier, a wakeup signal has none. */
class CPgLINBusFrame
    : public NRules::CLabelledFrame<CPgLINBusFrameBase, NRules::kLinLabels,
                                    NNames::LINBusFrame::State, NNames::LINBusFrame::Identifier,
                                    NNames::LINBusFrame::Data>
{
protected:
    std::optional<NRules::t_FrameKey> Key() const override;
};
