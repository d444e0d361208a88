// SPDX-License-Identifier: MIT
#include "Buses/PgSENTBusFrame.h"

#include "KWEnumerationsSerialBus.h"

std::optional<NRules::t_FrameKey> CPgSENTBusFrame::Key() const
{
    if (m_pType->Get() == eKW_SENT_FRAME_TYPE_FAST)
    {
        return NRules::t_FrameKey{0, 0};
    }
    return NRules::KeyOf(*m_pIdentifierType, *m_pIdentifier);
}
