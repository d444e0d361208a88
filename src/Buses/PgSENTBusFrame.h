// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/LabelledFrames.h"
#include "Buses/PgSENTBusFrameBase.h"
#include "Names/SENTBusSettings.h"

namespace NRules
{
inline constexpr auto kSentLabels = NNames::ZEL::SerialBus / NNames::SerialBus::SENTBusSettings /
                                    NNames::SENTBusSettings::LabelListSettings;
}

/** Decoded SENT frame, which has the label of the fast channel, or serial message, which has that
 * of its identifier. */
class CPgSENTBusFrame
    : public NRules::CLabelledFrame<CPgSENTBusFrameBase, NRules::kSentLabels,
                                    NNames::SENTBusFrame::Type,
                                    NNames::SENTBusFrame::IdentifierType,
                                    NNames::SENTBusFrame::Identifier, NNames::SENTBusFrame::Data>
{
protected:
    std::optional<NRules::t_FrameKey> Key() const override;
};
