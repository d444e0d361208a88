// SPDX-License-Identifier: MIT
#include "Buses/PgI2CBusFrame.h"

#include "KWEnumerationsSerialBus.h"

std::optional<NRules::t_FrameKey> CPgI2CBusFrame::Key() const
{
    return NRules::KeyOf(*m_pAddressType, *m_pAddress);
}
