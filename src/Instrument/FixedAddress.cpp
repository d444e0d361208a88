// SPDX-License-Identifier: MIT
#include "Instrument/FixedAddress.h"

#include "KWEnumerationsOnOff.h"
#include "Rules/NumberRules.h"

namespace
{
/** The first and the last address of a network are the network itself and all of its hosts. */
bool IsHost(UINT32 address, UINT32 mask)
{
    const UINT32 host = address & ~mask;
    return host != 0U && host != ~mask;
}
} // namespace

void t_FixedAddress::UpdateAvailable() const
{
    NRules::SetAvailable({&address, &mask, &gateway, &nameServer},
                         automatic.Get() == eKW_ONOFF_OFF);
}

KW_ACCEPTANCE t_FixedAddress::Check() const
{
    const auto own = NTextForm::ReadAddress(address.Get());
    const auto network = NTextForm::ReadAddress(mask.Get());
    const auto next = NTextForm::ReadAddress(gateway.Get());
    const bool isHost = !own || !network || IsHost(*own, *network);
    const bool isNeighbour =
        !own || !network || !next ||
        (((*own ^ *next) & *network) == 0U && *own != *next && IsHost(*next, *network));
    return isHost && isNeighbour ? eKW_ACC_OK : eKW_ACC_WARNING;
}
