// SPDX-License-Identifier: MIT
#include "Buses/PgLINBusFrame.h"

#include "KWEnumerationsSerialBus.h"

std::optional<NRules::t_FrameKey> CPgLINBusFrame::Key() const
{
    constexpr UINT32 kLength = 6;
    if (m_pState->Get() == eKW_LIN_FRAME_STATE_WAKEUP)
    {
        return std::nullopt;
    }
    return NRules::KeyOf(kLength, *m_pIdentifier);
}
