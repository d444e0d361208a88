// SPDX-License-Identifier: MIT
#include "Buses/PgCANBusFrame.h"

#include "KWEnumerationsSerialBus.h"

std::optional<NRules::t_FrameKey> CPgCANBusFrame::Key() const
{
    const KW_CAN_FRAME_TYPE type = m_pType->Get();
    if (type != eKW_CAN_FRAME_TYPE_DATA && type != eKW_CAN_FRAME_TYPE_REMOTE)
    {
        return std::nullopt;
    }
    return NRules::KeyOf(*m_pIdentifierType, *m_pIdentifier);
}
